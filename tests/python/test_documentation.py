"""The examples in the docstrings, and that every public function has one."""
import doctest
import importlib
import inspect
import pathlib
import pkgutil
import runpy

import numpy as np
import pytest

import dax
from dax._library import version

MODULES = [module.name for module in pkgutil.iter_modules(dax.__path__) if not module.name.startswith("_")]


@pytest.mark.parametrize("name", MODULES)
def test_examples(name):
    module = importlib.import_module(f"dax.{name}")
    if name == "pool" and module.host is None:
        pytest.skip("built without the library of pools")
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


@pytest.mark.parametrize(
    "path", sorted((pathlib.Path(__file__).parents[2] / "examples/python").glob("*.py")), ids=lambda path: path.stem
)
def test_example_programs(path, capsys):
    if dax.pool.host is None:
        pytest.skip("built without the library of pools")
    runpy.run_path(str(path), run_name="__main__")
    assert capsys.readouterr().out.strip()
