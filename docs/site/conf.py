"""Sphinx configuration of the documentation site; scripts/docs runs it with the built package on the path."""
import pathlib
import re
import sys

import dax
from sphinx.ext import autodoc

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import collect

project = "DAX"
version = release = dax.__version__
copyright = "the DAX developers"
extensions = ["myst_parser", "sphinx.ext.autodoc", "sphinx.ext.napoleon"]
myst_enable_extensions = ["colon_fence", "deflist"]
myst_heading_anchors = 3
autodoc_member_order = "bysource"
autodoc_typehints = "signature"
exclude_patterns = ["site", "changes"]
# The fonts are the reader's own: the site fetches nothing.
html_theme = "furo"
html_title = f"DAX {release}"
html_show_sphinx = False
html_static_path = ["static"]
html_css_files = ["dax.css"]
# Debian's build of the theme has no dark colours of its own.
DARK = {
    "color-problematic": "#ee5151", "color-foreground-primary": "#e0e2e8", "color-foreground-secondary": "#a6aab0",
    "color-foreground-muted": "#8f949b", "color-foreground-border": "#666666", "color-background-primary": "#131416",
    "color-background-secondary": "#1a1c1e", "color-background-hover": "#1e2124ff",
    "color-background-hover--transparent": "#1e212400", "color-background-border": "#303335",
    "color-background-item": "#444444", "color-announcement-background": "#000000dd",
    "color-announcement-text": "#eeebee", "color-brand-primary": "#5ca5ff", "color-brand-content": "#6cb0ff",
    "color-highlighted-background": "#083563", "color-guilabel-background": "#08356380",
    "color-guilabel-border": "#13395f80", "color-admonition-background": "#18181a", "color-card-border": "#1a1c1e",
    "color-card-background": "#18181a", "color-card-marginals-background": "#1e2124ff",
    "color-link": "#6cb0ff", "color-link--hover": "#8cc4ff", "color-inline-code-background": "#202327",
    "color-sidebar-link-text--top-level": "#8cc4ff", "color-header-background": "#131416",
    "color-header-text": "#e0e2e8",
    "color-api-name": "#e0e2e8", "color-api-keyword": "#a6aab0",
}
html_theme_options = {"sidebar_hide_name": False, "dark_css_variables": DARK}


def tidy_text(app, what, name, obj, options, lines):
    """|x| in a docstring is an absolute value, not a substitution; fields of tuples say what they are in the class."""
    if lines and lines[0].startswith("Alias for field number"):
        lines.clear()
    lines[:] = [line if line.lstrip().startswith((">>>", "...")) else line.replace("|", r"\|") for line in lines]


# What the aliases of NumPy's typing stand for, as signatures spell it out.
_SUPPORTS = r"[~\w.]*_SupportsArray\[[~\w.]*dtype\[[~\w.]*Any\]\]"
_SCALARS = "bool, int, float, complex, str, bytes"
_NESTED = r"[~\w.]*_NestedSequence"
_MEMBERS = rf"{_SUPPORTS}, {_NESTED}\[{_SUPPORTS}\], {_SCALARS}, {_NESTED}\[[~\w.]*Union\[{_SCALARS}\]\]"
_ARRAY_LIKE = re.compile(rf"[~\w.]*Union\[{_MEMBERS}\]|{_MEMBERS}")
_ND_ARRAY = re.compile(r"[~\w.]*ndarray\[[~\w.]*Any, [~\w.]*dtype\[([^\]]*)\]\]")


def short(text):
    return text and _ND_ARRAY.sub(r"NDArray[\1]", _ARRAY_LIKE.sub("ArrayLike", text))


def shorten(app, what, name, obj, options, signature, result):
    return short(signature), short(result)


# Types of attributes pass no event.
_spell_out = autodoc.stringify_typehint
autodoc.stringify_typehint = lambda *arguments, **options: short(_spell_out(*arguments, **options))


def complete_theme(app, exception):
    """Debian's furo imports a style sheet from the root of a server, and a module in a plain script: the site has
    neither. Both are put into the files that ask for them."""
    script = pathlib.Path(app.outdir, "_static/scripts/furo.js")
    style = pathlib.Path(app.outdir, "_static/styles/furo.css")
    if exception or not script.exists():
        return
    text = script.read_text()
    module = re.match(r'import Gumshoe from "\./(.*?)";', text)
    if module:
        script.write_text((script.parent / module[1]).read_text() + text[module.end() :])
    normal = re.match(r"@import url\(/(javascript/.*?)\);", style.read_text())
    if normal:
        source = pathlib.Path("/usr/share", normal[1])
        style.write_text((source.read_text() if source.exists() else "") + style.read_text()[normal.end() :])


def fill(app, page, source):
    source[0] = collect.fill(source[0])
    if page.startswith("how-to/"):
        source[0] = collect.with_outputs(source[0])


def setup(app):
    app.connect("source-read", fill)
    app.connect("build-finished", complete_theme)
    app.connect("autodoc-process-docstring", tidy_text)
    app.connect("autodoc-process-signature", shorten)
