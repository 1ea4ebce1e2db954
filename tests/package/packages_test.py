#!/usr/bin/env python3
"""Makes the Debian packages of a build and looks into them: what they hold, what they need, whom they are for.

usage: packages_test.py BUILD CPACK
"""
import gzip
import io
import pathlib
import re
import subprocess
import sys
import tarfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
build, cpack = pathlib.Path(sys.argv[1]), sys.argv[2]
includes = ROOT / "include", build / "include"


def run(*command):
    return subprocess.run(command, check=True, capture_output=True).stdout


class Package:
    def __init__(self, path):
        self.fields = dict(re.findall(r"^(\S+): (.*)$", run("dpkg-deb", "-f", path).decode(), re.M))
        self.files = self.members(path, "--fsys-tarfile")
        self.control = self.members(path, "--ctrl-tarfile")
        self.needs = {need.split()[0] for need in self.fields.get("Depends", "").split(", ") if need}

    @staticmethod
    def members(path, part):
        """{path: content, or target of a link}"""
        with tarfile.open(fileobj=io.BytesIO(run("dpkg-deb", part, path))) as archive:
            return {member.name[1:]: member.linkname or archive.extractfile(member).read()
                    for member in archive if not member.isdir()}

    def names(self):
        """Paths below /usr, but for documents and what is for the checker of packages."""
        return {name[len("/usr/"):] for name in self.files if not re.match("/usr/share/(doc|lintian)/", name)}


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        output = build / "packages-tested"
        run(cpack, "--config", str(build / "CPackConfig.cmake"), "-B", str(output))
        cls.all = {path.name.split("_")[0]: Package(path) for path in sorted(output.glob("*.deb"))}
        cls.soversion = re.search(r"libdax(\d+)", " ".join(cls.all))[1]
        cls.library, cls.host, cls.io = (cls.all[f"{name}{cls.soversion}"]
                                         for name in ("libdax", "libdaxhost", "libdaxio"))

    def test_there_are_six(self):
        self.assertEqual(set(self.all), {f"libdax{self.soversion}", f"libdaxhost{self.soversion}",
                                         f"libdaxio{self.soversion}", "libdax-dev", "dax-tools", "python3-dax"})

    def test_every_file_is_in_one_package_only(self):
        names = [name for package in self.all.values() for name in package.files]
        self.assertEqual(len(names), len(set(names)))

    def test_no_program_carries_a_search_path(self):
        for package in self.all.values():
            for name, content in package.files.items():
                if isinstance(content, bytes) and content.startswith(b"\x7fELF"):
                    self.assertNotIn(b"$ORIGIN", content, name)

    def test_the_library_needs_the_c_library_only(self):
        self.assertLessEqual(self.library.needs, {"libc6", "sse4.2-support"})
        self.assertTrue(any(need.startswith("libtbb") for need in self.host.needs))
        for codec in ("libpng", "libjpeg", "libtiff"):
            self.assertTrue(any(need.startswith(codec) for need in self.io.needs), codec)
        self.assertFalse(any("magick" in need for package in self.all.values() for need in package.needs))

    def test_packages_of_one_version_go_together(self):
        version = self.library.fields["Version"]
        for name in ("libdax-dev", "dax-tools"):
            for other in (f"libdax{self.soversion}", f"libdaxhost{self.soversion}", f"libdaxio{self.soversion}"):
                self.assertIn(f"{other} (= {version})", self.all[name].fields["Depends"], name)
        self.assertLess({"python3-numpy", "python3-cffi-backend", f"libdax{self.soversion}"},
                        self.all["python3-dax"].needs)

    def test_architectures(self):
        architecture = run("dpkg", "--print-architecture").decode().strip()
        for name, package in self.all.items():
            self.assertEqual(package.fields["Architecture"], "all" if name.startswith("python3") else architecture)
        for package in (self.library, self.host, self.io, self.all["libdax-dev"]):
            self.assertEqual(package.fields["Multi-Arch"], "same")

    def test_every_export_is_in_the_symbols_file(self):
        head, *lines = self.library.control["/symbols"].decode().splitlines()
        self.assertEqual(head, f"libdax.so.{self.soversion} libdax{self.soversion} #MINVER#")
        names = {re.fullmatch(rf" (\w+)@DAX_{self.soversion} \d+(\.\d+)+", line)[1] for line in lines}
        exports = set((build / "exports.txt").read_text().split())
        self.assertEqual(names, exports | {f"DAX_{self.soversion}"})

    def test_development_files(self):
        names = self.all["libdax-dev"].names()
        headers = {f"include/{path.relative_to(folder)}" for folder in includes for path in folder.glob("**/*.h")}
        self.assertEqual({name for name in names if name.startswith("include/")}, headers)
        for ending in ("/libdax.so", "/libdaxhost.so", "/libdaxio.so", "/dax.pc", "/dax-config.cmake",
                       "/dax-targets.cmake"):
            self.assertTrue(any(name.endswith(ending) for name in names), ending)
        for package in (self.library, self.host, self.io):
            self.assertFalse([name for name in package.names()
                              if not re.search(r"\.so\.\d+[.\d]*$|^share/lintian/", name)])

    def test_every_subcommand_has_a_manual_page(self):
        files = self.all["dax-tools"].files
        overview = gzip.decompress(files["/usr/share/man/man1/dax.1.gz"]).decode()
        pages = re.findall(r"^\.BR (dax\S+) ", overview.replace("\\-", "-"), re.M)
        self.assertGreater(len(pages), 1)
        for page in pages:
            text = gzip.decompress(files[f"/usr/share/man/man1/{page}.1.gz"]).decode()
            for section in ("NAME", "SYNOPSIS", "OPTIONS"):
                self.assertIn(f".SH {section}", text, page)
            self.assertIn("\\-\\-help", text)

    def test_documents(self):
        for name, package in self.all.items():
            folder = f"/usr/share/doc/{name}/"
            changes = gzip.decompress(package.files[folder + "changelog.Debian.gz"]).decode()
            self.assertTrue(changes.startswith(f"dax ({package.fields['Version']}) "), name)
            self.assertIn("Copyright", package.files[folder + "copyright"].decode())
        self.assertIn("MIT", self.all["dax-tools"].files["/usr/share/doc/dax-tools/copyright"].decode())

    def test_no_path_of_the_build_is_left(self):
        source = str(ROOT).encode()
        for package in self.all.values():
            self.assertFalse([name for name, content in package.files.items()
                              if isinstance(content, bytes) and source in content])


unittest.main(argv=[sys.argv[0]])
