#!/usr/bin/env python3
"""Makes the two generated modules of the package from the public headers, so that no prototype is written twice.

usage: make_interface.py CPP INCLUDE OUTPUT     CPP: a C compiler driver; INCLUDE: the headers; OUTPUT: the package

_interface.py holds the prototypes and records for cffi's out-of-line ABI mode: plain Python, nothing compiled.
_contracts.py holds what the comments say about each status: {function: {code: [clause, ...]}}, and what the solvers'
own codes mean, and the version of the headers.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

import cffi

STANDARD = ("stddef.h", "stdint.h")


def declarations(compiler, include):
    """The headers as C that cffi reads: preprocessed, without attributes and standard headers."""
    with tempfile.TemporaryDirectory() as stubs:
        for name in STANDARD:
            pathlib.Path(stubs, name).write_text("")
        headers = sorted(path.relative_to(include) for path in include.glob("**/*.h"))
        text = "".join(f'#include "{header}"\n' for header in headers)
        command = [compiler, "-E", "-P", "-nostdinc", "-D__attribute__(x)=", "-I", stubs, "-I", str(include), "-xc", "-"]
        return subprocess.run(command, input=text, text=True, capture_output=True, check=True).stdout


def write_interface(source, output):
    ffi = cffi.FFI()
    ffi.cdef(source)
    ffi.set_source("dax._interface", None)
    ffi.emit_python_code(str(output / "_interface.py"))


# A blank line ends what a comment is about.
PIECE = re.compile(r"/\*(?P<comment>.*?)\*/|^DAX_API (?P<prototype>[^;]*);|(?P<gap>\n\n)", re.S | re.M)
REFERENCE = re.compile(r"\b[Aa]s(?: of| in| for)?(?: |\n \* )(_?(?:DAX|ZUR|PRMT|PRM)[A-Z0-9]*_\w+)")
VARIANT = re.compile(r"(_NEON)?(_MT|_IS)$")
# Solvers have small negative codes, which are told from numbers by the arrow or the word before them.
CODE = re.compile(r"0x1[0-9a-f]{7}|(?:(?<=-> )|(?<=else ))-\d\d?\b")
CODES = re.compile(rf"(?:{CODE.pattern})(?:(?:,| and| or| else)* 0x1[0-9a-f]{{7}})*")
# A comment that opens with a name is about all functions whose names begin so.
SECTION = re.compile(r"\s*(DAX\w+): ")
SOLVER_CODE = re.compile(r"PRMT_STS_\w+ = (-\d+),? +/\* (.*?) \*/")


def lines_of(comment):
    """A comment as all its prose in one line, and the rows of its tables, which end in codes after two blanks or more."""
    rows, prose, hanging = [], [], ""
    for line in re.sub(r"\n \* ?", "\n", comment).split("\n"):
        if re.search(r"\S {2,}0x1[0-9a-f]{7}", line):
            rows.append(hanging + line)
            hanging = ""
        elif line.startswith("  "):
            hanging += line.strip() + " "
        else:
            prose.append(hanging + line)
            hanging = ""
    return [" ".join(prose)] + rows


def clauses(comment):
    """Each (code, clause) of a comment. A clause is what stands before its code, back to the last separator; of several
    codes together each belongs to one of the clauses before them, or all to one."""
    found = []
    for number, line in enumerate(lines_of(comment)):
        # Not within parentheses.
        separators = r"(?<=\w)[.;:] (?![^(]*\))|in order[,:] |^\W+" if number == 0 else r"^\W+"
        start = 0
        for match in CODES.finditer(line):
            text, start = " ".join(line[start : match.start()].split()), match.end()
            text = re.split(separators, text.rstrip(" ->(,"))[-1]
            text = re.sub(r",? else$", "", text.strip(" ,;.->")) + ")" * (text.count("(") - text.count(")"))
            codes = [int(code, 0) for code in re.findall(r"0x\w+|-\d+", match.group())]
            parts = re.split(r", then |, ", text)
            if len(parts) != len(codes):
                parts = [text] * len(codes)
            found += [(code, part) for code, part in zip(codes, parts) if part]
    return found


def contracts(include):
    """What the comment of each function says about each code, or the one that it shares or refers to, and about its header."""
    own, table = {}, {}
    for header in sorted(include.glob("*/*.h")):
        pieces = list(PIECE.finditer(header.read_text()))
        head, comment, sections = pieces[0]["comment"] or "", "", {}
        for piece in pieces[1:]:
            if piece["prototype"]:
                name = re.search(r"[ *]([A-Za-z_0-9]+)\(", piece["prototype"])[1]
                own[name] = (comment, "".join(text for stem, text in sections.items() if name.startswith(stem)) + head)
            else:
                comment = piece["comment"] or ""
                if section := SECTION.match(comment):
                    sections[section[1] + "_"] = comment
    for name in own:
        known = table[name] = {}
        for text in referred(own, name):
            for code, clause in clauses(text):
                known.setdefault(code, [])
                if clause not in known[code]:
                    known[code].append(clause)
    return table


def referred(own, name):
    """A function's comment and its header's, and after them those of the functions as which it works: those that it names,
    and of a form for the pool, or with an instruction-set code, the plain one."""
    texts, names = [], [name]
    for each in names:
        if each in own:
            texts += own[each]
            others = [*REFERENCE.findall("".join(own[each])), VARIANT.sub("", each)]
            names += [other for other in others if other not in names]
    return dict.fromkeys(texts)


def solver_texts(include):
    header = include / "prmt/status.h"
    return {int(code): text for code, text in SOLVER_CODE.findall(header.read_text())} if header.exists() else {}


def version_of(include):
    """ "major.minor.patch" of the headers."""
    numbers = re.findall(r"#define DAX_VERSION_\w+ (\d+)", (include / "dax/version.h").read_text())
    return ".".join(numbers)


def write_contracts(version, table, texts, output):
    lines = ["# Generated from the public headers.", f"VERSION = {version!r}", f"TEXTS = {texts!r}", "CLAUSES = {"]
    for name, known in sorted(table.items()):
        codes = ", ".join(f"{code:#x}: {clauses!r}" for code, clauses in known.items())
        lines.append(f"    {name!r}: {{{codes}}},")
    (output / "_contracts.py").write_text("\n".join(lines + ["}", ""]))


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    compiler, include, output = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    output.mkdir(parents=True, exist_ok=True)
    write_interface(declarations(compiler, include), output)
    write_contracts(version_of(include), contracts(include), solver_texts(include), output)


main()
