"""Channels against NumPy."""
import numpy as np
import pytest

import dax

WITHOUT = {f"DAXI_SwapChannels_{kind}_C{n}IR": "out= is the image" for kind in ("8u", "16u", "16s", "32f")
           for n in (3, 4)}


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
@pytest.mark.parametrize("count", [3, 4])
def test_channels(rng, dtype, count):
    image = rng.integers(0, 200, (7, 33, count)).astype(dtype)
    planes = dax.split_channels(image)
    assert all(np.array_equal(plane, image[..., c]) for c, plane in enumerate(planes)) and len(planes) == count
    assert np.array_equal(dax.merge_channels(planes), image)
    assert np.array_equal(dax.merge_channels([image[..., c] for c in range(count)]), image)
    assert np.array_equal(dax.merge_channels([*planes[:-1], np.pad(planes[-1], 2)[2:-2, 2:-2]]), image)  # other steps
    for c in range(count):
        assert np.array_equal(dax.pick_channel(image, c), image[..., c])
    for order in ((2, 1, 0), (2, -1, 0, 0)):
        wanted = np.stack([image[..., c] if c >= 0 else np.full((7, 33), 9, dtype) for c in order], 2)
        assert np.array_equal(dax.swap_channels(image, order, value=9), wanted)
    expected = image[..., ::-1].copy()
    assert dax.swap_channels(image, range(count)[::-1], out=image) is image and np.array_equal(image, expected)


def test_what_is_refused(rng):
    image = rng.integers(0, 200, (6, 8, 3)).astype(np.uint8)
    for order in ((0, 1), (0, 1, 2, 3, 0)):
        with pytest.raises(ValueError, match="order"):
            dax.swap_channels(image, order)
    for order in ((0, 1, 3), (0, 1, -2)):
        with pytest.raises(dax.Error, match="names no channel"):
            dax.swap_channels(image, order)
    with pytest.raises(dax.Error, match="names no channel"):
        dax.pick_channel(image, 3)
    with pytest.raises(ValueError, match="planes"):
        dax.merge_channels([image[..., 0]] * 2)
