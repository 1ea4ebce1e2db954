"""The examples in the docstrings, and that every public function has one."""
import doctest
import importlib
import inspect
import pkgutil

import numpy as np
import pytest

import dax
from dax._library import version

MODULES = [module.name for module in pkgutil.iter_modules(dax.__path__) if not module.name.startswith("_")]


@pytest.mark.parametrize("name", MODULES)
def test_examples(name):
    module = importlib.import_module(f"dax.{name}")
    assert doctest.testmod(module, extraglobs={"dax": dax, "np": np}).failed == 0


def test_every_function_is_documented_and_typed():
    for name, member in vars(dax).items():
        if name.startswith("_") or not inspect.isfunction(member):
            continue
        assert ">>> " in (member.__doc__ or "") or name == "version", name
        hints = inspect.signature(member)
        assert all(p.annotation is not p.empty for p in hints.parameters.values()), name


def test_version():
    assert dax.__version__ == version() and dax.__version__.count(".") == 2
