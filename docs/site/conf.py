"""Sphinx configuration of the documentation site; scripts/docs runs it with the built package on the path."""
import dax

project = "DAX"
version = release = dax.__version__
copyright = "the DAX developers"
extensions = ["myst_parser", "sphinx.ext.autodoc", "sphinx.ext.napoleon"]
myst_enable_extensions = ["colon_fence"]
myst_heading_anchors = 3
autodoc_member_order = "bysource"
autodoc_typehints = "signature"
exclude_patterns = ["site"]
# The fonts are the reader's own: the site fetches nothing.
html_theme = "furo"
html_title = f"DAX {release}"
html_show_sphinx = False
html_static_path = ["static"]
html_css_files = ["dax.css"]
html_theme_options = {"sidebar_hide_name": False}



def escape_bars(app, what, name, obj, options, lines):
    """|x| in a docstring is an absolute value, not a substitution."""
    lines[:] = [line if line.lstrip().startswith((">>>", "...")) else line.replace("|", r"\|") for line in lines]


def setup(app):
    app.connect("autodoc-process-docstring", escape_bars)
