"""Chessboards drawn with a known homography, found and refined; masks, several boards, no boards."""
import warnings

import numpy as np
import pytest

import dax
from dax.calib import chessboards

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
    found = dax.find_chessboard(image, columns, rows, pool=pool)
    assert found.good.all() and found.detector == "symmetry" and np.abs(found - in_order(truth, found)).max() < 0.15
    # The squares alone: the first detectors find nothing.
    for dark in ("otsu", "local-mean"):
        by_squares = chessboards._squares(chessboards.source("image", image), columns, rows, dark, 8)
        assert by_squares is not None and np.abs(by_squares - truth).max() < 4, dark
    assert np.abs(dax.refine_corners(image, by_squares, np.int64(6)) - truth).max() < 0.15
    flat = dax.refine_corners(image[::-1][::-1], by_squares.reshape(-1, 2), (6, 5), verify=True)
    assert np.abs(flat.reshape(truth.shape) - truth).max() < 0.15
    (hessian,) = dax.find_checkerboards(image)
    assert np.abs(hessian.corners - in_order(truth, hessian)).max() < 0.5
    assert np.allclose(np.linalg.norm(hessian.into_dark, axis=-1), 1, atol=1e-4)
    (symmetric,) = dax.find_checkerboards_by_symmetry(image)
    assert np.abs(symmetric.corners - in_order(truth, symmetric)).max() < 0.15
    (pooled,) = dax.find_checkerboards_by_symmetry(image, pool=pool)
    for name in vars(symmetric):
        assert np.array_equal(getattr(symmetric, name), getattr(pooled, name))
    arranged = dax.arrange_corners(dax.locate_corners(image))
    assert len(arranged) == 1 and np.abs(arranged[0].corners - in_order(truth, arranged[0])).max() < 0.5


def in_order(truth, board):
    """True corners as drawn, where the first square is dark, turned to the order of a board that may be ambiguous."""
    turned = truth[::-1, ::-1]
    first = np.asarray(board.corners)[0, 0]
    near = [each for each in (truth, turned) if np.abs(each[0, 0] - first).max() < 3]
    return near[0] if board.ambiguous else truth


def tilted(columns, rows, roll, rng, noise, two_valued=False):
    """A board turned by an angle in degrees, with some perspective; and its true corners, the first square dark."""
    size, square, oversampling = 360, 24.0, 3
    angle = np.deg2rad(roll)
    turn = square * np.array([[np.cos(angle), -np.sin(angle)], [np.sin(angle), np.cos(angle)]])
    h = np.array([[*turn[0], 180], [*turn[1], 180], [0.004, -0.006, 1]]) @ np.array(
        [[1, 0, -(columns - 1) / 2], [0, 1, -(rows - 1) / 2], [0, 0, 1]]
    )
    y, x = ((v + 0.5) / oversampling - 0.5 for v in np.mgrid[0 : size * oversampling, 0 : size * oversampling])
    u, v, w = np.tensordot(np.linalg.inv(h), np.stack([x, y, np.ones_like(x)]), 1)
    u, v = u / w, v / w
    inside = (u > -1) & (u < columns) & (v > -1) & (v < rows)
    dark = inside & ((np.floor(u) + np.floor(v)) % 2 == 0)
    image = np.where(dark, 40, 210).reshape(size, oversampling, size, oversampling).mean((1, 3))
    image = np.clip(np.rint(image + rng.normal(0, noise, image.shape)), 0, 255).astype(np.uint8)
    i, j = np.mgrid[0:rows, 0:columns]
    places = np.stack([j, i, np.ones_like(i)], -1) @ h.T
    return np.where(image > 125, 255, 0).astype(np.uint8) if two_valued else image, places[..., :2] / places[..., 2:]


@pytest.mark.parametrize("roll", range(0, 360, 15))
def test_colour_decides_the_order(rng, roll):
    """The same corner comes first however the board is turned, whatever the noise."""
    for noise in (2, 8):
        image, truth = tilted(7, 4, roll, rng, noise)
        board = dax.find_chessboard(image, 7, 4)
        assert not board.ambiguous and board.good.all() and np.abs(board.corners - truth).max() < 1
        (found,) = dax.find_checkerboards(image)
        assert np.abs(found.corners - truth).max() < 1.5
        high = dax.find_chessboard(image, 4, 7)
        assert high.corners.shape == (7, 4, 2) and chessboards._order.dark_by_image(image, high.corners) > 0


