"""The launchers' file as the program should write it, made by other means."""

import json


def application(entry, id):
    """What stands for an installed application."""
    return {"id": id, "kind": "application", "name": entry.name, "target": str(entry.entry)}


def website(name, target, id):
    return {"id": id, "kind": "website", "name": name, "target": target}


def encode(slots):
    text = json.dumps(slots, indent=2, separators=(",", " : "), sort_keys=True,
                      ensure_ascii=False)
    return text.replace("/", "\\/")
