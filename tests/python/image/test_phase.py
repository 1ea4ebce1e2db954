"""Phase correlation."""
import numpy as np
import pytest

import dax

DTYPES = [np.uint8, np.uint16, np.float32]


@pytest.fixture(scope="module")
def scene():
    return dax.gauss(np.random.default_rng(3).integers(0, 256, (200, 220)).astype(np.float32), 1.2) * 3 - 256


def as_type(image, dtype):
    return np.clip(image, 0, 255).astype(dtype)


@pytest.mark.parametrize("dtype", DTYPES)
def test_shift(scene, dtype, pool):
    a, b = as_type(scene[20:180, 20:200], dtype), as_type(scene[33:193, 14:194], dtype)
    found = dax.phase_shift(a, b)
    assert np.allclose(found[:2], (6, -13), atol=0.01) and found.peak > 2 * found.second
    assert dax.phase_shift(a, b, pool=pool) == found
    assert np.allclose(dax.phase_shift(b, a)[:2], (-6, 13), atol=0.01)
    # Any strides, and shifts to parts of a pixel: what it finds is what an exact warp undoes.
    moved = dax.warp_affine(as_type(scene, dtype), [[1, 0, 2.25], [0, 1, -3.5], [0, 0, 1]], interpolation="lanczos")
    inner = np.s_[20:180, 20:200]
    assert np.allclose(dax.phase_shift(as_type(scene, dtype)[inner], moved[inner])[:2], (2.25, -3.5), atol=0.03)
    assert np.allclose(dax.phase_shift(a[:, ::-1], b[:, ::-1])[:2], (-6, -13), atol=0.01)


@pytest.mark.parametrize("dtype", DTYPES)
def test_rotation_and_scale(scene, dtype, pool):
    a = as_type(scene, dtype)
    there = dax.rotation_matrix((109.5, 99.5), 2.1, 1.2)
    there[:2, 2] += 4.5, -6.25
    b = dax.warp_affine(a, there, interpolation="cubic", mode="mirror")
    found = dax.phase_rotation_scale(a, b)
    assert abs(found.angle - 2.1) < 0.005 and abs(found.scale - 1.2) < 0.01
    corners = np.array([[40, 40, 1], [180, 40, 1], [180, 160, 1]]).T
    assert np.abs((found.matrix - there) @ corners).max() < 1
    again = dax.phase_rotation_scale(a, b, pool=pool)
    assert np.array_equal(again.matrix, found.matrix) and again[1:] == found[1:]


def test_refused():
    grey = np.arange(1600, dtype=np.uint8).reshape(40, 40)
    with pytest.raises(dax.Error):
        dax.phase_shift(np.full((40, 40), 7, np.uint8), grey)
    with pytest.raises(dax.Error):
        dax.phase_shift(grey[:10], grey[:10])
    with pytest.raises(ValueError, match="second: shape"):
        dax.phase_shift(grey, grey[1:])
    with pytest.raises(TypeError, match="second"):
        dax.phase_shift(grey, grey.astype(np.float32))
