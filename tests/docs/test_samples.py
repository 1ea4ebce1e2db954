"""Runs the samples of the documents: Python and C as they stand, one page's Python in one go, console lines in a folder
where that has run."""
import os
import pathlib
import re
import runpy
import shlex
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).parents[2]
sys.path.insert(0, str(ROOT / "docs/site"))
import collect

PAGES = [ROOT / "README.md", *sorted((ROOT / "docs").rglob("*.md"))]
LIBRARIES = [pathlib.Path(os.environ[name]).parent for name in ("DAX_LIBRARY", "DAX_HOST_LIBRARY")]


def blocks(page, language):
    return re.findall(rf"^```{language}\n(.*?)^```", page.read_text(), re.S | re.M)


def pages_with(language):
    return [pytest.param(page, id=str(page.relative_to(ROOT))) for page in PAGES if blocks(page, language)]


def run_python(page):
    if "skimage" in page.read_text():
        pytest.importorskip("skimage")
    exec(compile("\n".join(blocks(page, "python")), "sample", "exec"), {"__name__": "__main__"})


@pytest.mark.parametrize("page", pages_with("python"))
def test_python(page, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    run_python(page)


@pytest.mark.parametrize("page", pages_with("c"))
def test_c(page, tmp_path):
    for block in blocks(page, "c"):
        (tmp_path / "sample.c").write_text(block)
        search = [option for folder in LIBRARIES for option in (f"-L{folder}", f"-Wl,-rpath,{folder}")]
        command = [os.environ.get("CC", "cc"), "-std=c99", "-Wall", "-Wextra", "-Werror", "-rdynamic"]
        command += [*(f"-I{folder / 'include'}" for folder in (ROOT, LIBRARIES[0])), "sample.c", "-o", "sample",
                    *search, "-ldax", "-ldaxhost", "-lm"]
        subprocess.run(command, cwd=tmp_path, check=True)
        subprocess.run(["./sample"], cwd=tmp_path, check=True, timeout=60)


PROGRAMS = {name: os.environ[key]
            for name, key in (("dax", "DAX_TOOL"), ("inspect_camera", "DAX_CAMERA")) if key in os.environ}


@pytest.mark.skipif("DAX_TOOL" not in os.environ, reason="built without the program")
@pytest.mark.parametrize("page", pages_with("console"))
def test_console(page, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    run_python(page)
    for line in "\n".join(blocks(page, "console")).splitlines():
        if line.startswith("$ "):
            program, *arguments = shlex.split(line[2:])
            if program == "inspect_camera" and program not in PROGRAMS:
                pytest.skip("built without the live example")
            result = subprocess.run([PROGRAMS[program], *arguments], cwd=tmp_path, capture_output=True, timeout=120)
            assert result.returncode == 0, (line, result.stderr)


def test_links_and_pictures_are_there():
    """Those of what the site collects too."""
    for page in PAGES:
        text = collect.fill(page.read_text())
        assert "<!-- collected" not in text, page.name
        for target in re.findall(r"\]\(([^)#:]+)(?:#[^)]*)?\)", text):
            assert (page.parent / target).exists(), f"{page.name}: {target}"


@pytest.mark.parametrize("page", sorted((ROOT / "docs/how-to").glob("*.md")), ids=lambda page: page.stem)
def test_recipes_of_pictures(page, tmp_path, monkeypatch):
    recipe = page.with_suffix(".py")
    assert recipe.exists() == (f"pictures/{page.stem}.png" in page.read_text())
    pytest.importorskip("matplotlib")
    if recipe.exists() and "photograph" in recipe.read_text():
        pytest.importorskip("skimage")
    import pictures

    monkeypatch.setattr(pictures, "OUT", tmp_path)
    if recipe.exists() and ("DAX_TOOL" in os.environ or "TOOL" not in recipe.read_text()):
        runpy.run_path(str(recipe))
        shown = re.findall(rf"pictures/({page.stem}(?:_photograph)?)\.png", page.read_text())
        assert sorted(path.stem for path in tmp_path.iterdir()) == sorted(shown)


def test_tasks_name_functions_that_exist():
    import dax

    rows = re.findall(r"^\| [^|]* \| ([^|]*) \| ([^|]*) \|", (ROOT / "docs/tasks.md").read_text(), re.M)
    headers = "".join(path.read_text() for path in (ROOT / "include").glob("*/*.h"))
    for python, c in rows[2:]:
        assert all(hasattr(dax, name) for name in re.findall(r"`(\w+)`", python)), python
        for pattern in re.findall(r"`([\w*]+)`", c):
            assert re.search(pattern.replace("*", r"\w*"), headers), pattern


@pytest.mark.parametrize("header", sorted((ROOT / "include").glob("*/*.h")), ids=lambda path: path.name)
def test_filter_of_comments_keeps_the_code(header):
    """Nothing but comments is added, repeated or lost."""
    done = subprocess.run([sys.executable, ROOT / "docs/site/doxygen_filter.py", header], check=True,
                          capture_output=True, text=True).stdout
    code = lambda text: re.sub(r"\s+", " ", re.sub(r"/\*.*?\*/", "", text, flags=re.S)).strip()
    assert code(done) == code(header.read_text())
