"""Range images: there and back through files, and to points by NumPy's arithmetic."""
import os
import struct

import numpy as np
import pytest

import dax

WITHOUT = {r"DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4|DAX3DPCL_UTILS_Extract_.*": "fields of a Python object"}

EYE = np.eye(4)
CAMERAS = dax.Calibration(dax.Camera(500, 510, 320, 240, 0.1, k3=-0.2), dax.Camera(600, 610, 330, 250), EYE)


@pytest.mark.parametrize("mask, colour, calibration",
                         [(True, None, None), (True, (7, 9, 3), CAMERAS), (False, (3, 4, 6), None)])
def test_files(rng, tmp_path, mask, colour, calibration):
    values = rng.integers(-(2**15), 2**15, (20, 33)).astype(np.int16)
    image = dax.RangeImage(
        values[:, ::-1][:, ::2],  # any strides
        rng.integers(0, 2, (20, 17), dtype=np.uint8) if mask else None,
        (0.5, 0.25, 0.125),
        (-1, 2, -3),
        None if colour is None else rng.integers(0, 256, colour, dtype=np.uint8),
        calibration,
    )
    image.check()
    path = tmp_path / "kept.range"
    dax.write_range(path, image)
    back = dax.read_range(os.fspath(path))
    for name in ("values", "mask", "colour"):
        before, after = getattr(image, name), getattr(back, name)
        assert (before is None) == (after is None) and (before is None or np.array_equal(before, after)), name
    assert back.scale == image.scale and back.offset == image.offset
    assert (back.calibration is None) == (calibration is None)
    if calibration:
        assert back.calibration.depth == CAMERAS.depth and back.calibration.rgb == CAMERAS.rgb
        assert np.array_equal(back.calibration.depth_to_rgb, EYE)
    if mask:
        dax.write_range(path, image, everything=False)
        short = dax.read_range(path)
        assert np.array_equal(short.mask, image.mask) and short.colour is None and short.calibration is None


def test_what_was_read_is_the_callers(rng, tmp_path):
    """Images own their pixels, whatever becomes of the memory that they were read into."""
    for width in (33, 64):
        values = rng.integers(-(2**15), 2**15, (64, width)).astype(np.int16)
        colour = rng.integers(0, 256, (64, width, 3), dtype=np.uint8)
        image = dax.RangeImage(values, np.ones((64, width), np.uint8), colour=colour)
        dax.write_range(tmp_path / "kept.range", image)
        back = dax.read_range(tmp_path / "kept.range")
        made = dax.range_from_rgbd(values, colour, 0.5)
        scratch = [np.full(n, 77, np.uint8) for n in range(16, 60000, 16)]
        for name in ("values", "mask", "colour"):
            assert np.array_equal(getattr(back, name), getattr(image, name)), (name, len(scratch))
        assert np.array_equal(made.values, values) and np.array_equal(made.colour, colour)


def test_arguments_of_wrong_length(tmp_path):
    values = np.zeros((2, 3), np.int16)
    for refused in (
        lambda: dax.range_to_xyz(values, scale=(1, 1)),
        lambda: dax.range_to_xyz(values, offset=1),
        lambda: dax.depth_to_xyz(values, (1, 1, 0)),
        lambda: dax.write_range(tmp_path / "wrong.range", dax.RangeImage(values, scale=(1, 1, 1, 1))),
    ):
        with pytest.raises(ValueError, match="shape"):
            refused()
    for call in (lambda path: dax.write_range(path, dax.RangeImage(values)), dax.read_range):
        with pytest.raises(ValueError, match="null"):
            call(f"{tmp_path}/cut\0off.range")
    assert not list(tmp_path.iterdir())