def test_exact_size_two_values_and_ambiguity(rng):
    image, truth = tilted(7, 5, 20, rng, 3)
    board = dax.find_chessboard(image, 7, 5)
    assert board.ambiguous and board.corners[0, :, 1].mean() < board.corners[-1, :, 1].mean()
    for columns, rows in ((6, 5), (7, 4), (6, 4), (8, 5)):
        assert dax.find_chessboard(image, columns, rows) is None, (columns, rows)
    # The squares at one side of this board are one with what is beside it: those left look like a smaller board.
    wide, _ = draw(9, 6, (60.0, 80.0), (24, 0), (0, 24))
    wide[:, 276:] = 30
    assert chessboards._squares(chessboards.source("image", wide), 8, 6, "otsu", 8) is not None
    assert dax.find_chessboard(wide, 8, 6) is None and dax.find_chessboard(wide, 9, 6).good.all()
    plain, truth = tilted(7, 4, 0, rng, 0, two_valued=True)
    assert chessboards._squares(chessboards.source("image", plain), 7, 4, "otsu", 8) is not None
    assert np.abs(dax.find_chessboard(plain, 7, 4).corners - truth).max() < 1


def apart(shift):
    """Squares of 40 with gaps of 2 at the corners of 5 x 4, which the detector of squares alone joins; one of them
    shifted."""
    image = np.full((320, 360), 220, np.uint8)
    for r, c in np.argwhere(np.indices((5, 6)).sum(0) % 2 == 0):
        x = 61 + 40 * c + (shift if (r, c) == (2, 2) else 0)
        image[61 + 40 * r : 99 + 40 * r, x : x + 38] = 40
    return image


def test_squares_that_are_no_plane_grid_are_no_board():
    """All corners look like corners, but no homography holds those of the shifted square."""
    near = dax.find_chessboard(apart(8), 5, 4)
    assert near is not None and near.detector == "squares"
    far = apart(10)
    corners = dax.refine_corners(far, chessboards._squares(chessboards.source("image", far), 5, 4, "otsu", 8), 11)
    assert dax.check_corners(far, corners, 8).all()
    assert dax.find_chessboard(far, 5, 4) is None


def test_points_that_are_no_corners(rng):
    image, truth = tilted(7, 4, 30, rng, 3)
    assert dax.check_corners(image, truth, 6).all() and not dax.check_corners(image, truth + 6, 6).any()
    image[150:175, 150:175] = 40  # hides corners
    hidden = ((truth > 146) & (truth < 178)).all(-1)
    assert hidden.any()
    with pytest.warns(UserWarning, match="do not look like corners"):
        dax.refine_corners(image, truth, 8)
    good = chessboards._order.good(image, chessboards._refined(image, truth, 8, 30, 1e-4, False))
    assert not good[hidden].any() and good[~hidden].mean() > 0.8


def test_several_boards_and_masks():
    large, truth = draw(6, 5, (60.0, 60.0), (22, 0), (0, 22), (320, 500))
    small, other = draw(4, 3, (330.0, 100.0), (24, 3), (-3, 24), (320, 500))
    image = np.minimum(large, small)
    right = np.zeros_like(image)
    right[:, 270:] = 1
    for find in (dax.find_checkerboards, dax.find_checkerboards_by_symmetry):
        boards = find(image, 5)
        assert len(boards) == 2
        assert np.abs(boards[0].corners - in_order(truth, boards[0])).max() < 0.5
        assert np.abs(boards[1].corners - in_order(other, boards[1])).max() < 0.5
        assert len(find(image, 2**31 - 1)) == 2
        assert len(find(image, 1)) == 1 and len(find(image, 5, extent=(5, 300))) == 1
    masked = dax.find_checkerboards_by_symmetry(image, mask=right)
    assert len(masked) == 1 and np.abs(masked[0].corners - in_order(other, masked[0])).max() < 0.5
    assert len(dax.find_checkerboards_by_symmetry(image, 3, mask=right)) == 1
    assert len(dax.arrange_corners(dax.locate_corners(image), 4)) == 2


def test_no_boards(rng):
    blank = np.full((100, 120), 128, np.uint8)
    noise = rng.integers(0, 256, blank.shape, dtype=np.uint8)
    for max_boards in (1, 3):
        assert dax.find_checkerboards(noise, max_boards) == [] == dax.find_checkerboards_by_symmetry(noise, max_boards)
    assert dax.find_chessboard(noise, 7, 5) is None
    assert len(dax.locate_corners(blank).points) == 0 and dax.arrange_corners(dax.locate_corners(blank)) == []
    with pytest.raises(ValueError, match="none were found"):
        dax.refine_corners(blank, dax.find_chessboard(blank, 7, 5))
    warnings.simplefilter("ignore")
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
    with pytest.raises(ValueError, match="radius"):
        dax.check_corners(blank, [[9, 9]], radius=-4)
    with pytest.raises(TypeError):
        dax.find_chessboard(blank.astype(float), 7, 5)
