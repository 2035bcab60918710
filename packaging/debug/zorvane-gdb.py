"""How gdb shows Zorvane's texts, values, arrays, containers and tables.

    (gdb) source /usr/share/zorvane/zorvane-gdb.py

The inside of arrays and containers needs a library with debug information, or for containers a
program compiled with -femit-class-debug-always (clang: -fstandalone-debug).
"""

import gdb
import gdb.printing

KINDS = {0: "Empty", 1: "Null", 2: "Integer", 3: "Long", 4: "Single", 5: "Double", 6: "Currency",
         7: "Date", 8: "String", 9: "Object", 10: "Error", 11: "Boolean", 14: "Decimal", 17: "Byte"}
FIELDS = {2: "integer_", 3: "long_", 4: "single_", 5: "double_", 7: "double_", 8: "text_",
          10: "long_", 17: "byte_"}
ARRAY = 0x2000
ELEMENTS = {2: "short", 3: "int", 4: "float", 5: "double", 6: "long long", 7: "double",
            8: "zorvane::Text", 11: "short", 12: "zorvane::Variant", 17: "unsigned char"}
MOST_UNITS = 1000


def units_of(text):
    block = text["block_"]
    if int(block) == 0:
        return ""
    length = int(block["length"])
    at = int(block["units"].address)
    memory = gdb.selected_inferior().read_memory(at, 2 * min(length, MOST_UNITS))
    big = "big endian" in gdb.execute("show endian", to_string=True)
    shown = memory.tobytes().decode("utf-16-be" if big else "utf-16-le", "replace")
    return shown + ("..." if length > MOST_UNITS else "")


def quoted(text):
    return '"' + units_of(text).replace("\\", "\\\\").replace('"', '\\"') + '"'


def kind_of(value):
    return int(value["mark_"]) & 0x7FFF


def shown(value):
    kind = kind_of(value)
    if kind & ARRAY:
        return "Array"
    name = KINDS.get(kind, "type %d" % kind)
    if kind == 8:
        return "String " + quoted(value["text_"])
    if kind in FIELDS:
        return "%s %s" % (name, int(value["byte_"]) if kind == 17 else value[FIELDS[kind]])
    if kind == 11:
        return "Boolean " + ("True" if int(value["integer_"]) else "False")
    if kind == 6:
        whole = int(value["bits_"])
        sign = "-" if whole < 0 else ""
        return "Currency %s%d.%04d" % (sign, abs(whole) // 10000, abs(whole) % 10000)
    if kind == 9:
        target = value["object_"]["object_"]
        return "Object %s" % (target.dynamic_type if int(target) else "Nothing")
    if kind == 14:
        low = int(value["bits_"]) & (2 ** 64 - 1)
        whole = (int(value["high_"]) << 64) + low
        return "Decimal %s%de-%d" % ("-" if value["negative_"] else "", whole, int(value["scale_"]))
    return name


def vector(values):
    """Where the elements of a std::vector begin, and how many there are."""
    try:
        first, last = values["_M_impl"]["_M_start"], values["_M_impl"]["_M_finish"]
    except gdb.error:
        first, last = values["__begin_"], values["__end_"]
    return first, int(last - first)


def records(store):
    """The records of a RecordStore in their order."""
    order = store["order_"]
    if order["isRun_"]:
        first = int(order["first_"])
        numbers = range(first, first + int(order["count_"]))
    else:
        numbers = block_numbers(order)
    for number in numbers:
        yield (store["records_"] + (number & int(store["mask_"]))).dereference()


def block_numbers(order):
    blocks, count = vector(order["blocks_"])
    for i in range(count):
        block = (blocks + i).dereference()
        for k in range(int(block["count"])):
            yield int(block["numbers"][int(block["begin"]) + k])


class TextPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return units_of(self.value)

    def display_hint(self):
        return "string"


class VariantPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return shown(self.value)

    def children(self):
        if kind_of(self.value) & ARRAY:
            yield "array", self.value["array_"]


class ArrayPrinter:
    def __init__(self, value):
        self.block = value["block_"]

    def to_string(self):
        return "Array" if int(self.block) else "Array of no type"

    def children(self):
        if int(self.block) == 0 or not self.block.type.target().fields():
            return
        block = self.block.dereference()
        name = ELEMENTS.get(int(block["element"]))
        if name is None:
            return
        elements = (self.block + 1).cast(gdb.lookup_type(name).pointer())
        for i in range(int(block["count"])):
            yield "[%d]" % (int(block["lower"]) + i), (elements + i).dereference()

    def display_hint(self):
        return "array"


class RecordPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        text = self.value["ItemString"]
        return "%s, %d, %s" % (shown(self.value["Item"]), int(self.value["ItemLong"]), quoted(text))


class KeyedPrinter:
    def __init__(self, value):
        self.name = str(value.type.strip_typedefs()).replace("zorvane::", "")
        self.store = value["records_"] if value.type.strip_typedefs().fields() else None

    def to_string(self):
        if self.store is None:
            return self.name + " without debug information"
        return "%s of %d" % (self.name, int(self.store["order_"]["count_"]))

    def children(self):
        if self.store is None:
            return
        whole = self.name != "CollectionEx"
        for i, record in enumerate(records(self.store)):
            yield "key %d" % i, record["Key"]
            yield "entry %d" % i, record if whole else record["Item"]

    def display_hint(self):
        return "map"


class TablePrinter:
    def __init__(self, value):
        self.store = value["records_"]

    def to_string(self):
        return "Table of %d" % int(self.store["order_"]["count_"])

    def children(self):
        for i, record in enumerate(records(self.store)):
            yield "[%d]" % i, record

    def display_hint(self):
        return "array"


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("zorvane")
    for name, pattern, printer in (
            ("Text", "^zorvane::Text$", TextPrinter),
            ("Variant", "^zorvane::Variant$", VariantPrinter),
            ("Array", "^zorvane::Array$", ArrayPrinter),
            ("Record", "^zorvane::(KeyList|Collection)Record$", RecordPrinter),
            ("Keyed", "^zorvane::(KeyListEX|ZVCollectionEx|CollectionEx)$", KeyedPrinter),
            ("Table", "^zorvane::Table<.*>$", TablePrinter)):
        collection.add_printer(name, pattern, printer)
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
