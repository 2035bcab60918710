"""Evaluates every expression of zorvane.natvis for values of its types, where Shown.cpp stands in
gdb. Catches a member that was renamed under it."""

import os
import re
import xml.etree.ElementTree as tree

import gdb

FILE = os.path.join(os.path.dirname(__file__), "../../packaging/debug/zorvane.natvis")
VALUES = {"zorvane::Text": ("text",), "zorvane::Variant": ("value",),
          "zorvane::RecordStore<*>": ("people.records_", "blocks.records_"),
          "zorvane::KeyListEX": ("people",), "zorvane::ZVCollectionEx": ("hashed",),
          "zorvane::CollectionEx": ("blocks",), "zorvane::Table<*>": ("table",)}


def evaluate(value, expression):
    plain = re.sub(r",(\[.*\])?su$", "", expression).replace("$i", "0")
    return gdb.parse_and_eval(re.sub(r"(?<![\w.>])([a-z]\w*_)\b", value + r".\1", plain))


def check(element, value):
    condition = [element.get("Condition")] if element.get("Condition") else []
    own = []
    if element.tag.endswith("DisplayString"):
        own = re.findall(r"\{(.*?)\}", element.text)
    elif not len(element):
        own = [element.text]
    values = [evaluate(value, one) for one in condition + own]
    return len(values) + sum(check(inner, value) for inner in element)


for kind in tree.parse(FILE).getroot():
    for shown in VALUES[kind.get("Name")]:
        print("natvis: %s, %d expressions" % (kind.get("Name"), check(kind, shown)))
