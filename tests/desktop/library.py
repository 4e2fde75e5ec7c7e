"""The prompt library's file as the program should write it, made by other means."""

import copy
import json
import re

# What the program makes itself is random: version 4, upper-case.
FRESH_ID = re.compile(r"[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}")


def known_id(number):
    """An identifier that is not mistaken for a fresh one."""
    return f"00000000-0000-1000-8000-{number:012X}"


def node(text="", color="none", id=None):
    """Without an identifier: one that the program is to make."""
    return {"id": id, "text": text, "color": color}


def tab(name, *nodes, id=None):
    return {"id": id, "name": name, "blocks": list(nodes)}


def encode(tabs, active=0):
    """The file's bytes with the tab at index `active` chosen."""
    document = {"activeTabID": tabs[active]["id"], "tabs": tabs}
    text = json.dumps(document, indent=2, separators=(",", " : "), sort_keys=True,
                      ensure_ascii=False)
    return text.replace("/", "\\/").encode()


def with_fresh_ids(tabs, saved):
    """`tabs` with the identifiers the program made, as they stand at the same places in its file."""
    filled = copy.deepcopy(tabs)
    for item, saved_item in zip(_items(filled), _items(_tabs_in(saved))):
        if item["id"] is None and FRESH_ID.fullmatch(saved_item["id"]):
            item["id"] = saved_item["id"]
    return filled


def _tabs_in(saved):
    try:
        return json.loads(saved)["tabs"]
    except ValueError:
        return []  # not written yet


def _items(tabs):
    for each in tabs:
        yield each
        yield from each["blocks"]
