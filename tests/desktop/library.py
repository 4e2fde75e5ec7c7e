"""An independent encoder of prompts.json."""

import copy
import json
import re

# The program makes random UUIDs: version 4, upper case.
FRESH_ID = re.compile(r"[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}")


def known_id(number):
    """An id that does not match FRESH_ID."""
    return f"00000000-0000-1000-8000-{number:012X}"


def node(text="", color="none", id=None):
    """Without `id`: a node whose id the program chooses."""
    return {"id": id, "text": text, "color": color}


def tab(name, *nodes, id=None):
    return {"id": id, "name": name, "blocks": list(nodes)}


def encode(tabs, active=0):
    """The file's bytes; `active` is the index of the selected tab."""
    document = {"activeTabID": tabs[active]["id"], "tabs": tabs}
    text = json.dumps(document, indent=2, separators=(",", " : "), sort_keys=True,
                      ensure_ascii=False)
    return text.replace("/", "\\/").encode()


def with_fresh_ids(tabs, saved):
    """`tabs` with each missing id taken from the same position in the saved file."""
    filled = copy.deepcopy(tabs)
    for item, saved_item in zip(_items(filled), _items(_tabs_in(saved))):
        if item["id"] is None and FRESH_ID.fullmatch(saved_item["id"]):
            item["id"] = saved_item["id"]
    return filled


def _tabs_in(saved):
    try:
        return json.loads(saved)["tabs"]
    except ValueError:
        return []  # not yet written


def _items(tabs):
    for each in tabs:
        yield each
        yield from each["blocks"]
