"""Gain and noise of a camera."""
import numpy as np
import pytest

import dax


def pair(rng, electrons, dtype, white):
    frames = 0.05 * np.minimum(rng.poisson(electrons, (2, 120, 160)) + rng.normal(0, 20, (2, 120, 160)), 4500) + 10
    return list((frames if dtype == np.float32 else np.clip(np.rint(frames), 0, white)).astype(dtype))


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
def test_photon_transfer(rng, dtype):
    exposures = [5500 * i / 20 for i in range(1, 21)]
    bright = [dax.frame_noise(pair(rng, each, dtype, 255)) for each in exposures]
    dark = dax.frame_noise(pair(rng, 0, dtype, 255))
    quantisation = 0 if dtype == np.float32 else 1 / 12
    found = dax.photon_transfer(bright, dark, exposures, quantisation=quantisation)
    assert np.isclose(found.gain, 0.05, rtol=0.02)
    assert np.isclose(found.read_noise, 20, rtol=0.03)
    assert np.isclose(found.full_well, 4500, rtol=0.12)
    assert np.isclose(found.responsivity, 0.05, rtol=0.01) and found.linearity_error < 0.5
    assert bright[found.saturated].variance == max(each.variance for each in bright)
    assert dax.photon_transfer(bright, [dark] * 20, quantisation=quantisation).linearity_error is None


def test_frame_noise(rng):
    frames = rng.integers(0, 256, (4, 30, 40)).astype(np.uint8)
    found = dax.frame_noise(frames)
    values = frames.astype(float)
    flicker = values.mean((1, 2)).var(ddof=1)
    assert np.allclose(found[:2], (values.mean(), values.var(0, ddof=1).mean() - flicker), rtol=1e-12)
    assert found[2:] == ((frames == 0).mean(), (frames == 255).mean())


def test_warnings():
    curve = [dax.FrameNoise(10 + x, 0.1 + 0.5 * x) for x in range(1, 12)]
    dark = dax.FrameNoise(10, 0.1, 0.01)
    with pytest.warns(UserWarning) as told:
        dax.photon_transfer(curve, dark)
    assert [str(each.message)[:8] for each in told] == ["the nois", "over 0.5", "no point"]
    with pytest.raises(ValueError, match="exposures"):
        dax.photon_transfer(curve, dark, [1, 2])
    with pytest.raises(dax.Error):
        dax.photon_transfer(curve[:4], dark)
