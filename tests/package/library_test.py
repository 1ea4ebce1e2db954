#!/usr/bin/env python3
"""Looks at the built library from outside: what it exports, imports, needs, and which instructions it must not hold.

usage: library_test.py LIBRARY ARCHIVE EXPORTS.txt NM READELF OBJDUMP     ARCHIVE: the library's objects
"""
import pathlib
import re
import subprocess
import sys
import unittest

library, archive, exports, nm, readelf, objdump = sys.argv[1:7]


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def symbols(*options):
    """(name without version, type) of the symbols that nm lists."""
    lines = run(nm, *options, library).splitlines()
    return {(fields[-1].split("@")[0], fields[-2]) for fields in map(str.split, lines) if len(fields) >= 2}


class Library(unittest.TestCase):
    def test_exports_are_the_headers_prototypes(self):
        defined = {name for name, _ in symbols("-D", "--defined-only")}
        declared = set(pathlib.Path(exports).read_text().split())
        self.assertGreater(len(declared), 100)
        versions = {name for name in defined if re.fullmatch(r"DAX_\d+", name)}
        self.assertEqual(defined - versions, declared)

    def test_needs_libc_and_libm_only(self):
        needed = set(re.findall(r"\(NEEDED\).*\[(.*)\]", run(readelf, "-d", library)))
        self.assertLessEqual(needed, {"libc.so.6", "libm.so.6"})

    def test_has_a_soname(self):
        self.assertRegex(run(readelf, "-d", library), r"\(SONAME\).*\[libdax\.so\.\d+\]")

    def test_imports_the_host_pool_weakly(self):
        undefined = symbols("-D", "--undefined-only")
        strays = {name for name, _ in undefined if name.startswith(("_Z", "__cxa", "__gxx", "DAX", "_DAX"))}
        weak = {"DAX_THREADPOOL_Compute1DTiled", "DAX_THREADPOOL_GetThreadsCnt", "__cxa_finalize"}
        self.assertLessEqual(strays, weak)
        self.assertLessEqual({kind for name, kind in undefined if name in weak}, {"w"})

    def test_keeps_no_state(self):
        """Nothing in .data or .bss but what the compiler's start files put there; constants with pointers are
        elsewhere."""
        objects = re.findall(r" O (\.data|\.bss)\s+\S+\s+(?:\.hidden )?(\S+)$", run(objdump, "-t", library), re.M)
        names = {name for _, name in objects}
        self.assertLessEqual(names, {"__dso_handle", "completed.0", "__TMC_END__"})

    def test_allocates_in_two_places(self):
        """The public allocators, and models that the library owns; all other calls take memory of their callers."""
        pattern = r"(\w+)\.cpp\.o:.* (?:malloc|calloc|realloc|\w*memalign|aligned_alloc|_Zn[wa]\w+)$"
        callers = re.findall(pattern, run(nm, "-A", "--undefined-only", archive), re.M)
        self.assertEqual(set(callers), {"memory", "blob_model"})

    def test_fuses_no_multiply_add(self):
        code = run(objdump, "-d", "--no-show-raw-insn", library)
        fused = re.findall(r"\t(fn?m(?:add|sub)|fml[as]|vfn?m(?:add|sub)\w+)\b", code)
        self.assertEqual(fused, [])


unittest.main(argv=[sys.argv[0]])
