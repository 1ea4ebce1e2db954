"""What the comments of the public headers say about each function: {function: {code: [clause, ...]}}."""
import re

# A blank line ends what a comment is about.
PIECE = re.compile(r"/\*(?P<comment>.*?)\*/|^DAX_API (?P<prototype>[^;]*);|(?P<gap>\n\n)", re.S | re.M)
REFERENCE = re.compile(r"\b[Aa]s(?: of| in| for)?(?: |\n \* )(_?(?:DAX|ZUR|PRMT|PRM)[A-Z0-9]*_\w+)")
VARIANT = re.compile(r"(_NEON)?(_MT|_IS)$")
# Solvers have small negative codes, which are told from numbers by the arrow or the word before them.
CODE = re.compile(r"0x1[0-9a-f]{7}|(?:(?<=-> )|(?<=else ))-\d\d?\b")
CODES = re.compile(rf"(?:{CODE.pattern})(?:(?:,| and| or| else)* 0x1[0-9a-f]{{7}})*")
# A comment that opens with a name is about all functions whose names begin so.
SECTION = re.compile(r"\s*(DAX\w+): ")


def lines_of(comment):
    """A comment as all its prose in one line, and the rows of its tables, which end in codes after two blanks or
    more."""
    rows, prose, hanging = [], [], ""
    for line in re.sub(r"\n \* ?", "\n", comment).split("\n"):
        if re.search(r"\S {2,}0x1[0-9a-f]{7}", line):
            rows.append(hanging + line)
            hanging = ""
        elif line.startswith("  "):
            hanging += line.strip() + " "
        else:
            prose.append(hanging + line)
            hanging = ""
    return [" ".join(prose)] + rows


def clauses(comment):
    """Each (code, clause) of a comment. A clause is what stands before its code, back to the last separator; of several
    codes together each belongs to one of the clauses before them, or all to one."""
    found = []
    for number, line in enumerate(lines_of(comment)):
        # Not within parentheses.
        separators = r"(?<=\w)[.;:] (?![^(]*\))|in order[,:] |^\W+" if number == 0 else r"^\W+"
        start = 0
        for match in CODES.finditer(line):
            text, start = " ".join(line[start : match.start()].split()), match.end()
            text = re.split(separators, text.rstrip(" ->(,"))[-1]
            text = re.sub(r",? else$", "", text.strip(" ,;.->")) + ")" * (text.count("(") - text.count(")"))
            codes = [int(code, 0) for code in re.findall(r"0x\w+|-\d+", match.group())]
            parts = re.split(r", then |, ", text)
            if len(parts) != len(codes):
                parts = [text] * len(codes)
            found += [(code, part) for code, part in zip(codes, parts) if part]
    return found


def comments(include):
    """Of each function its own comment, or the one that it shares, and what stands about it at the head of its
    header."""
    own = {}
    for header in sorted(include.glob("*/*.h")):
        pieces = list(PIECE.finditer(header.read_text()))
        head, comment, sections = pieces[0]["comment"] or "", "", {}
        for piece in pieces[1:]:
            if piece["prototype"]:
                name = re.search(r"[ *]([A-Za-z_0-9]+)\(", piece["prototype"])[1]
                own[name] = (comment, "".join(text for stem, text in sections.items() if name.startswith(stem)) + head)
            else:
                comment = piece["comment"] or ""
                if section := SECTION.match(comment):
                    sections[section[1] + "_"] = comment
    return own


def comments_above(include):
    """The last function of the comment before that of each function."""
    above = {}
    for header in sorted(include.glob("*/*.h")):
        last = before = None
        for piece in list(PIECE.finditer(header.read_text()))[1:]:
            if piece["prototype"]:
                last = re.search(r"[ *]([A-Za-z_0-9]+)\(", piece["prototype"])[1]
                above[last] = before
            elif piece["comment"]:
                before = last
    return above


def contracts(include):
    """What the comment of each function says about each code, or the one that it shares or refers to, and about its
    header."""
    own, table, parameters = comments(include), {}, parameters_of(include)
    for name in own:
        known = table[name] = {}
        for text in referred(own, name):
            for code, clause in clauses(text):
                known.setdefault(code, [])
                if clause not in known[code]:
                    known[code].append(clause)
        if "Size" in name:  # queries refer to members of which they share few checks
            mine = {code for code, _ in clauses(own[name][0])}
            known.update({code: [text for each, text in clauses(own[name][0]) if each == code] for code in mine})
        table[name] = {code: about(name, parameters[name], several) for code, several in known.items()}
    return table


