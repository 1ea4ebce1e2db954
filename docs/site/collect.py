"""What pages of the site are made of, collected from other pages and from the package: a page says "<!-- collected:
NAME -->" where it goes. A new how-to page, module or entry of the changelog needs no edit elsewhere."""
import contextlib
import io
import os
import pathlib
import re
import subprocess
import tempfile

DOCS = pathlib.Path(__file__).resolve().parents[1]
TOOL = os.environ.get("DAX_TOOL", DOCS.parent / "build/native/tools/dax/dax")
PICTURE = re.compile(r"^!\[(.*)\]\((.*)\)$", re.M)


def title(text):
    return re.search(r"^# (.*)", text)[1]


def rows(pairs):
    return "\n".join(["| | |", "|---|---|", *(f"| {name} | ![{alt}]({path}) |" for name, alt, path in pairs)])


def tasks():
    """The first picture of each how-to page."""
    found = []
    for page in sorted((DOCS / "how-to").glob("*.md")):
        text = page.read_text()
        if picture := PICTURE.search(text):
            link = f"[{title(text)}](how-to/{page.name})"
            found.append((link, picture[1], picture[2].removeprefix("../")))
    return rows(found)


def pictures_of(page):
    """All pictures of a page, by what follows the colon in their texts."""
    found = PICTURE.findall((DOCS / page).read_text())
    return rows((alt.rpartition(": ")[2], alt, path) for alt, path in found)


def modules():
    """The reference of each public module of the package, by field."""
    import dax
    package, sections = pathlib.Path(dax.__file__).parent, []
    for path in sorted(package.rglob("*.py")):
        name = ".".join(("dax", *path.relative_to(package).with_suffix("").parts))
        if "._" not in name:
            sections.append(f"### {name}\n\n```{{eval-rst}}\n.. automodule:: {name}\n   :members:\n```")
    return "\n\n".join(sections)


def prefixes():
    """What each prefix holds."""
    abouts = sorted((DOCS.parent / "include").glob("*/about.txt"))
    lines = [f"| `{about.parent.name}.h` | {about.read_text().strip()} |" for about in abouts]
    return "\n".join(["| header | what |", "|---|---|", *lines])


def command_line():
    """The help of every command."""
    sections = []
    for command in commands():
        text = subprocess.run([TOOL, *command, "--help"], check=True, capture_output=True, text=True).stdout.strip()
        sections.append(f"{'#' * (2 + max(len(command) - 1, 0))} dax {' '.join(command)}\n\n```text\n{text}\n```")
    return "\n\n".join(sections)


def commands(*parents):
    """Names of the command, of its commands, and so on, from the lists in their help."""
    text = subprocess.run([TOOL, *parents, "--help"], check=True, capture_output=True, text=True).stdout
    names = re.findall(r"^  ([a-z][\w-]*) ", text.partition("\nSubcommands:")[2].partition("\n\n")[0], re.M)
    yield list(parents)
    for name in names:
        yield from commands(*parents, name)


def functions():
    """Every function, by header, with a link to its header's page."""
    rows = ["| header | what | functions |", "|---|---|---|"]
    for header in sorted((DOCS.parent / "include").glob("*/*.h")):
        text = header.read_text()
        names = re.findall(r"^DAX_API [^;(]*?(\w+)\(", text, re.M)
        if names:
            brief = re.search(r"/\*\s*(.*?)(?:\. |\.?\n)", text)[1].replace("|", "/")
            page = header.stem.replace("_", "__") + "_8h.html"
            where = f"{header.parent.name}/{header.name}"
            rows.append(
                f'| <a href="c/html/{page}">{where}</a> | {brief} | {" ".join(f"`{name}`" for name in names)} |'
            )
    return "\n".join(rows)


def with_outputs(text):
    """A page whose samples in Python are followed by what they print; they run one after the other, in a folder of
    their own."""
    names, folder = {"__name__": "__main__"}, tempfile.mkdtemp()

    def run(match):
        printed, before = io.StringIO(), os.getcwd()
        try:
            os.chdir(folder)
            with contextlib.redirect_stdout(printed):
                exec(compile(match[1], "sample", "exec"), names)
        except ImportError:
            return match[0]
        finally:
            os.chdir(before)
        output = printed.getvalue().rstrip()
        return f"{match[0]}\n:::{{container}} output\n```text\n{output}\n```\n:::\n" if output else match[0]

    return re.sub(r"^```python\n(.*?)^```\n", run, text, flags=re.S | re.M)


def changes():
    text = subprocess.run([DOCS.parent / "scripts/changes"], check=True, capture_output=True, text=True).stdout
    return text.partition("\n")[2].strip()


COLLECTED = {"tasks": tasks, "accuracy": lambda: pictures_of("accuracy.md"),
             "performance": lambda: pictures_of("performance.md"),
             "modules": modules, "prefixes": prefixes, "changes": changes,
             "command_line": command_line, "functions": functions}


def fill(text):
    """A page with all that it asks for."""
    return re.sub(r"<!-- collected: (\w+) -->", lambda match: COLLECTED[match[1]](), text)
