"""Functions of the regular form: what apply() hands to the C interface."""
import numpy as np
import pytest

from dax import _operation
from dax._interface import ffi


@pytest.fixture
def calls(monkeypatch):
    """The calls that are made, instead of made."""
    made = []
    monkeypatch.setattr(_operation, "call", lambda name, *arguments: made.append((name, arguments)))
    monkeypatch.setattr(_operation, "buffer", lambda name, *arguments: (name, arguments))
    monkeypatch.setattr(_operation, "has", lambda name: "8u" in name)
    return made


def numbers_at(pointer, count):
    return list(ffi.cast("uint8_t*", pointer)[0:count])


def test_images_parameters_and_work_buffer(calls):
    one, two = np.arange(24, dtype=np.uint8).reshape(2, 4, 3), np.full((4, 9), 7, np.uint8)[:2].reshape(2, 3, 3)
    one = one[:, :3]
    out = np.zeros((2, 5, 3), np.float32)[:, 1:4]
    images, value = {"first": one, "second": two}, _operation.Value("value", (1, 2, 3))
    result = _operation.apply(
        "F_{type}_{layout}R", images, 5, value, types="16s 8u32f", layouts="C1 C3", out=out, work="W_{type}",
        measures=(9,)
    )
    ((name, arguments),) = calls
    assert result is out and name == "F_8u32f_C3R"
    first, step, second, other_step, to, to_step, size, parameter, pixel, work = arguments
    assert (numbers_at(first, 3), step) == ([0, 1, 2], 12) and (numbers_at(second, 2), other_step) == ([7, 7], 9)
    assert (int(ffi.cast("uintptr_t", to)), to_step) == (out.ctypes.data, 15)
    assert size == {"width": 3, "height": 2} and parameter == 5 and list(pixel) == [1, 2, 3]
    assert work == ("W_8u32f", (size, 9))


def test_value_of_one_channel_and_type(calls):
    _operation.apply("F_{type}", {"image": np.zeros((2, 2), np.uint8)}, _operation.Value("value", 250.0), types="8u")
    assert calls[0][1][-1] == 250
    for wrong in (-1, 256, 1j, 250.5):
        with pytest.raises(ValueError, match="value"):
            _operation.apply("F", {"image": np.zeros((2, 2), np.uint8)}, _operation.Value("value", wrong), types="8u")


def test_pool_is_taken_where_there_is_a_form_for_it(calls, pool):
    if pool is None:
        pytest.skip("built without the library of pools")
    for dtype, name in ((np.uint8, "F_8u_MT"), (np.int16, "F_16s")):
        image = np.zeros((2, 2), dtype)
        _operation.apply("F_{type}", {"image": image}, types="8u 16s", pooled="F_{type}_MT", pool=pool)
        assert calls[-1][0] == name and len(calls[-1][1]) == (7 if name.endswith("_MT") else 5)


def test_what_is_refused(calls):
    image, colour = np.zeros((4, 4), np.uint8), np.zeros((4, 4, 3), np.uint8)
    for images, kind, match in (
        ({"image": image.astype(np.int32)}, TypeError, "image: .*int32; taken are uint8, int16"),
        ({"image": image, "other": image[1:]}, ValueError, "other: shape"),
        ({"image": image, "other": image.astype(np.int16)}, TypeError, "other: "),
    ):
        with pytest.raises(kind, match=match):
            _operation.apply("F", images, types="8u 16s")
    with pytest.raises(ValueError, match=r"\(height, width, 3\)"):
        _operation.apply("F", {"image": colour[..., :2]}, types="8u", layouts="C1 C3")
    for out, in_place in ((image, False), (image[1:], True)):
        with pytest.raises(ValueError, match="overlap"):
            _operation.apply("F", {"image": image[: len(out)]}, types="8u", out=out, in_place=in_place)
    assert not calls and _operation.apply("F", {"image": image}, types="8u", out=image, in_place=True) is image
