"""Boards: corners where the squares meet, in the order that the program promises, from files and folders."""

import pictures
import pytest

SIDE, LEFT, TOP = 24, 60, 50


def board(columns, rows, width=400, height=330):
    """Dark squares around columns x rows inner corners, the first corner at (LEFT + SIDE, TOP + SIDE) - 0.5."""
    picture = pictures.blank(width, height, 220)
    for r in range(rows + 1):
        for c in range(columns + 1):
            if (r + c) % 2 == 0:
                pictures.draw(picture, LEFT + SIDE * c, TOP + SIDE * r, SIDE, SIDE, 30 + 5 * (c % 3))
    return picture


def write(path, picture):
    path.write_bytes(pictures.pgm(picture))


def expect(image, columns, rows):
    assert (image["found"], image["columns"], image["rows"]) == (True, columns, rows)
    assert len(image["corners"]) == columns * rows
    for i, (x, y) in enumerate(image["corners"]):
        assert x == pytest.approx(LEFT + SIDE * (1 + i % columns) - 0.5, abs=0.1)
        assert y == pytest.approx(TOP + SIDE * (1 + i // columns) - 0.5, abs=0.1)


@pytest.mark.parametrize("how", [["--size", "9x6"], ["--auto"]])
def test_corners_row_by_row(dax, tmp_path, how):
    write(tmp_path / "board.pgm", board(9, 6))
    images = dax("chessboard", "board.pgm", *how, "--json").json["images"]
    assert len(images) == 1 and (images[0]["width"], images[0]["height"]) == (400, 330)
    expect(images[0], 9, 6)


def test_size_says_which_sides_are_rows(dax, tmp_path):
    write(tmp_path / "board.pgm", board(9, 6))
    turned = dax("chessboard", "board.pgm", "--size", "6x9", "--json").json["images"][0]
    straight = dax("chessboard", "board.pgm", "--size", "9x6", "--json").json["images"][0]
    assert (turned["columns"], turned["rows"]) == (6, 9)
    whole = [[(int(x), int(y)) for x, y in image["corners"]] for image in (turned, straight)]
    assert whole[0][:9] != whole[1][:9] and sorted(whole[0]) == sorted(whole[1])
    for other in ("12x9", "8x6", "9x5", "8x5"):  # a part of a board is none
        assert dax("chessboard", "board.pgm", "--size", other, "--json", status=8).json["images"][0]["found"] is False


def test_two_levels_and_colours(dax, tmp_path):
    """A clean picture is found, and the dark corner decides the order whichever side is up."""
    plain = [[(65535 if p[0] > 30000 else 0,) * 3 for p in row] for row in board(9, 6)]
    turned = [row[::-1] for row in plain[::-1]]
    write(tmp_path / "a.pgm", plain)
    write(tmp_path / "b.pgm", turned)
    for how in (["--size", "9x6"], ["--auto"]):
        a, b = dax("chessboard", "a.pgm", "b.pgm", *how, "--json").json["images"]
        assert all(a["refined"]) and not a["ambiguous"] and not b["ambiguous"]
        for (x, y), (u, v) in zip(a["corners"], b["corners"], strict=True):
            assert (399 - u, 329 - v) == pytest.approx((x, y), abs=0.1)
    write(tmp_path / "c.pgm", board(7, 5))
    (image,) = dax("chessboard", "c.pgm", "--auto", "--json").json["images"]
    assert image["ambiguous"]


def test_corners_that_cannot_be_refined_are_flagged(dax, tmp_path):
    """A hand over a corner of the board."""
    picture = board(9, 6)
    pictures.draw(picture, LEFT + 4 * SIDE - 6, TOP + 3 * SIDE - 6, 14, 14, 120)
    write(tmp_path / "board.pgm", picture)
    (image,) = dax("chessboard", "board.pgm", "--size", "9x6", "--json", status=None).json["images"]
    assert not image["found"] or image["refined"].count(False) == 1


def test_specks_beside_a_corner_do_not_move_it(dax, tmp_path):
    """Within the window of the refinement, and beyond that of the detector: 0.8 pixels, and no ring sees it."""
    picture = board(9, 6)
    pictures.draw(picture, LEFT + 4 * SIDE - 12, TOP + 3 * SIDE + 6, 4, 4, 255)
    write(tmp_path / "board.pgm", picture)
    (image,) = dax("chessboard", "board.pgm", "--size", "9x6", "--json").json["images"]
    expect(image, 9, 6)


def apart(shift):
    """Squares of 40 with gaps of 2 at the corners of 5 x 4, which the detector of squares alone joins; one of them
    shifted."""
    picture = pictures.blank(360, 320, 220)
    for r in range(5):
        for c in range(6):
            if (r + c) % 2 == 0:
                moved = shift if (r, c) == (2, 2) else 0
                pictures.draw(picture, 61 + 40 * c + moved, 61 + 40 * r, 38, 38, 40)
    return picture


def test_squares_that_are_no_plane_grid_are_no_board(dax, tmp_path):
    """All corners look like corners, but no homography holds those of the shifted square."""
    write(tmp_path / "near.pgm", apart(8))
    write(tmp_path / "far.pgm", apart(10))
    near, far = dax("chessboard", "near.pgm", "far.pgm", "--size", "5x4", "--json", status=None).json["images"]
    assert near["found"] and near["detector"] == "quads" and all(near["refined"])
    assert not far["found"]


def test_folder_with_pictures_and_a_broken_file(dax, tmp_path):
    images = tmp_path / "images"
    images.mkdir()
    write(images / "a.pgm", board(5, 4))
    write(images / "b.pgm", pictures.blank(100, 80))
    (images / "c.pgm").write_bytes(b"P5\n9")
    run = dax("chessboard", "images", "--auto", "--overlay", "order", status=1)
    assert "c.pgm" in run.err and len(run.err.splitlines()) == 1
    lines = run.out.splitlines()
    assert "5 x 4" in lines[1] and "none" in lines[2] and lines[3] == "1 board in 3 images"
    rows, pixel = pictures.read_png((tmp_path / "order/a-overlay.png").read_bytes())
    assert pixel == 3 and any(max(p) - min(p) > 60 for row in rows for p in zip(row[::3], row[1::3], row[2::3]))
    rows, pixel = pictures.read_png((tmp_path / "order/b-overlay.png").read_bytes())
    assert all(row[::3] == row[1::3] == row[2::3] for row in rows)


def test_images_too_small_are_refused_by_name(dax, tmp_path):
    write(tmp_path / "tiny.pgm", pictures.blank(1, 1))
    run = dax("chessboard", "tiny.pgm", "--auto", status=5)
    assert run.err == "dax: tiny.pgm: is smaller than 64 x 64 pixels, too small for a board\n"
