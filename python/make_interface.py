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
from header_contracts import contracts

STANDARD = ("stddef.h", "stdint.h")


def declarations(compiler, include):
    """The headers as C that cffi reads: preprocessed, without attributes and standard headers."""
    with tempfile.TemporaryDirectory() as stubs:
        for name in STANDARD:
            pathlib.Path(stubs, name).write_text("")
        headers = sorted(path.relative_to(include) for path in include.glob("**/*.h"))
        text = "".join(f'#include "{header}"\n' for header in headers)
        command = [
            compiler,
            "-E",
            "-P",
            "-nostdinc",
            "-D__attribute__(x)=",
            "-I",
            stubs,
            "-I",
            str(include),
            "-xc",
            "-",
        ]
        return subprocess.run(command, input=text, text=True, capture_output=True, check=True).stdout


def write_interface(source, output):
    ffi = cffi.FFI()
    ffi.cdef(source)
    ffi.set_source("dax._interface", None)
    ffi.emit_python_code(str(output / "_interface.py"))


SOLVER_CODE = re.compile(r"PR\w+_STS_\w+ = (-\d+),? +/\* (.*?) \*/")


def solver_texts(include):
    """What the codes of solvers and graphs mean; where both have one, the solvers' words."""
    texts = {}
    for header in sorted(include.glob("pr*/status.h")):
        texts.update((int(code), text) for code, text in SOLVER_CODE.findall(header.read_text()))
    return texts


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
