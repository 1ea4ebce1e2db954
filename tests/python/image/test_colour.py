"""Colour: the wiring of each conversion, and round trips."""
import numpy as np
import pytest

import dax

_IN_PLACE = "YCbCr|HSV|HLS|XYZ|Lab"
WITHOUT = {
    rf"DAXI_(S?(RGB|BGR)To({_IN_PLACE})|({_IN_PLACE})ToS?(RGB|BGR)|ColourMatrix|WhiteBalance)_\w+_C3IR":
        "out= is the image",
}
TYPES = [np.uint8, np.uint16, np.float32]


@pytest.fixture(params=TYPES)
def image(request, rng):
    dtype = np.dtype(request.param)
    levels = rng.integers(0, 256, (9, 31, 3))
    return (
        (levels / 255).astype(dtype)
        if dtype.kind == "f"
        else (levels * (257 if dtype.itemsize == 2 else 1)).astype(dtype)
    )


@pytest.mark.parametrize("weights, numbers", [("bt601", (0.299, 0.587, 0.114)), ("bt709", (0.2126, 0.7152, 0.0722))])
def test_grey(image, weights, numbers):
    expected = image @ np.array(numbers)
    off = 0.5 + 1e-6 if image.dtype.kind == "u" else 1e-6
    assert np.abs(dax.rgb2gray(image, weights) - expected).max() <= off
    assert np.array_equal(dax.rgb2gray(image[..., ::-1], weights, bgr=True), dax.rgb2gray(image, weights))
    assert np.abs(dax.rgb2gray(image, numbers) - expected).max() <= off
    assert np.array_equal(dax.gray2rgb(image[..., 0])[..., 2], image[..., 0])


PAIRS = [
    (dax.rgb2ycbcr, dax.ycbcr2rgb, {"standard": "bt709", "range": "full"}),
    (dax.rgb2hsv, dax.hsv2rgb, {}),
    (dax.rgb2hls, dax.hls2rgb, {}),
    (dax.rgb2lab, dax.lab2rgb, {}),
    (dax.rgb2xyz, dax.xyz2rgb, {}),
    (dax.rgb2xyz, dax.xyz2rgb, {"linear": True}),
]


@pytest.mark.parametrize("there, back, arguments", PAIRS)
def test_there_and_back(image, there, back, arguments, pool):
    if there is dax.rgb2xyz and image.dtype == np.uint8:
        with pytest.raises(TypeError, match="uint16, float32"):
            there(image)
        return
    coded = there(image, **arguments)
    assert np.array_equal(there(np.ascontiguousarray(image[..., ::-1]), bgr=True, **arguments), coded)
    assert np.array_equal(there(image, pool=pool, **arguments), coded)
    assert np.array_equal(there(image, pool=pool, bgr=True, **arguments), there(image, bgr=True, **arguments))
    rgb = back(coded, **arguments)
    off = {"u1": 26, "u2": 40, "f4": 2e-5}[image.dtype.str[1:]]
    assert np.abs(rgb.astype(float) - image).max() <= off
    assert np.array_equal(back(coded, bgr=True, **arguments)[..., ::-1], rgb)
    assert np.array_equal(back(coded, pool=pool, **arguments), rgb)
    assert np.array_equal(back(coded, pool=pool, bgr=True, **arguments)[..., ::-1], rgb)
    assert back(coded, out=coded, **arguments) is coded and np.array_equal(coded, rgb)


def test_hue180_is_of_bytes(rng):
    image = rng.integers(0, 256, (9, 31, 3), dtype=np.uint8)
    assert dax.rgb2hsv(image, hue180=True)[..., 0].max() < 180
    with pytest.raises(ValueError, match="hue180"):
        dax.rgb2hsv(image.astype(np.uint16), hue180=True)


def test_matrix_and_gains(image, pool):
    matrix = np.array([[0.5, 0.25, 0], [0, 0.5, 0.25], [0.25, 0, 0.5]])
    expected = image @ matrix.T
    off = 0.5 if image.dtype.kind == "u" else 1e-6
    assert np.abs(dax.colour_matrix(image, matrix) - expected).max() <= off
    assert np.array_equal(dax.colour_matrix(image, np.hstack([matrix, np.zeros((3, 1))]), pool=pool),
                          dax.colour_matrix(image, matrix))
    with pytest.raises(ValueError, match="matrix"):
        dax.colour_matrix(image, np.zeros((3, 2)))
    gains = dax.gray_world_gains(image // 2 if image.dtype.kind == "u" else image / 2)
    assert gains[1] == 1 and np.allclose(gains, 1, atol=0.3)
    assert np.abs(dax.white_balance(image, (0.5, 1, 0.25)) - image * [0.5, 1, 0.25]).max() <= off
    assert np.array_equal(dax.white_balance(image, (0.5, 1, 0.25), pool=pool), dax.white_balance(image, (0.5, 1, 0.25)))
    assert dax.white_patch_gains(image, 0.9)[1] == 1
    with pytest.raises(dax.Error, match="percentile"):
        dax.white_patch_gains(image, 1.5)
    with pytest.raises(dax.Error):
        dax.gray_world_gains(np.zeros_like(image))
