#!/usr/bin/env python3
"""What scripts/abi says of changes to a small library in a repository of its own.

usage: abi_test.py SCRATCH
"""
import pathlib
import shutil
import subprocess
import sys
import unittest

SCRATCH = pathlib.Path(sys.argv[1])
SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts/abi"
BUILD = """cmake_minimum_required(VERSION 3.25)
project(dax C)
add_library(dax SHARED dax.c)
target_include_directories(dax PRIVATE include)
file(READ major major)
set_target_properties(dax PROPERTIES SOVERSION ${major})
"""
HEADER = "typedef struct { int width, height; } Size;\nint area(const Size* size);\n"
SOURCE = '#include "dax.h"\nint area(const Size* size) { return size->width * size->height; }\n'
MORE = "int twice(int value);\n", "int twice(int value) { return 2 * value; }\n"


class Abi(unittest.TestCase):
    def setUp(self):
        shutil.rmtree(SCRATCH, ignore_errors=True)
        (SCRATCH / "scripts").mkdir(parents=True)
        shutil.copy(SCRIPT, SCRATCH / "scripts/abi")
        self.git("init")
        (SCRATCH / "CMakeLists.txt").write_text(BUILD)
        self.write(HEADER + MORE[0], SOURCE + MORE[1])
        self.git("add", "CMakeLists.txt", "include", "dax.c", "major")
        self.git("-c", "user.name=a", "-c", "user.email=a@b.invalid", "commit", "-m", "First")

    def git(self, *arguments):
        subprocess.run(["git", "-C", SCRATCH, *arguments], check=True, capture_output=True)

    def write(self, header, source, major=0):
        (SCRATCH / "include").mkdir(exist_ok=True)
        (SCRATCH / "include/dax.h").write_text(header)
        (SCRATCH / "dax.c").write_text(source)
        (SCRATCH / "major").write_text(str(major))

    def check(self, status, line, *arguments):
        result = subprocess.run([SCRATCH / "scripts/abi", *arguments], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                text=True)
        self.assertEqual((result.returncode, line in result.stdout), (status, True), result.stdout)

    def test_without_a_version_to_compare_with(self):
        self.check(0, "no version is tagged yet")
        self.check(2, "no revision v7", "v7")

    def test_verdicts(self):
        self.git("tag", "v0.1.0")
        for name, change, status, line in (
                ("nothing", (HEADER + MORE[0], SOURCE + MORE[1]), 0, "the same as v0.1.0"),
                ("a function more",
                 (HEADER + MORE[0] + "int one(void);\n", SOURCE + MORE[1] + "int one(void) { return 1; }\n"),
                 0, "additions only"),
                ("a function less", (HEADER, SOURCE), 1, "may break"),
                ("a record that grows", (HEADER.replace("height", "height, depth") + MORE[0], SOURCE + MORE[1]), 1,
                 "may break"),
                ("a wider result",
                 (HEADER + MORE[0].replace("int t", "long t"), SOURCE + MORE[1].replace("int t", "long t")), 1,
                 "may break"),
                ("a function less under a new name", (HEADER, SOURCE, 1), 0, "(libdax.so.0, now libdax.so.1)")):
            with self.subTest(name):
                self.write(*change)
                self.check(status, line)


unittest.main(argv=[sys.argv[0]])
