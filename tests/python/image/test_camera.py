"""What cameras send."""
import numpy as np
import pytest

import dax

WITHOUT = {r"DAXI_FlatField_\w+_C1IR": "out= is the image"}


def mosaic(image, pattern):
    result = np.empty(image.shape[:2], image.dtype)
    for i, colour in enumerate(pattern):
        result[i // 2 :: 2, i % 2 :: 2] = image[i // 2 :: 2, i % 2 :: 2, "RGB".index(colour)]
    return result


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16])
@pytest.mark.parametrize("pattern", ["RGGB", "GRBG", "GBRG", "BGGR"])
@pytest.mark.parametrize("method", ["mhc", "bilinear"])
def test_demosaic(dtype, pattern, method, pool):
    y, x = np.mgrid[:20, :30]
    ramps = np.stack([x + y, 2 * x + 40, 100 - y], -1).astype(dtype)
    raw = mosaic(ramps, pattern)
    colours = dax.demosaic(raw, pattern, method=method)
    assert np.abs(colours[2:-2, 2:-2].astype(int) - ramps[2:-2, 2:-2]).max() <= 1
    assert np.array_equal(dax.demosaic(raw, pattern, method=method, to="bgr")[..., ::-1], colours)
    gray = dax.demosaic(raw, pattern, method=method, to="gray")
    assert np.array_equal(gray, dax.rgb2gray(colours))
    assert np.array_equal(dax.demosaic(raw, pattern, method=method, pool=pool), colours)
    assert np.array_equal(dax.demosaic(raw, pattern, method=method, to="gray", pool=pool), gray)
    part = dax.demosaic(raw[3:, 5:], dax.bayer_phase_at(pattern, 5, 3), method=method)
    assert np.array_equal(part[2:, 2:], colours[5:, 7:])


@pytest.mark.parametrize("pixel_format", ["Mono10p", "Mono12p", "Mono10Packed", "Mono12Packed"])
@pytest.mark.parametrize("step", [0, 60])
def test_packed(rng, pixel_format, step):
    image = rng.integers(0, 1024, (7, 33), dtype=np.uint16)
    data = dax.pack_pixels(image, pixel_format, step=step)
    assert np.array_equal(dax.unpack_pixels(data, image.shape, pixel_format, step=step), image)
    with pytest.raises(ValueError, match="data"):
        dax.unpack_pixels(data[:-1], image.shape, pixel_format, step=step)


@pytest.mark.parametrize("to", ["rgb", "bgr"])
def test_yuv(rng, to, pool):
    y, u, v = (rng.integers(0, 256, shape, dtype=np.uint8) for shape in ((8, 10), (4, 5), (4, 5)))
    spread = [plane.repeat(2, 0).repeat(2, 1) for plane in (u, v)]
    expected = dax.ycbcr2rgb(np.dstack([y, *spread]), bgr=to == "bgr")
    pairs = [np.dstack(each).reshape(4, 10) for each in ((u, v), (v, u))]
    for kwargs in ({}, {"pool": pool}):
        assert np.array_equal(dax.decode_yuv420(y, u, v, to=to, **kwargs), expected)
        assert np.array_equal(dax.decode_yuv420(y, pairs[0], to=to, **kwargs), expected)
        assert np.array_equal(dax.decode_yuv420(y, pairs[1], order="vu", to=to, **kwargs), expected)
        row = np.dstack([y[:, ::2], spread[0][:, ::2], y[:, 1::2], spread[1][:, ::2]]).reshape(8, 20)
        swapped = row.reshape(8, 10, 2)[..., ::-1].reshape(8, 20)
        assert np.array_equal(dax.decode_yuv422(row, to=to, **kwargs), expected)
        assert np.array_equal(dax.decode_yuv422(swapped, order="uyvy", to=to, **kwargs), expected)
    gray = dax.luma2gray(y)
    assert np.array_equal(dax.decode_yuv422(row, to="gray"), gray)
    assert np.array_equal(dax.decode_yuv422(swapped, order="uyvy", to="gray", width=9), gray[:, :9])
    assert np.array_equal(dax.luma2gray(y, range="full"), y)
    with pytest.raises(TypeError, match="chroma"):
        dax.decode_yuv420(y)
    with pytest.raises(ValueError, match="width"):
        dax.decode_yuv422(row, width=3)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16])
def test_correction(rng, dtype):
    image, dark = rng.integers(0, 200, (9, 20)).astype(dtype), rng.integers(0, 20, (9, 20)).astype(dtype)
    gain = rng.uniform(0.5, 1.2, image.shape).astype(np.float32)
    expected = np.round(np.maximum(image.astype(np.float32) - dark, 0) * gain)
    assert np.array_equal(dax.flat_field(image, dark, gain), expected)
    assert dax.flat_field(image.copy(), dark, gain, out=image) is image
    ramp = np.add.outer(np.arange(9) * 3, np.arange(20) * 2).astype(dtype)
    defects = np.zeros(ramp.shape, bool)
    defects[4, 7] = True
    broken = np.where(defects, 255, ramp).astype(dtype)
    mended = dax.replace_defects(broken, defects, distance=2)
    assert np.array_equal(mended.image, ramp) and mended.unmended == 0
    assert dax.replace_defects(broken, np.ones(ramp.shape, np.uint8)).unmended == ramp.size
