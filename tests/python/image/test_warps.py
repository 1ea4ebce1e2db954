"""Warps, remaps and polar images: they read the image where SciPy reads it."""
import numpy as np
import pytest
from scipy import ndimage

import dax

TYPES = [np.uint8, np.uint16, np.int16, np.float32]
TURN = np.array([[0.8, -0.5, 12.3], [0.45, 0.9, -3.7], [0, 0, 1]])
TILT = np.array([[1, 0.1, 2], [-0.05, 1.2, 3], [0.002, 0.004, 1]])


def noise(rng, dtype, channels):
    return rng.integers(0, 200, (41, 60, *channels)).astype(dtype)


def expected(image, x, y, value=50):
    """Linear interpolation, and the constant outside by blending."""
    planes = np.atleast_3d(np.pad(image.astype(float), [(1, 1), (1, 1), (0, 0)][: image.ndim], constant_values=value))
    places = [y + 1, x + 1]
    found = [ndimage.map_coordinates(planes[..., c], places, order=1, cval=value) for c in range(planes.shape[2])]
    return np.stack(found, -1).reshape(*x.shape, *image.shape[2:])


def places(matrix, shape):
    y, x = np.mgrid[: shape[0], : shape[1]]
    u, v, w = np.tensordot(np.linalg.inv(matrix), np.stack([x, y, np.ones_like(x)]), 1)
    return u / w, v / w


def compare(found, image, x, y):
    assert found.dtype == image.dtype
    assert np.abs(found - expected(image, x, y)).max() < (0.52 if image.dtype.kind != "f" else 1e-3)


def same_on(pool, function, *arguments, **options):
    result = function(*arguments, **options)
    np.testing.assert_array_equal(function(*arguments, **options, pool=pool), result)
    return result


@pytest.mark.parametrize("channels", [(), (3,)])
@pytest.mark.parametrize("dtype", TYPES)
def test_like_scipy(rng, pool, dtype, channels):
    image, shape, fill = noise(rng, dtype, channels), (50, 70), {"mode": "constant", "value": 50}
    compare(same_on(pool, dax.warp_affine, image, TURN, shape, **fill), image, *places(TURN, shape))
    compare(dax.warp_affine(image, TURN, shape, inverse=True, **fill), image, *places(np.linalg.inv(TURN), shape))
    compare(same_on(pool, dax.warp_perspective, image, TILT, shape, **fill), image, *places(TILT, shape))
    about = dax.rotation_matrix((29.5, 20), 0.3)
    about[:2, 2] += 69 / 2 - 29.5, 49 / 2 - 20
    compare(same_on(pool, dax.rotate, image, 0.3, shape, **fill), image, *places(about, shape))
    x, y = (np.round(each * 4096).astype(np.float32) / 4096 for each in places(TILT, shape))
    compare(same_on(pool, dax.remap, image, x, y, **fill), image, x, y)
    prepared = dax.PreparedMap.load(dax.PreparedMap(x, y).model)
    found = same_on(pool, dax.remap, image, prepared, **fill)
    np.testing.assert_allclose(found, dax.remap(image, x, y, **fill), atol=1)
    angle = 0.4 - 2 * (np.arange(70) + 0.5) / 70
    radius = 5 + 20 * (np.arange(50)[:, None] + 0.5) / 50
    ring = {"centre": (30.2, 19.1), "radii": (5, 25), "start": 0.4, "span": -2, **fill}
    strip = same_on(pool, dax.polar, image, shape=shape, **ring)
    compare(strip, image, 30.2 + radius * np.cos(angle), 19.1 + radius * np.sin(angle))
    back = same_on(pool, dax.polar_back, strip, shape=image.shape[:2], **ring)
    y, x = np.mgrid[: image.shape[0], : image.shape[1]]
    turned = np.angle(np.exp(1j * (np.arctan2(y - 19.1, x - 30.2) - 0.4 + 1))) - 1
    compare(back, strip, turned / -2 * 70 - 0.5, (np.hypot(x - 30.2, y - 19.1) - 5) / 20 * 50 - 0.5)


@pytest.mark.parametrize("interpolation", ["nearest", "linear", "cubic", "lanczos"])
def test_there_and_back(interpolation):
    y, x = np.mgrid[:80, :90]
    image = (100 + 80 * np.sin(x / 6) * np.cos(y / 7)).astype(np.uint8)
    turned = dax.rotate(image, 0.5, (140, 140), interpolation=interpolation)
    back = dax.rotate(turned, -0.5, image.shape, interpolation=interpolation)
    error = (back.astype(float) - image)[8:-8, 8:-8].std()
    assert error < {"nearest": 12, "linear": 3, "cubic": 0.8, "lanczos": 0.8}[interpolation]


def test_matrices_and_bounds():
    corners, quad = [[0, 0], [10, 0], [10, 8], [0, 8]], [[3, 2], [17, 4], [15, 19], [1, 15]]
    homography = dax.perspective_from_points(corners, quad)
    mapped = homography @ np.column_stack([corners, np.ones(4)]).T
    np.testing.assert_allclose((mapped[:2] / mapped[2]).T, quad, atol=1e-12)
    assert dax.warp_bound((9, 11), homography, (0, 0, 1, 1)) == (3, 2, 1, 1)
    affine = dax.affine_from_points(corners[:3], quad[:3])
    np.testing.assert_allclose(affine[:2] @ [10, 8, 1], quad[2], atol=1e-12)
    with pytest.raises(dax.Error):
        dax.affine_from_points([[0, 0], [1, 1], [2, 2]], quad[:3])
    with pytest.raises(dax.Error):
        dax.warp_affine(np.eye(3, dtype=np.uint8), np.ones((3, 3)))


def test_maps_and_leaving():
    def halves(x, y):
        return x / 2, y / 2

    half = dax.map_from_function(halves, (6, 8))
    twice = dax.map_compose(half, half)
    np.testing.assert_array_equal(twice[0][0], np.arange(8) / 4)
    assert np.isnan(dax.map_compose(half, (half[0] - 1, half[1]))[0][0, 0])
    with pytest.raises(ZeroDivisionError):
        dax.map_from_function(lambda x, y: (1 / 0, y), (2, 2))
    out = np.full((6, 8), 9, np.uint8)
    dax.remap(np.full((2, 3), 5, np.uint8), *half, mode="leave", out=out)
    assert (out == 5).sum() == 5 * 3 and (out == 9).sum() == 48 - 15
    with pytest.raises(ValueError, match="leave"):
        dax.remap(out, *half, mode="leave")
    with pytest.raises(dax.Error):
        dax.PreparedMap.load(dax.PreparedMap(*half).model[:-1] + b"x")
