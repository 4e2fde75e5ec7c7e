"""An independent encoder of launchers.json."""

import json


def application(entry, id):
    """The record of an installed application."""
    return {"id": id, "kind": "application", "name": entry.name, "target": str(entry.entry)}


def website(name, target, id):
    return {"id": id, "kind": "website", "name": name, "target": target}


def encode(slots):
    text = json.dumps(slots, indent=2, separators=(",", " : "), sort_keys=True,
                      ensure_ascii=False)
    return text.replace("/", "\\/")