def parameters_of(include):
    """{function: names of its parameters}."""
    found = {}
    for header in sorted(include.glob("*/*.h")):
        for piece in PIECE.finditer(header.read_text()):
            if piece["prototype"]:
                name, rest = re.search(r"[ *]([A-Za-z_0-9]+)\((.*)\)", piece["prototype"], re.S).groups()
                found[name] = set(re.findall(r"(\w+)(?:\[\])?(?:,|$)", rest))
    return found


VERSIONS = re.compile(r"(?:^|; )(V\d|C1IR|_IS): ")
EMPTY = re.compile(r"(?:[Cc]hecks )?[Aa]s (?:above|DAX)|and _|(?:not|k to|else)$")


def about(name, parameters, several):
    """Of what comments say about a code what is about this function: clauses that refer to others say nothing, those
    about null pointers name its parameters, and those about one of the versions are about that alone."""
    kept = []
    for clause in several:
        parts = VERSIONS.split(clause)
        kept += [parts[0]] if parts[0] else []
        kept += [text for version, text in zip(parts[1::2], parts[2::2]) if version in name]
    kept = [re.sub(r"^then | gives$", "", clause) for clause in kept if not EMPTY.match(clause)] or several
    named = [set(re.findall(r"\w+", clause)) & parameters for clause in kept if clause.endswith(" null")]
    if any(named):
        foreign = re.compile(r"\b(?:src|dst|cfg|buffer|result|points|region|regions|bytes|image|rms|line)\b")
        kept = [clause for clause in kept if not clause.endswith(" null") or set(foreign.findall(clause)) <= parameters]
    return kept or several


WHOLE = re.compile(r"\b(?:in order|in this order)\b")
FURTHER = re.compile(
    r"Checks after|checked last|[Cc]hecked after|[Ll]ast check|the last check|One more check|Checked last"
)

# All checks of another function, among those of a list.
PART = re.compile(r"\bas (DAX\w+)(?:;|, then)")
ABOVE = re.compile(r"[Cc]hecks as above|^(?:The same|As above)\b")


def checks(include):
    """The checks of each function, in order: [(code, clause)...]. A comment that says \"in order\" and not \"after\"
    has them all; else they follow those of the function that it refers to, or of the comment above, or at the head of
    the header."""
    own, above = comments(include), comments_above(include)
    return {name: ordered(own, above, name) for name in own}


def ordered(own, above, name, depth=0):
    comment, head = own[name]
    mine = clauses(comment)
    prose = " ".join(re.sub(r"\n \*", " ", comment).split())
    if depth > 8 or WHOLE.search(prose) and mine and not FURTHER.search(prose):
        inner = PART.search(prose)
        if not inner or inner[1] not in own or depth > 8:
            return mine
        before = len(clauses(prose[: inner.start()]))
        return mine[:before] + ordered(own, above, inner[1], depth + 1) + mine[before:]
    plain = next(
        (each for each in (VARIANT.sub("", name), re.sub(r"_MT$", "", name)) if each != name and each in own), None
    )
    reference = next((each for each in REFERENCE.findall(comment) if each in own and each != name), None)
    if reference:
        base = ordered(own, above, reference, depth + 1)
    elif ABOVE.search(prose) and above[name]:
        base = ordered(own, above, above[name], depth + 1)
    elif plain and not mine and own[plain][0] != comment:
        base = ordered(own, above, plain, depth + 1)
    else:
        base = clauses(head)
    return base + [each for each in mine if each not in base]


def referred(own, name):
    """A function's comment and its header's, and after them those of the functions as which it works: those that it
    names, and of a form for the pool, or with an instruction-set code, the plain one."""
    texts, names = [], [name]
    for each in names:
        if each in own:
            texts += own[each]
            others = [*REFERENCE.findall("".join(own[each])), VARIANT.sub("", each)]
            names += [other for other in others if other not in names]
    return dict.fromkeys(texts)