def test_files_that_are_none(rng, tmp_path):
    path = tmp_path / "image.range"
    path.write_bytes(bytes(100))
    with pytest.raises((ValueError, dax.Error)):
        dax.read_range(path)
    dax.write_range(path, dax.RangeImage(np.ones((6, 7), np.int16), np.ones((6, 7), np.uint8)))
    with pytest.raises(dax.Error, match="^nowhere.range: "):
        dax.read_range("nowhere.range")
    with pytest.raises(TypeError, match="the path comes first"):
        dax.write_range(dax.RangeImage(np.ones((2, 2), np.int16)), path)
    with pytest.raises(dax.Error, match="could not be opened"):
        dax.write_range(tmp_path / "no" / "folder", dax.RangeImage(np.ones((1, 1), np.int16)))
    with pytest.raises(dax.Error):
        dax.write_range(path, dax.RangeImage(np.ones((1, 40000), np.int16)))
    with pytest.raises(TypeError):
        dax.write_range(path, dax.RangeImage(np.ones((2, 2))))
    with pytest.raises(ValueError, match="mask"):
        dax.write_range(path, dax.RangeImage(np.ones((2, 2), np.int16), np.ones((2, 3), np.uint8)))


def test_parts_of_a_wrong_size(tmp_path):
    """What is short, and by how much."""
    image = dax.RangeImage(np.zeros((3, 4), np.int16), np.ones((3, 4), np.uint8), colour=np.zeros((3, 4, 3), np.uint8))
    dax.write_range(tmp_path / "whole", image)
    whole = (tmp_path / "whole").read_bytes()
    parts, end = [], len(whole)
    while end:
        tag, size = struct.unpack("<II", whole[end - 8 : end])
        parts.insert(0, (tag, whole[end - 8 - size : end - 8]))
        end -= 8 + size
    assert len(parts) == 9
    for tag, payload, match in (
        (0xA5A53D03, b"m" * 5, "mask: 5 bytes, needed are 12"),
        (0xA5A53D0B, struct.pack("<IIII", 0, 32767, 32767, 201) + b"c" * 3,
         "colour of 32767 x 32767 .* 3 bytes, needed are"),
        (0xA5A53D0B, b"short", "colour has 5 bytes"),
        (0x617D18DB, b"v" * 26, "range values: 26 bytes, needed are 24"),
        (0xA5A53D07, b"s" * 8, "scale has 8 bytes, needed are 12"),
    ):
        changed = [(each, payload if each == tag else old) for each, old in parts]
        path = tmp_path / "changed"
        path.write_bytes(b"".join(data + struct.pack("<II", each, len(data)) for each, data in changed))
        with pytest.raises(ValueError, match=match):
            dax.read_range(path)


def test_headers_that_are_no_numbers(tmp_path):
    """They are not written; a file that has them is read with a word."""
    values, path = np.zeros((2, 3), np.int16), tmp_path / "part.range"
    for scale, offset in (((1, np.nan, 1), (0, 0, 0)), ((0, 1, 1), (0, 0, 0)), ((1, 1, np.nan), (0, 0, 0))):
        with pytest.raises(dax.Error, match="part.range: .*0x10000019"):
            dax.write_range(path, dax.RangeImage(values, scale=scale, offset=offset))
    for scale, offset in (((1, np.inf, 1), (0, 0, 0)), ((1, 1, 1), (0, 0, np.nan)), ((1, 1, 1e39), (0, 0, 0))):
        with pytest.raises(ValueError, match="part.range: (scale|offset) .*not finite"):
            dax.write_range(path, dax.RangeImage(values, scale=scale, offset=offset))
    assert not path.exists()
    dax.write_range(path, dax.RangeImage(values, scale=(0.5, 1, 1)))
    whole = path.read_bytes()
    assert whole.count(np.float32(0.5).tobytes()) == 1
    path.write_bytes(whole.replace(np.float32(0.5).tobytes(), np.float32(np.nan).tobytes()))
    with pytest.warns(UserWarning, match="scale .*not finite"):
        assert np.isnan(dax.read_range(path).scale[0])


