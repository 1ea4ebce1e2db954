"""What the package expects of the library that it finds."""
import pytest

import dax
from dax import _library


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
