"""What the package offers, and what it expects of the library that it finds."""
import importlib.util
import pydoc
import re

import pytest

import dax
from dax import _library

WITHOUT = {
    r".*_IS": "an instruction-set code; results are the same, and members without choose well",
    r".*_NEON|.*0to255_8u_C1IR_NEON": "the same, as a name",
    r".*_C1IR": "in place, or with a pointer that is not const: a form of the member with two images",
    r"DAX_.*Mem.*|ZUR_(Malloc|AllocMemTab|FreeMemTab|CheckMemTab)|DAXCUDA_.*": "memory is NumPy's",
    r".*GetCpu(Clocks|Frequency)": "Python has clocks",
    r"DAXI_CheckData_.*|(DAX|ZUR)_CheckImage|DAX_ZurImgToDaxImg|.*Check_Cloud3D_32f": "records that arrays replace",
}


def test_help_lists_what_there_is():
    listed = set(re.findall(r"\w+", dax.__doc__))
    assert set(dax.__all__) - {"version"} <= listed
    assert "otsu(" in pydoc.plain(pydoc.render_doc(dax))


def test_all_is_all():
    public = {name
              for name, value in vars(dax).items() if not name.startswith("_") and getattr(value, "__module__", "")}
    assert public == set(dax.__all__)


def test_a_library_that_is_not_there(monkeypatch):
    monkeypatch.setenv("DAX_LIBRARY", "/nowhere/libdax.so")
    spec = importlib.util.find_spec("dax._library")
    with pytest.raises(ImportError, match="DAX_LIBRARY"):
        spec.loader.exec_module(importlib.util.module_from_spec(spec))


@pytest.mark.parametrize("part, fits", [(0, False), (1, False), (2, True)])
def test_library_of_another_version(monkeypatch, part, fits):
    """Records of other versions may have another layout, so that only another patch is taken."""
    numbers = [int(number) for number in dax.__version__.split(".")]
    numbers[part] += 1
    other = ".".join(map(str, numbers))
    monkeypatch.setattr(_library, "VERSION", other)
    if fits:
        return _library._check_version()
    with pytest.raises(ImportError, match=f"library is of version {dax.__version__}, the package of {other}"):
        _library._check_version()
