import sys

import numpy as np
import pytest

import dax
from dax import _library

_called = set()
_function = _library.function


def _recording(name):
    _called.add(name)
    return _function(name)


# All calls go through this one; modules that have imported it already get it too.
_library.function = _recording
for _name, _module in list(sys.modules.items()):
    if _name.startswith("dax.") and getattr(_module, "function", None) is _function:
        _module.function = _recording


@pytest.fixture
def called():
    """Names of the exported functions that have been called so far."""
    return _called


def pytest_collection_modifyitems(items):
    # What all others have called is known in the end.
    items.sort(key=lambda item: "test_completeness" in item.nodeid)


@pytest.fixture
def rng():
    return np.random.default_rng(7)


@pytest.fixture
def pool():
    """A pool of two, or none where the library of pools was not built: calls without one must do the same."""
    if _library.host is None:
        yield None
        return
    with dax.Pool(2) as pool:
        yield pool
