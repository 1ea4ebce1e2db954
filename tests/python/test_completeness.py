"""Every exported function is called by the tests of this folder, or their modules say in WITHOUT why not: {pattern of
names: reason}."""
import os
import pathlib
import re

import pytest

from dax import _library

EXPORTS = pathlib.Path(os.environ.get("DAX_LIBRARY", "")).with_name("exports.txt")


def test_every_export_is_reachable(request, called):
    if not EXPORTS.exists() or _library.host is None:
        pytest.skip("no list of exports beside the library, or no pool that all could run on")
    folder = pathlib.Path(__file__).parent
    if [pathlib.Path(each).resolve() for each in request.config.args] != [folder] or request.config.option.keyword:
        pytest.skip("only some of the tests are run")
    uncalled = set(EXPORTS.read_text().split()) - called
    modules = {item.module for item in request.session.items}
    patterns = [pattern for module in modules for pattern in getattr(module, "WITHOUT", {})]
    assert {name for name in uncalled if not any(re.fullmatch(pattern, name) for pattern in patterns)} == set()
    for pattern in patterns:
        assert any(re.fullmatch(pattern, name) for name in uncalled), f"{pattern}: needed no more"
