"""The examples in the docstrings, and that every public function has one."""
import doctest
import importlib
import inspect
import pathlib
import pkgutil
import re
import runpy

import numpy as np
import pytest

import dax
from dax._contracts import CLAUSES
from dax._library import version

MODULES = [module.name for module in pkgutil.walk_packages(dax.__path__, "dax.") if "._" not in module.name]


@pytest.mark.parametrize("name", MODULES)
def test_examples(name):
    module = importlib.import_module(name)
    if name == "dax.pool" and module.host is None:
        pytest.skip("built without the library of pools")
    assert doctest.testmod(module, extraglobs={"dax": dax, "np": np}).failed == 0


def test_every_function_is_documented_and_typed():
    for name, member in vars(dax).items():
        if name.startswith("_") or not inspect.isfunction(member):
            continue
        assert ">>> " in (member.__doc__ or "") or name == "version", name
        assert_typed(name, member)


def assert_typed(name, function):
    signature = inspect.signature(function)
    given = [p for p in signature.parameters.values() if p.name not in ("self", "cls")]
    assert all(p.annotation is not p.empty for p in given) and signature.return_annotation is not signature.empty, name


def test_every_class_and_method_is_documented_and_typed():
    for name, kind in vars(dax).items():
        if not inspect.isclass(kind):
            continue
        assert kind.__doc__ and kind.__doc__.strip(), name
        for method, member in vars(kind).items():
            if inspect.isfunction(member) and not method.startswith("_"):
                assert member.__doc__, f"{name}.{method}"
                assert_typed(f"{name}.{method}", member)


def test_clauses_are_about_their_function():
    """What an error quotes says what failed, without looking at other functions."""
    for function, codes in CLAUSES.items():
        for several in codes.values():
            for clause in several:
                assert not re.search(r"as above|the same for|[Cc]hecks as|^and |^then |^not$| gives$|V1:|V2:",
                                     clause), (function, clause)
    assert CLAUSES["DAXI_CalipEdgeDetectBufferSize_8u"][0x10000014] == ["region or bytes null"]


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
