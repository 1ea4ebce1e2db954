#!/usr/bin/env python3
"""Makes the changelog, in Debian's form, and the copyright file of one package.

usage: make_documents.py OUTPUT VERSION MAINTAINER [COPYRIGHT...]
       VERSION: Debian version; COPYRIGHT: files of libraries whose code the package's binaries hold

The changes are what scripts/changes prints. A heading of CHANGELOG.md is "## 1.2.3, 2030-12-31" or "## 1.2.3, not
released", which is dated SOURCE_DATE_EPOCH or today.
"""
import datetime
import email.utils
import gzip
import os
import pathlib
import re
import subprocess
import sys
import textwrap
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
OWN = """DAX, a machine-vision algorithm library

Copyright {year} the DAX developers.

No licence has been chosen yet. Until there is one, nothing beyond what copyright law itself permits is granted; ask the
owner before copying, changing or passing on this software.
"""
OTHERS = """

The binaries of this package hold code of header-only libraries. What follows is the copyright file of the package
{package}.

"""


def date_of(word):
    try:
        day = datetime.datetime.strptime(word, "%Y-%m-%d").replace(tzinfo=datetime.timezone.utc).timestamp()
    except ValueError:
        day = int(os.environ.get("SOURCE_DATE_EPOCH", time.time()))
    return email.utils.formatdate(day)


def changelog(text, version, maintainer):
    """One entry for each heading; the newest has the version of the package."""
    revision = version.rsplit("-", 1)[1]
    entries = []
    for number, word, body in re.findall(r"^## (\S+), (.+)\n((?:(?!## ).*\n?)*)", text, re.M):
        items = re.findall(r"^- (.*(?:\n  .*)*)", body, re.M)
        lines = [textwrap.fill(re.sub(r"[*`]", "", " ".join(item.split())), 78, initial_indent="  * ",
                               subsequent_indent="    ") for item in items]
        entries.append(f"dax ({number}-{revision}) unstable; urgency=medium\n\n" + "\n".join(lines) +
                       f"\n\n -- {maintainer}  {date_of(word)}\n")
    if not entries or not entries[0].startswith(f"dax ({version})"):
        sys.exit(f"make_documents: the newest heading of CHANGELOG.md is not that of version {version}")
    return "\n".join(entries)


def main():
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    folder, version, maintainer, others = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3], sys.argv[4:]
    folder.mkdir(parents=True, exist_ok=True)
    text = subprocess.run([sys.executable, ROOT / "scripts/changes"], check=True, capture_output=True, text=True).stdout
    log = changelog(text, version, maintainer)
    # Without the time, so that the same sources give the same file.
    (folder / "changelog.Debian.gz").write_bytes(gzip.compress(log.encode(), 9, mtime=0))
    text = OWN.format(year=re.search(r", \d+ \w+ (\d+)", log)[1])
    for other in map(pathlib.Path, others):
        text += OTHERS.format(package=other.parent.name) + other.read_text()
    (folder / "copyright").write_text(text)


main()
