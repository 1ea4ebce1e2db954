"""Chessboards drawn with a known homography, found and refined; masks, several boards, no boards."""
import numpy as np
import pytest

import dax

WITHOUT = {r"DAXI_.*GetSubpixBufferSize_8u(_v2)?": "the call needs no buffer"}


def draw(columns, rows, corner, right, down, size=(320, 400), square=20):
    """An image of a board whose first inner corner, and directions to the next, are given; and its true corners."""
    oversampling = 4
    y, x = np.mgrid[0 : size[0] * oversampling, 0 : size[1] * oversampling]
    x, y = ((v + 0.5) / oversampling - 0.5 for v in (x, y))
    axes = np.linalg.inv(np.array([right, down], float).T)
    u, v = np.tensordot(axes, np.stack([x - corner[0], y - corner[1]]), 1)
    inside = (u > -1) & (u < columns) & (v > -1) & (v < rows)
    dark = inside & ((np.floor(u) + np.floor(v)) % 2 == 0)
    image = np.where(dark, 30, 220).reshape(size[0], oversampling, size[1], oversampling).mean((1, 3))
    i, j = np.mgrid[0:rows, 0:columns]
    corners = np.asarray(corner) + j[..., None] * np.asarray(right) + i[..., None] * np.asarray(down)
    return np.rint(image).astype(np.uint8), corners


BOARDS = [
    (7, 5, (100.2, 60.1), (27, 6), (-5, 26)),
    (9, 6, (90.0, 80.0), (24, -4), (6, 25)),
]


@pytest.mark.parametrize("board", BOARDS)
def test_all_detectors(board, pool):
    image, truth = draw(*board)
    columns, rows = board[:2]
    found = dax.find_chessboard(image, columns, rows)
    assert np.abs(found - truth).max() < 4
    assert np.abs(dax.refine_corners(image, found, np.int64(6)) - truth).max() < 0.15
    flat = dax.refine_corners(image[::-1][::-1], found.reshape(-1, 2), (6, 5), verify=True)
    assert np.abs(flat.reshape(found.shape) - truth).max() < 0.15
    local = dax.find_chessboard(image, columns, rows, dark="local-mean")
    assert local is None or np.abs(local - truth).max() < 6
    (hessian,) = dax.find_checkerboards(image)
    assert np.abs(hessian.corners - truth).max() < 0.5
    assert np.allclose(np.linalg.norm(hessian.into_dark, axis=-1), 1, atol=1e-4)
    (symmetric,) = dax.find_checkerboards_by_symmetry(image)
    assert np.abs(symmetric.corners - truth).max() < 0.15
    (pooled,) = dax.find_checkerboards_by_symmetry(image, pool=pool)
    for name in vars(symmetric):
        assert np.array_equal(getattr(symmetric, name), getattr(pooled, name))
    arranged = dax.arrange_corners(dax.locate_corners(image))
    assert len(arranged) == 1 and np.abs(arranged[0].corners - truth).max() < 0.5


def test_several_boards_and_masks():
    large, truth = draw(6, 5, (60.0, 60.0), (22, 0), (0, 22), (320, 500))
    small, other = draw(4, 3, (330.0, 100.0), (24, 3), (-3, 24), (320, 500))
    image = np.minimum(large, small)
    right = np.zeros_like(image)
    right[:, 270:] = 1
    for find in (dax.find_checkerboards, dax.find_checkerboards_by_symmetry):
        boards = find(image, 5)
        assert len(boards) == 2
        assert np.abs(boards[0].corners - truth).max() < 0.5 and np.abs(boards[1].corners - other).max() < 0.5
        assert len(find(image, 2**31 - 1)) == 2
        assert len(find(image, 1)) == 1 and len(find(image, 5, extent=(5, 300))) == 1
    masked = dax.find_checkerboards_by_symmetry(image, mask=right)
    assert len(masked) == 1 and np.abs(masked[0].corners - other).max() < 0.5
    assert len(dax.find_checkerboards_by_symmetry(image, 3, mask=right)) == 1
    assert len(dax.arrange_corners(dax.locate_corners(image), 4)) == 2


def test_no_boards(rng):
    blank = np.full((100, 120), 128, np.uint8)
    noise = rng.integers(0, 256, blank.shape, dtype=np.uint8)
    for most in (1, 3):
        assert dax.find_checkerboards(noise, most) == [] == dax.find_checkerboards_by_symmetry(noise, most)
    assert dax.find_chessboard(noise, 7, 5) is None
    assert len(dax.locate_corners(blank).points) == 0 and dax.arrange_corners(dax.locate_corners(blank)) == []
    with pytest.raises(ValueError, match="none were found"):
        dax.refine_corners(blank, dax.find_chessboard(blank, 7, 5))
    started = np.array([[np.nan, 5], [50, 50], [1e30, 1e30]], np.float32)
    assert np.array_equal(dax.refine_corners(blank, started), started, equal_nan=True)
    for call in (
        lambda: dax.find_chessboard(blank, 2**30, 5),
        lambda: dax.find_checkerboards(blank, 0),
        lambda: dax.find_checkerboards(blank, angle=(np.nan, 90)),
        lambda: dax.find_checkerboards_by_symmetry(blank, contrast=0),
        lambda: dax.refine_corners(blank, np.zeros((0, 2))),
        lambda: dax.locate_corners(blank, 0),
    ):
        with pytest.raises((dax.Error, MemoryError)):
            call()
    with pytest.raises(ValueError, match="shape"):
        dax.refine_corners(blank, [5, 5, 5])
    with pytest.raises(TypeError):
        dax.find_chessboard(blank.astype(float), 7, 5)
