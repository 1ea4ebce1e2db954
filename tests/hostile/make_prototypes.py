#!/usr/bin/env python3
"""Lists the exported functions for the hostile driver: HOSTILE_PROTOTYPE(name, "result type", "argument"...).

usage: make_prototypes.py INCLUDE OUTPUT     INCLUDE: the public headers; OUTPUT: the list, rewritten when it changes

The types of the arguments are left to the compiler; their names are what it cannot tell.
"""
import pathlib
import re
import sys

PROTOTYPE = re.compile(r"^DAX_API (?P<result>[^;()]*?[ *])(?P<name>[A-Za-z_0-9]+)\((?P<arguments>[^;]*)\);", re.S | re.M)
POINTER_TO_FUNCTION = re.compile(r"\(\*\s*(\w+)\)\s*\([^()]*\)")


def prototypes(include):
    for header in sorted(include.glob("*/*.h")):
        text = re.sub(r"/\*.*?\*/", "", header.read_text(), flags=re.S)
        for match in PROTOTYPE.finditer(text):
            yield match["name"], match["result"].strip(), names(match["arguments"])


def names(arguments):
    arguments = POINTER_TO_FUNCTION.sub(r"\1", arguments).strip()
    if arguments in ("", "void"):
        return []
    return [re.search(r"(\w+)\s*(?:\[[^\]]*\])?$", argument.strip())[1] for argument in arguments.split(",")]


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    include, output = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    lines = [
        f"HOSTILE_PROTOTYPE({', '.join([name, chr(34) + result + chr(34)] + [chr(34) + each + chr(34) for each in names])})\n"
        for name, result, names in prototypes(include)
    ]
    text = "".join(sorted(lines))
    if not output.exists() or output.read_text() != text:
        output.write_text(text)


main()