def test_depth_cameras():
    depth = np.array([[0, 5], [7, -3]], np.int16)
    image = dax.range_from_rgbd(depth, np.full((4, 5, 3), 9, np.uint8)[:, ::-1], 0.5, CAMERAS)
    assert image.scale == pytest.approx((1 / 500, 1 / 510, 0.5))
    assert image.offset == pytest.approx((-320 / 500, -240 / 510, 0))
    assert image.mask.tolist() == [[0, 255],
                                   [255, 255]] and image.colour.shape == (4, 5, 3) and (image.colour == 9).all()
    image.check_depth_camera()
    with pytest.raises(dax.Error):
        dax.RangeImage(depth).check_depth_camera()
    with pytest.raises(dax.Error):
        dax.RangeImage(depth, scale=(0, 1, 1)).check()
    with pytest.raises(dax.Error, match="depthScale"):
        dax.range_from_rgbd(depth, image.colour, np.nan)
    CAMERAS.check()
    with pytest.raises(dax.Error):
        CAMERAS.rgb._replace(fx=np.nan).check()
    for camera, pose in ((dax.Camera(0, 1, 1, 1), EYE), (CAMERAS.rgb, 2 * EYE)):
        with pytest.raises(dax.Error):
            dax.Calibration(CAMERAS.depth, camera, pose).check()


@pytest.mark.parametrize("dtype", [np.int16, np.int32, np.float32])
def test_points(rng, dtype):
    values = rng.integers(-1000, 1000, (12, 31)).astype(dtype)
    mask = rng.integers(0, 2, values.shape, dtype=np.uint8)
    scale, offset = np.float32([0.5, -0.25, 0.01]), np.float32([3, 4, 5])
    row, column = np.mgrid[0:12, 0:31].astype(np.float32)
    grid = np.stack([column, row, values.astype(np.float32)], -1) * scale + offset
    points = dax.range_to_xyz(values, scale, offset, mask)
    assert np.array_equal(points[mask > 0], grid[mask > 0]) and np.isnan(points[mask == 0]).all()
    assert np.array_equal(dax.range_to_xyz(values, scale, offset, mask, organized=False), points[mask > 0])
    assert dax.depth_to_xyz(values, (50, 60, 15, 6), 0.1, 2)[3, 20] == pytest.approx(
        np.array([(20 - 15) / 50, (3 - 6) / 60, 1]) * (0.1 * values[3, 20] + 2), rel=1e-5
    )
    with pytest.raises(dax.Error, match="FLT_MIN"):
        dax.range_to_xyz(values, (0, 1, 1))
    with pytest.raises(dax.Error, match="cols < 1 or rows < 1|a side < 1"):
        dax.range_to_xyz(np.zeros((0, 4), dtype))
    with pytest.raises(TypeError):
        dax.range_to_xyz(values.astype(np.float64))


@pytest.mark.parametrize("dtype", [np.int16, np.uint16])
def test_speckles(dtype):
    values = np.full((24, 18), 300, dtype)
    values[4:6, 3:6] = values[12:14, 3:6] = 100
    cleared = values.copy()
    cleared[4:6, 3:6] = 7
    assert np.array_equal(dax.remove_speckles(values, 100, 6, 7, window=(2, 3, 10, 10)), cleared)
    assert np.array_equal(dax.remove_speckles(values, 201, 6, 7), values)
    assert dax.remove_speckles(values, 100, 6, 7, out=values) is values and (values == 7).sum() == 12
    with pytest.raises(ValueError, match="without a gap"):
        dax.remove_speckles(values, 1, 1, out=np.zeros((24, 30), dtype)[:, :18])
    with pytest.raises(ValueError, match="overlap"):
        dax.remove_speckles(values[1:], 1, 1, out=values[:-1])
    with pytest.raises(ValueError, match="invalid"):
        dax.remove_speckles(values, 1, 1, 70000)
    with pytest.raises(dax.Error, match="end.x > width"):
        dax.remove_speckles(values, 1, 1, window=(0, 0, 99, 1))
