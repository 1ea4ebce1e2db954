"""What pages of the site are made of, collected from other pages and from the package: a page says "<!-- collected: NAME -->"
where it goes. A new how-to page, module or entry of the changelog needs no edit elsewhere."""
import pathlib
import re
import subprocess

DOCS = pathlib.Path(__file__).resolve().parents[1]
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


def changes():
    text = subprocess.run([DOCS.parent / "scripts/changes"], check=True, capture_output=True, text=True).stdout
    return text.partition("\n")[2].strip()


COLLECTED = {"tasks": tasks, "accuracy": lambda: pictures_of("accuracy.md"), "performance": lambda: pictures_of("performance.md"),
             "modules": modules, "prefixes": prefixes, "changes": changes}


def fill(text):
    """A page with all that it asks for."""
    return re.sub(r"<!-- collected: (\w+) -->", lambda match: COLLECTED[match[1]](), text)
