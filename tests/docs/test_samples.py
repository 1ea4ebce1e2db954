"""Runs the samples of the documents: Python and C as they stand, one page's Python in one go, console lines in a folder
of their own."""
import os
import pathlib
import re
import shlex
import subprocess

import pytest

ROOT = pathlib.Path(__file__).parents[2]
PAGES = [ROOT / "README.md", *sorted((ROOT / "docs").rglob("*.md"))]
LIBRARIES = [pathlib.Path(os.environ[name]).parent for name in ("DAX_LIBRARY", "DAX_HOST_LIBRARY")]


def samples(language):
    """(page, samples) of each page that has some."""
    for page in PAGES:
        found = re.findall(rf"^```{language}\n(.*?)^```", page.read_text(), re.S | re.M)
        if found:
            yield pytest.param(found, id=str(page.relative_to(ROOT)))


@pytest.mark.parametrize("blocks", samples("python"))
def test_python(blocks, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    exec(compile("\n".join(blocks), "sample", "exec"), {"__name__": "__main__"})


@pytest.mark.parametrize("blocks", samples("c"))
def test_c(blocks, tmp_path):
    for block in blocks:
        (tmp_path / "sample.c").write_text(block)
        search = [option for folder in LIBRARIES for option in (f"-L{folder}", f"-Wl,-rpath,{folder}")]
        command = [os.environ.get("CC", "cc"), "-std=c99", "-Wall", "-Wextra", "-Werror", "-rdynamic"]
        command += ["-I", ROOT / "include", "sample.c", "-o", "sample", *search, "-ldax", "-ldaxhost"]
        subprocess.run(command, cwd=tmp_path, check=True)
        subprocess.run(["./sample"], cwd=tmp_path, check=True, timeout=60)


PROGRAMS = {name: os.environ[key] for name, key in (("dax", "DAX_TOOL"), ("inspect_camera", "DAX_CAMERA")) if key in os.environ}


@pytest.mark.skipif("DAX_TOOL" not in os.environ, reason="built without the program")
@pytest.mark.parametrize("blocks", samples("console"))
def test_console(blocks, tmp_path):
    for line in "\n".join(blocks).splitlines():
        if line.startswith("$ "):
            program, *arguments = shlex.split(line[2:])
            if program == "inspect_camera" and program not in PROGRAMS:
                pytest.skip("built without the live example")
            result = subprocess.run([PROGRAMS[program], *arguments], cwd=tmp_path, capture_output=True, timeout=120)
            assert result.returncode == 0, (line, result.stderr)


def test_links_and_pictures_are_there():
    for page in PAGES:
        for target in re.findall(r"\]\(([^)#:]+)(?:#[^)]*)?\)", page.read_text()):
            assert (page.parent / target).exists(), f"{page.name}: {target}"
