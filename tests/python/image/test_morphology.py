"""Grey morphology: windows, anchors and borders mean what SciPy means by them."""
import numpy as np
import pytest
from scipy import ndimage

import dax

PEERS = {
    dax.gray_erode: ndimage.grey_erosion,
    dax.gray_dilate: ndimage.grey_dilation,
    dax.gray_open: ndimage.grey_opening,
    dax.gray_close: ndimage.grey_closing,
    dax.gray_gradient: ndimage.morphological_gradient,
    dax.top_hat: ndimage.white_tophat,
    dax.black_hat: ndimage.black_tophat,
}


@pytest.mark.parametrize("function", PEERS)
@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
def test_equals_scipy(rng, pool, function, dtype):
    image = rng.integers(0, 120, (23, 31)).astype(dtype)
    expected = PEERS[function](image, size=(3, 7), mode="nearest")
    np.testing.assert_array_equal(function(image, (7, 3)), expected)
    np.testing.assert_array_equal(function(image, (7, 3), pool=pool), expected)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
def test_usual_windows(rng, dtype):
    image = rng.integers(0, 120, (9, 11)).astype(dtype)
    np.testing.assert_array_equal(dax.gray_erode(image), ndimage.grey_erosion(image, size=3, mode="nearest"))
    np.testing.assert_array_equal(dax.gray_dilate(image), ndimage.grey_dilation(image, size=3, mode="nearest"))


def test_anchor_border_and_iterations(rng):
    image = rng.integers(0, 120, (23, 31)).astype(np.uint8)
    expected = ndimage.minimum_filter(image, size=(3, 4), origin=(-1, 0), mode="mirror")
    np.testing.assert_array_equal(dax.gray_erode(image, (4, 3), anchor=(2, 0), mode="mirror"), expected)
    np.testing.assert_array_equal(dax.gray_dilate(image, iterations=3), dax.gray_dilate(image, 7))
    assert (dax.gray_dilate(image, mode="constant", value=200)[0] == 200).all()
    with pytest.raises(ValueError, match="anchor"):
        dax.gray_erode(image, 3, anchor=(3, 0))


def test_dilation_gives_back_what_erosion_takes():
    mask = np.zeros((12, 12), np.uint8)
    mask[2:7, 3:9] = 255
    np.testing.assert_array_equal(dax.dilate3x3(dax.erode3x3(mask)), mask)
