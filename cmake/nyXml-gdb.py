"""Shows objects of nyXml in gdb as what they hold: a number as a number, a sequence as its items, a token as namespace#name.

gdb loads this by itself with a library that is installed under a system prefix; elsewhere: (gdb) source <this file>

gdb has to know the classes: from a library with debug information, or from an application that is compiled with -g and, by g++, with
-femit-class-debug-always.
"""

import re

import gdb
import gdb.printing
import gdb.types


def text_of(string):
    """The characters of a std::string, without the quotes of its own printer."""
    text = string.format_string()
    return text[1:-1] if text[:1] == '"' and text[-1:] == '"' else text


class Field:
    """An object that is shown as one of its fields, by that field's own printer."""

    def __init__(self, value, field):
        self.value = value[field]

    def to_string(self):
        return self.value


class Token:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        namespace, name = text_of(self.value["m_theNamespace"]), text_of(self.value["m_theToken"])
        return namespace + "#" + name if namespace else name


class Numbers:
    """A few numbers of one object: (1, 0, 0)."""

    def __init__(self, *numbers):
        self.numbers = numbers

    def to_string(self):
        return "(" + ", ".join(str(number) for number in self.numbers) + ")"


def field(name):
    return lambda value: Field(value, name)


def coordinates(value):
    return Numbers(*(value["m_theCoordinates"][i] for i in range(3)))


def quaternion(value):
    return Numbers(*(value["m_q%d" % i] for i in range(4)))


# Classes without their template arguments. Whoever derives from one of them is shown with all fields, as gdb does it.
PRINTERS = {
    "NyToken": Token,
    "NyVector": coordinates,
    "NyOrientation": quaternion,
    "NyAngle": field("m_theValue"),
    "NyNonNegReal": field("m_theValue"),
    "NyXmlBasicType": field("m_theValue"),
    "NyXmlBinaryString": field("m_theValue"),
    "NyXmlEmbeddedString": field("m_theValue"),
    "NyXmlEnumType": field("m_theValue"),
    "NyXmlVector": field("m_theValue"),
    "NyXmlOrientation": field("m_theValue"),
    "NyXmlVectorBasicType": field("m_theVector"),
    "NyXmlVectorType": field("m_theVector"),
    "NyXmlVectorVector": field("m_theVectors"),
    "NyXmlSetType": field("m_theSet"),
    "NyXmlListType": field("m_theList"),
    "NyXmlMapType": field("m_theMap"),
    "NyXmlPairType": field("m_thePair"),
}


class Printers(gdb.printing.PrettyPrinter):
    def __init__(self):
        super().__init__("nyXml", [gdb.printing.SubPrettyPrinter(name) for name in PRINTERS])

    def __call__(self, value):
        tag = gdb.types.get_basic_type(value.type).tag
        name = re.sub("<.*", "", tag) if tag else None
        return PRINTERS[name](value) if name in PRINTERS else None


gdb.printing.register_pretty_printer(gdb.current_objfile(), Printers(), replace=True)
