"""Noise in images."""
import numpy as np
import pytest

import dax

DTYPES = [np.uint8, np.uint16, np.int16, np.float32]


def shaded(rng, dtype, gain=0.0, scene=None):
    smooth = np.add.outer(np.arange(256) / 4, np.arange(320) / 4) + 40 if scene is None else scene
    noisy = smooth + rng.normal(0, 1, smooth.shape) * np.sqrt(16 + gain * smooth)
    return (noisy if dtype == np.float32 else np.rint(np.clip(noisy, 0, 255))).astype(dtype)


@pytest.mark.parametrize("dtype", DTYPES)
@pytest.mark.parametrize("method", ["mad", "immerkaer"])
def test_noise_level(rng, dtype, method, pool):
    image = shaded(rng, dtype)
    assert np.isclose(dax.noise_level(image, method), 4, rtol=0.04)
    clipped = np.hstack([image, np.full((256, 3000), 250, dtype)])
    assert np.isclose(dax.noise_level(clipped, method, low=10, high=250), 4, rtol=0.04)
    assert dax.noise_level(image, method, pool=pool) == dax.noise_level(image, method)


@pytest.mark.parametrize("dtype", DTYPES)
def test_noise_by_level(rng, dtype, pool):
    image = shaded(rng, dtype, 0.3)
    found = dax.noise_by_level(image, bins=8)
    assert len(found.levels) == 8 and found.counts.sum() == 16 * 20
    assert np.allclose(found.variances, 16 + 0.3 * found.levels, rtol=0.25)
    assert all(np.array_equal(a, b) for a, b in zip(found, dax.noise_by_level(image, bins=8, pool=pool)))
    textured = image.copy()
    textured[:, ::64] = 0  # a quarter of the blocks
    assert np.allclose(dax.noise_by_level(textured, bins=4, low=-1).variances, 16 + 0.3 * found.levels.mean(), rtol=0.6)
    with pytest.raises(dax.Error):
        dax.noise_by_level(image, block=7)


@pytest.mark.parametrize("dtype", DTYPES)
def test_noise_by_level_of_frames(rng, dtype):
    texture = rng.integers(30, 200, (200, 300)).astype(float)
    frames = [shaded(rng, dtype, 0.3, texture) for _ in range(3)]
    found = dax.noise_by_level_of_frames(frames, bins=5, low=-1, high=256)
    assert np.allclose(found.variances, 16 + 0.3 * found.levels, rtol=0.05)
    canvas = np.zeros((200, 400), dtype)
    canvas[:, :300] = frames[1]
    again = dax.noise_by_level_of_frames([frames[0], canvas[:, :300], frames[2]], bins=5, low=-1, high=256)
    assert all(np.array_equal(a, b) for a, b in zip(found, again))
    with pytest.raises(ValueError, match="frames"):
        dax.noise_by_level_of_frames(frames[:1])
    with pytest.raises(ValueError, match="shape"):
        dax.noise_by_level_of_frames([frames[0], frames[1][1:]])
