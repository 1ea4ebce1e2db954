#!/usr/bin/env python3
"""Completes the package's __init__.py: imports of what its modules offer, and the list of that in its docstring.

usage: make_package.py PACKAGE     PACKAGE: a copy of the sources, whose __init__.py is rewritten

A public module is a file without a leading underscore; it says in __all__ what it offers. One that says
NAMESPACE = True is imported as a module, its names are not: other modules have some of them too.
"""
import ast
import pathlib
import sys
import textwrap


def offers(path):
    """The names in a module's __all__."""
    tree = ast.parse(path.read_text())
    for statement in tree.body:
        if isinstance(statement, ast.Assign) and getattr(statement.targets[0], "id", "") == "__all__":
            if not ast.get_docstring(tree):
                sys.exit(f"make_package: {path}: no docstring")
            if not (path.parent / "__init__.py").exists():
                sys.exit(f"make_package: {path.parent}: no __init__.py")
            return sorted(ast.literal_eval(statement.value), key=str.lower)
    sys.exit(f"make_package: {path}: no __all__")


def is_namespace(path):
    statements = ast.parse(path.read_text()).body
    targets = [each.targets[0] for each in statements if isinstance(each, ast.Assign)]
    return any(getattr(target, "id", "") == "NAMESPACE" for target in targets)


def public_modules(package):
    """{dotted name: names that it offers}, those of subpackages last; of a namespace they have its name before them."""
    paths = [path.relative_to(package) for path in package.rglob("*.py")]
    paths = [path for path in paths if not any(part.startswith("_") for part in path.parts)]
    modules = {".".join(path.with_suffix("").parts): offers(package / path) for path in sorted(paths)}
    for path in paths:
        if is_namespace(package / path):
            module = ".".join(path.with_suffix("").parts)
            modules[module] = [f"{path.stem}.{name}" for name in modules[module]]
    owner = {}
    for module, names in modules.items():
        for name in names:
            if owner.setdefault(name, module) != module:
                sys.exit(f"make_package: {name} is in {owner[name]} and in {module}")
    return modules


def listing(modules):
    """What there is, by module, as lines of the docstring."""
    indent = 6 + max(map(len, modules))
    lines = []
    for module, names in modules.items():
        text = textwrap.fill(", ".join(names), 120, initial_indent=" " * indent, subsequent_indent=" " * indent)
        lines.append(f"    {module}".ljust(indent) + text[indent:])
    return "\n".join(lines)


def complete(source, modules):
    head, rest = source.split('\n"""\n', 1)
    imports = [f"from .{module} import {', '.join(names)}" if "." not in names[0] else f"from . import {module}"
               for module, names in modules.items()]
    everything = sorted(["version", *(name for names in modules.values() for name in names if "." not in name)],
                        key=str.lower)
    listed = [f'{head}\n\n{listing(modules)}\n"""', *imports, rest, f"__all__ = {everything!r}", ""]
    return "\n".join(listed)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    package = pathlib.Path(sys.argv[1])
    path = package / "__init__.py"
    path.write_text(complete(path.read_text(), public_modules(package)))


main()
