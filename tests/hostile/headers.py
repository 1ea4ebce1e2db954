"""Functions, records and enumerators of the public headers."""
import re
from typing import NamedTuple

PROTOTYPE = re.compile(
    r"^DAX_API (?P<result>[^;()]*?[ *])(?P<name>[A-Za-z_0-9]+)\((?P<arguments>[^;]*)\);", re.S | re.M
)
POINTER_TO_FUNCTION = re.compile(r"\(\*\s*(\w+)\)\s*\([^()]*\)")
RECORD = re.compile(r"^typedef struct (?P<name>\w+) \{(?P<fields>.*?)^\} \w+;", re.S | re.M)
FIELD = re.compile(
    r"^  (?P<type>(?:const |struct )*\w+)(?P<stars>[ *\n]+)(?P<name>\w+)(?:\[\w+\])?;(?P<comment>(?:\s*/\*.*?\*/)?)",
    re.S | re.M,
)
ENUMERATOR = re.compile(r"\b([A-Z][A-Z0-9_]+) =\s+(-?(?:0x)?[0-9a-fA-F]+)\b")


class Argument(NamedTuple):
    name: str
    type: str  # without const and stars
    stars: int
    isConst: bool
    elements: str  # of a declared array

    @property
    def isReal(self):
        return self.type in ("float", "double")


class Function(NamedTuple):
    name: str
    result: str
    arguments: list


def argument(text):
    match = re.fullmatch(r"(?P<type>.*?)(?P<name>\w+)\s*(?:\[(?P<elements>[^\]]*)\])?", text.strip(), re.S)
    kind = match["type"]
    plain = re.sub(r"\b(const|struct)\b|\*", "", kind).strip()
    stars = kind.count("*") + (match["elements"] is not None)
    return Argument(match["name"], plain, stars, "const" in kind, match["elements"] or "")


def functions(include):
    for header in sorted(include.glob("*/*.h")):
        text = re.sub(r"/\*.*?\*/", "", header.read_text(), flags=re.S)
        for match in PROTOTYPE.finditer(text):
            arguments = POINTER_TO_FUNCTION.sub(r"\1", match["arguments"]).strip()
            listed = [] if arguments in ("", "void") else [argument(each) for each in arguments.split(",")]
            yield Function(match["name"], match["result"].strip(), listed)


def records(include):
    """{record: [(field, type, is a pointer, comment)...]}"""
    found = {}
    for header in sorted(include.glob("*/*.h")):
        for match in RECORD.finditer(header.read_text()):
            found[match["name"]] = [
                (each["name"], each["type"], "*" in each["stars"], " ".join(each["comment"].strip(" /*\n").split()))
                for each in FIELD.finditer(match["fields"])
            ]
    return found


def enumerators(include):
    texts = [header.read_text() for header in include.glob("*/*.h")]
    return {name: int(value, 0) for text in texts for name, value in ENUMERATOR.findall(text)}
