#!/usr/bin/env python3
"""Lists for the hostile driver the exported functions, the records, and what their contracts say about arguments.

usage: make_prototypes.py INCLUDE FUNCTIONS RECORDS CONTRACTS     INCLUDE: the public headers; the others: the lists

HOSTILE_FUNCTION(name, "result type", {what is known of an argument}...); HOSTILE_RECORD(name, HOSTILE_FIELD(...)...).
Types and sizes are left to the compiler; what it cannot tell is names, limits, and which query tells a buffer's size.
"""
import pathlib
import re
import sys

import headers
import limits

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "python"))
import header_contracts  # noqa: E402

LAYOUT = re.compile(r"A?[CP]\d\w*|IS|NEON|Process|")
QUERIES = {"model": r"_?ModelSize", "result": r"_?ResultSize"}
HANDLES = ("pool", "user", "block")
VERSION = re.compile(r"[VvUSf]?\d\w*|MT")
WORK = r"_?(?:Buffer|Buf|buf)_?[Ss]ize"


def tokens(name):
    return [each for each in name.split("_") if not LAYOUT.fullmatch(each)]


def query_of(function, name, queries):
    """The function that tells the bytes of an argument: the one whose name is this one's with ...BufferSize in it, or
    begins so: 16s for 16s32f, Build for BuildIndex. Types and versions may be left out."""
    pattern, best = QUERIES.get(name, WORK), (0, "")
    for query in queries:
        if name in HANDLES or not re.search(pattern, query):
            continue
        own, rest = tokens(re.sub(pattern, "", query)), tokens(function)
        begins = len(own) <= len(rest) and all(other.startswith(each) for each, other in zip(own, rest))
        if begins and all(VERSION.fullmatch(each) for each in rest[len(own) :]):
            best = max(best, (sum(len(each) + (each == other) for each, other in zip(own, rest)), query))
    return best[1]


PLACE = r"`{}`[^`]*?(?:(any address)|multiple of (?:(\d+)|the size of a float(?: \(([^():]*): of a double\))?))"


def alignment(function, name, text):
    """Of a buffer: "lies at a multiple of 4", "at any address", or "of the size of a float (64f: of a double)"."""
    about = re.search(PLACE.format(name), text)
    if not about:
        return 16
    if about[1] or about[2]:
        return int(about[2] or 1)
    doubles = [each for each in re.findall(r"\w+", about[3] or "") if each != "and"]
    return 8 if any(f"{each}_" in function for each in doubles) else 4


def variables_of(function):
    """Names that a contract may use, and what Call::value() calls them. The first size has w and h, the second W and
    H."""
    known = {each.name: each.name for each in function.arguments if each.stars == 0 and each.type != "DaxiSize"}
    sizes = [each.name for each in function.arguments if each.type == "DaxiSize"]
    for size, (width, height) in zip(sizes, (("w", "h"), ("W", "H"))):
        known |= {width: f"{size}.width", height: f"{size}.height"}
    known |= {f"{size}.{side}": f"{size}.{side}" for size in sizes for side in ("width", "height")}
    if sizes and sizes[0].lower().endswith("size"):
        known |= {side: f"{sizes[0]}.{side}" for side in ("width", "height")}
    return known


def limits_of(function, texts, enumerators):
    known = variables_of(function)
    reader = limits.Reader(function.name, known, {each.name: each.type for each in function.arguments if each.isReal})
    for text in texts:
        for _, clause in header_contracts.clauses(text):
            reader.refused(clause)
        for names, described in re.findall(r"^ \*   (\w+(?:, \w+)*)   *(\S.*)$", text, re.M):
            for name in names.split(", "):
                if known.get(name) == name or f"{name}.width" in known:
                    reader.described(name, described, enumerators)
    return reader.finish()


def extreme(expressions, which, none):
    each = list(dict.fromkeys(expressions))
    return f"std::{which}<double>({{{', '.join(each)}}})" if len(each) > 1 else f"double({each[0]})" if each else none


def bounds(found):
    """As a function of the call."""
    low, high = extreme(found.low, "max", "-INFINITY"), extreme(found.high, "min", "INFINITY")
    return f"[]([[maybe_unused]] Call& c) -> Limits {{ return {{{low}, {high}}}; }}"


