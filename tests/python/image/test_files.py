"""Image files: every format comes back, and what is no image is refused."""
import os

import numpy as np
import pytest

import dax
from dax import _library

WITHOUT = {
    "DAXI_ImageWriteMemory": "files are written to paths",
    "DAX_WriteFile": "Python writes files itself",
}


def codecs():
    try:
        _library.codecs()
        return True
    except ImportError:
        return False


needs_codecs = pytest.mark.skipif(not codecs(), reason="built without the library of codecs")

CASES = [
    *((ending, np.uint8, channels) for ending in ("bmp", "ppm") for channels in (1, 3)),
    ("pgm", np.uint16, 1), ("pfm", np.float32, 3), ("bmp", np.uint8, 4),
    *(pytest.param("png", dtype, channels, marks=needs_codecs) for dtype in (np.uint8, np.uint16)
      for channels in (1, 2, 3, 4)),
    *(pytest.param("tif", dtype, channels, marks=needs_codecs)
      for dtype in (np.uint8, np.uint16, np.float32) for channels in (1, 3)),
]


@pytest.mark.parametrize("ending, dtype, channels", CASES)
def test_round_trip(tmp_path, rng, ending, dtype, channels):
    shape = (7, 10) if channels == 1 else (7, 10, channels)
    image = (rng.random(shape) * 250).astype(dtype)[:, ::2]  # of any stride
    path = tmp_path / f"a.{ending}"
    dax.imwrite(path, image)
    back = dax.imread(path)
    assert back.dtype == image.dtype and np.array_equal(back, image)
    assert np.array_equal(dax.imread(path.read_bytes()), image)
    info = dax.image_info(path)
    assert info.shape == image.shape and info.dtype == image.dtype and info.pages == info.orientation == 1


@needs_codecs
def test_jpeg_and_bits(tmp_path):
    image = np.tile(np.arange(0, 256, 4, np.uint8), (16, 1))
    dax.imwrite(tmp_path / "a.jpg", image, quality=98)
    assert np.abs(dax.imread(tmp_path / "a.jpg").astype(int) - image).max() <= 4
    dax.imwrite(tmp_path / "a", image > 100, format="png", bits=1)
    assert dax.image_info(tmp_path / "a").bits == 1
    assert np.array_equal(dax.imread(tmp_path / "a") > 0, image > 100)


def test_raw(tmp_path):
    image = np.arange(24, dtype=">u2").reshape(2, 4, 3)
    (tmp_path / "a.raw").write_bytes(image.tobytes())
    assert np.array_equal(dax.imread(tmp_path / "a.raw", raw=(image.shape, ">u2")), image)
    with pytest.raises(TypeError, match="int16"):
        dax.imread(tmp_path / "a.raw", raw=((2, 4), np.int16))


def test_refused(tmp_path):
    with pytest.raises(FileNotFoundError):
        dax.imread(tmp_path / "none.png")
    with pytest.raises(dax.Error, match="limit"):
        dax.imread(b"P5 100 100 255\n" + bytes(10000), max_pixels=9999)
    with pytest.raises(dax.Error):
        dax.imread(b"no image at all")
    with pytest.raises(dax.Error):
        dax.imwrite(tmp_path / "a.gif", np.zeros((2, 2), np.uint8), format="pfm")
    with pytest.raises(TypeError, match="float64"):
        dax.imwrite(tmp_path / "a.png", np.zeros((2, 2)))
    with pytest.raises(ValueError, match="shape"):
        dax.imwrite(tmp_path / "a.png", np.zeros((2, 0), np.uint8))
    assert os.listdir(tmp_path) == []


def test_codecs_are_needed_for_their_formats_only(monkeypatch):
    monkeypatch.setenv("DAX_CODECS_LIBRARY", "/nowhere/libdaxio.so")
    monkeypatch.setattr(dax.image.files, "codecs", _library.codecs.__wrapped__)
    assert dax.imread(b"P5 1 1 255 a") == [[97]]
    with pytest.raises(ImportError, match="PNG, JPEG and TIFF files need libdaxio"):
        dax.imread(b"\x89PNG\r\n\x1a\n")
