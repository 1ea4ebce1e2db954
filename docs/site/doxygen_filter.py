#!/usr/bin/env python3
"""Turns the plain comments of a public header into what Doxygen reads: marks them, keeps their tables as they stand,
and gives each prototype that follows another without a comment the comment that the group shares."""
import re
import sys

# What stands in one comment, and not what stands from one comment to the end of another.
TEXT = r"((?:(?!\*/).)*)"


def paragraph_blocks(text):
    """Indented lines stand as they are; everything else is prose."""
    lines, inside = [], False
    for line in text.split("\n"):
        indented = line.startswith("  ")
        if indented != inside and line.strip():
            lines.append("@verbatim" if indented else "@endverbatim")
            inside = indented
        lines.append(line)
    if inside:
        lines.append("@endverbatim")
    return "\n".join(lines)


def doxygen(comment):
    text = re.sub(r"\n \*(?: |(?=\n)|$)", "\n", comment.strip())
    # Names in backticks stay; signs that Doxygen would take for commands or tags do not.
    text = re.sub(r"(?<!@)<(?=[A-Za-z/])", "&lt;", text)
    return paragraph_blocks(text.replace("\\", "\\\\"))


def convert(header):
    header = re.sub(rf"(?<=[;,{{}}\w)]) +/\*\s{TEXT}\*/", lambda m: " /**< " + doxygen(m[1]) + " */", header,
                    flags=re.S)
    first = header.index("/*")
    end = header.index("*/", first)
    head = doxygen(header[first + 2 : end])
    brief, _, rest = head.partition("\n")
    body = header[end + 2 :]
    body = re.sub(rf"^/\*\s{TEXT}\*/\n", lambda m: "/** " + doxygen(m[1]) + " */\n", body, flags=re.S | re.M)
    body = re.sub(rf"(/\*\* (?:(?!\*/).)*\*/\n)((?:^DAX_API [^;]*;\n){{2,}})", shared, body, flags=re.S | re.M)
    # What has no comment of its own is described at the head of the header.
    body = re.sub(r"(?<=\n\n)((?:DAX_API [^;]*;\n)+)",
                  lambda m: shared(["", "/** See the detailed description above. */\n", m[1]]), body)
    return f"/** @file\n * @brief {brief}\n{rest}\n */" + body


def shared(match):
    """A group of prototypes below one comment: each gets it."""
    prototypes = re.findall(r"^DAX_API [^;]*;\n", match[2], re.M)
    return "".join(match[1] + prototype for prototype in prototypes)


sys.stdout.write(convert(open(sys.argv[1]).read()))
