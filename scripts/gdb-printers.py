"""Shows strings, names and objects of the interpreter as a document would write them in gdb.

  gdb -x scripts/gdb-printers.py PROGRAM
  (gdb) print *object        -> [1 2.5 /name {dup mul}]
"""
import gdb
import gdb.printing

DEPTH, ELEMENTS = 3, 20  # how much of nested objects is shown


def shared_text(string):
    """The bytes behind an ORXString."""
    shared = string["shared"]
    if not shared:
        return ""
    first = (shared + 1).cast(gdb.lookup_type("char").pointer()) + shared["begin"]
    return first.string("latin-1", length=int(shared["length"]))


def name_text(name):
    return shared_text(name["name"].dereference()["text"]) if name["name"] else ""


def entry_count(dictionary):
    """Of an ORXHashDico, which is one pointer to its table."""
    table = gdb.lookup_type("ORXHashDico::Table").pointer()
    held = dictionary.address.cast(table.pointer()).dereference()
    return int(held["count"]) if held else 0


def elements(items, depth):
    """The objects of an ObjectList, the first of them."""
    block = items["pointers"]["block"]
    count = int(block["count"]) if block else 0
    if count and depth == DEPTH:
        return "..."
    item = gdb.lookup_type("orxeps::PSObject").pointer()
    first = (block + 1).cast(item.pointer()) if block else None
    shown = [show(first[i].dereference(), depth + 1) for i in range(min(count, ELEMENTS))]
    return " ".join(shown + (["..."] if count > ELEMENTS else []))


def show(value, depth=0):
    kind = str(value["type"]).rsplit("::", 1)[-1]
    parts = value["parts"]
    if kind == "Integer":
        return str(int(value["intValue"]))
    if kind == "Real":
        return str(float(value["realValue"]))
    if kind == "Boolean":
        return "true" if int(value["boolValue"]) else "false"
    if kind in ("Name", "Operator"):
        text = name_text(value["nameText"])
        return f"--{text}--" if kind == "Operator" else ("/" if int(value["literal"]) else "") + text
    if kind == "String":
        return f"({shared_text(parts['stringText']) if parts else ''})"
    if kind == "Array":
        return f"[{elements(parts['arrayElements'], depth) if parts else ''}]"
    if kind == "Procedure":
        return f"{{{elements(parts['procElements'], depth) if parts else ''}}}"
    if kind == "Dictionary":
        return f"<<{entry_count(parts['dictEntries']) if parts else 0} entries>>"
    return kind.lower()


def printer(function):
    class Printer:
        def __init__(self, value):
            self.value = value

        def to_string(self):
            return function(self.value)

    return Printer


printers = gdb.printing.RegexpCollectionPrettyPrinter("orxeps")
printers.add_printer("ORXString", "^ORXString$", printer(lambda v: f'"{shared_text(v)}"'))
printers.add_printer("ORXUnicodeString", "^ORXUnicodeString$",
                     printer(lambda v: f'"{shared_text(v["characters"])}"'))
printers.add_printer("NameText", "^orxeps::NameText$", printer(lambda v: "/" + name_text(v)))
printers.add_printer("PSObject", "^orxeps::PSObject$", printer(show))
gdb.printing.register_pretty_printer(gdb.current_objfile(), printers, replace=True)
