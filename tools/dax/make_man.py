#!/usr/bin/env python3
"""Makes the manual pages of the program from its own help: dax.1.gz, and one page for each subcommand.

usage: make_man.py OUTPUT DATE COMMAND...     DATE: YYYY-MM-DD; COMMAND: the program, perhaps after its emulator
"""
import gzip
import pathlib
import re
import subprocess
import sys

OWN_SECTIONS = {"Options", "Examples", "Exit status"}
VERBATIM = {"Example", "Examples"}
ROW = re.compile(r"  (?P<term>\S.*?)(?:  +(?P<text>\S.*))?$")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def quoted(text):
    text = text.replace("\\", "\\e").replace("-", "\\-")
    return "\\&" + text if text[:1] in (".", "'") else text


def split(help_text):
    """Summary, synopsis, then (heading, lines) of each part; a part without a heading follows the one before."""
    summary, rest = help_text.split("\nUsage: ", 1)
    synopsis, rest = rest.split("\n", 1)
    parts = [("", [])]
    for line in rest.rstrip().split("\n"):
        if re.match(r"\S.*:$", line):
            parts.append((line[:-1], []))
        elif parts[-1][1] or line:
            parts[-1][1].append(line)
    return summary.rstrip("."), synopsis, [part for part in parts if part[1]]


def rows(lines):
    """A list of terms and what they mean, whose further lines are indented more; and paragraphs without indentation."""
    for line, before in zip(lines, ["", *lines]):
        match = ROW.match(line)
        if match and not line.startswith("   "):
            yield f".TP\n\\fB{quoted(match['term'])}\\fR"
            if match["text"]:
                yield quoted(match["text"])
        elif line:
            follows = line.startswith(" ") or before[:1] not in ("", " ")
            yield ("" if follows else ".PP\n") + quoted(line.strip())


def section(heading, lines):
    if heading in VERBATIM:
        code = [quoted(line.strip()) for line in lines if line.startswith("  ")]
        prose = [quoted(line) for line in lines if line and not line.startswith("  ")]
        return [".SH EXAMPLES", ".nf", *code, ".fi", *(".PP\n" + line for line in prose)]
    title = f".SH {heading.upper()}" if heading in OWN_SECTIONS else f".SS {quoted(heading)}"
    return [title if heading else ".PP", *rows(lines)]


def page(name, help_text, see_also, date, version):
    summary, synopsis, parts = split(help_text)
    command, _, arguments = synopsis.partition(" [OPTIONS] ")
    lines = [f'.TH {name.upper()} 1 {date} "{version}" "User Commands"', ".SH NAME",
             f"{quoted(name)} \\- {quoted(summary[0].lower() + summary[1:])}", ".SH SYNOPSIS",
             f".B {command}\n[\\fIoptions\\fR] \\fI{quoted(arguments)}\\fR", ".SH DESCRIPTION", quoted(summary) + "."]
    for heading, content in parts:
        lines += section(heading, content)
    return "\n".join([*lines, ".SH SEE ALSO", ", ".join(f".BR {quoted(other)} (1)" for other in see_also)
                      .replace(", .BR ", " ,\n.BR ")]) + "\n"


def main():
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    folder, date, program = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3:]
    version = output(*program, "--version").strip()
    overview = output(*program, "--help")
    subcommands = re.findall(r"^  (\S+)", overview.split("\nSubcommands:\n")[1].split("\n\n")[0], re.M)
    names = ["dax", *(f"dax-{subcommand}" for subcommand in subcommands)]
    texts = [overview, *(output(*program, subcommand, "--help") for subcommand in subcommands)]
    folder.mkdir(parents=True, exist_ok=True)
    for name, text in zip(names, texts):
        others = [other for other in names if other != name]
        text = page(name, text, others, date, version).encode()
        (folder / f"{name}.1.gz").write_bytes(gzip.compress(text, 9, mtime=0))


main()