def in_place(function, own, head, name):
    stated = re.compile(rf"{name} may equal (\w+)|[Tt]he destination may be one of the (source)s")
    match = stated.search(own) or (None if "must not overlap" in own else stated.search(head))
    first = "src1" if any(each.name == "src1" for each in function.arguments) else "src"
    return name == "dst" and match and (match[1] or first)


def meaning(function, each, found, own, head, queries, records):
    parts = [f'.name = "{each.name}"']
    if each.type in records and each.stars <= 1 and each.type != "DaxiSize":
        parts.append(f'.record = "{each.type}"')
    if each.elements.isdigit():
        parts.append(f".elements = {each.elements}")
    if each.stars == 1 and re.search(r"...s$", each.name) or re.search(rf"\b{each.name}\b[^.;]*`count`", own + head):
        parts.append(".isCounted = true")
    if re.search(rf"\b{each.name}(?: +[^;.]*;)? may be null", own + head):
        parts.append(".mayBeNull = true")
    isWork = each.type == "void" and each.stars == 1 and not each.isConst
    if query := isWork and query_of(function.name, each.name, queries):
        parts.append(f'.query = "{query}", .alignment = {alignment(function.name, each.name, own + head)}')
    if of := in_place(function, own, head, each.name):
        parts.append(f'.inPlaceOf = "{of}"')
    width, height = f"{each.name}.width", f"{each.name}.height"
    for name, member in ((each.name, "limits"), (width, "limits"), (height, "heightLimits")):
        if name in found and (found[name].low or found[name].high):
            parts.append(f".{member} = {bounds(found[name])}")
        if name in found and found[name].choices:
            parts.append(f".choices = {{{', '.join(found[name].choices)}}}")
        if name == each.name and name in found and found[name].is_rounded:
            parts.append(".isRounded = true")
    return f"{{{', '.join(parts)}}}"


def list_functions(include, records, enumerators):
    known = list(headers.functions(include))
    queries = [each.name for each in known if each.arguments and each.arguments[-1].name == "bytes"]
    own = header_contracts.comments(include)
    for function in known:
        found = limits_of(function, header_contracts.referred(own, function.name), enumerators)
        comment, head = (re.sub(r"\n \*", "", text) for text in own[function.name])
        others = [each for each in queries if each != function.name]
        parts = [meaning(function, each, found, comment, head, others, records) for each in function.arguments]
        yield f"HOSTILE_FUNCTION({', '.join([function.name, f'{chr(34)}{function.result}{chr(34)}', *parts])})\n"


def list_records(records, enumerators):
    for record, fields in sorted(records.items()):
        lines = []
        for name, kind, is_pointer, comment in fields:
            low, high = (None, None) if is_pointer else limits.stated(comment, enumerators)
            if re.search(r"\bfinite\b(?!, not used)", comment):
                low, high = low or "-DBL_MAX", high or "DBL_MAX"
            default = re.search(r"default (\S*\d)", comment)
            if low and low.endswith(" + 1e-6"):
                low = f"next<{kind if kind in ('float', 'double') else 'int64_t'}>({low[:-7]}, 1)"
            values = f"{low or '-INFINITY'}, {high or 'INFINITY'}, {default[1] if default else 'NAN'}"
            lines.append(f'HOSTILE_FIELD({record}, {name}, "{kind if kind in records else ""}", {values})')
        yield f"HOSTILE_RECORD({record}, {' '.join(lines)})\n"


def list_contracts(include):
    codes = header_contracts.contracts(include)
    for function, checks in header_contracts.checks(include).items():
        parts = [f'HOSTILE_CHECK({code}, "{clause}")' for code, clause in checks]
        named = [f"HOSTILE_CODE({code})" for code in sorted({*codes[function], *(code for code, _ in checks)})]
        if named:
            yield f"HOSTILE_CONTRACT({function}, {' '.join(parts)}, {' '.join(named)})\n"


def rewrite(path, lines):
    text = "".join(sorted(lines))
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def main():
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    include, functions, records, contracts = map(pathlib.Path, sys.argv[1:])
    known, enumerators = headers.records(include), headers.enumerators(include)
    rewrite(functions, list_functions(include, known, enumerators))
    rewrite(records, list_records(known, enumerators))
    rewrite(contracts, list_contracts(include))


main()
