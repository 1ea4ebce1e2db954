"""Transforms, spectra and their filters beside NumPy and SciPy."""
import numpy as np
import pytest
from scipy import fft, signal

import dax


def noise(rng, shape, dtype):
    values = rng.normal(size=shape) + 1j * rng.normal(size=shape)
    return values.astype(dtype) if np.dtype(dtype).kind == "c" else values.real.astype(dtype)


@pytest.mark.parametrize("dtype", [np.complex64, np.complex128])
@pytest.mark.parametrize("shape", [(1, 96), (1, 625), (22, 35), (33, 1)])
def test_transforms(rng, pool, dtype, shape):
    image, atol = noise(rng, shape, dtype), 1e-4 if dtype == np.complex64 else 1e-12
    plan = dax.DftPlan(shape, image.real.dtype)
    for scale, norm in (("backward", "backward"), ("unitary", "ortho"), ("none", None)):
        forward, backward = dax.dft(image, scale=scale, plan=plan), dax.idft(image, scale=scale)
        factor = image.size if norm is None else 1
        assert forward.dtype == dtype and np.allclose(forward, np.fft.fft2(image, norm=norm), atol=atol)
        assert np.allclose(backward, factor * np.fft.ifft2(image, norm=norm), atol=atol)
    assert np.array_equal(dax.dft(image, pool=pool), dax.dft(image))
    assert np.array_equal(dax.idft(image, pool=pool), dax.idft(image))
    real = image.real.copy()
    half = dax.dft_real(real, plan=plan, pool=pool)
    assert np.allclose(half, np.fft.rfft2(real), atol=atol) and np.array_equal(half, dax.dft_real(real))
    back = dax.idft_real(half, shape[1], pool=pool)
    assert np.allclose(back, real, atol=atol) and np.array_equal(back, dax.idft_real(half, shape[1]))
    cosines = dax.dct(real, plan=dax.DctPlan(shape, real.dtype), pool=pool)
    assert np.allclose(cosines, fft.dctn(real, norm="ortho"), atol=atol) and np.array_equal(cosines, dax.dct(real))
    back = dax.idct(cosines, pool=pool)
    assert np.allclose(back, real, atol=atol) and np.array_equal(back, dax.idct(cosines))


def test_plans_that_do_not_fit():
    image = np.zeros((4, 6), np.complex64)
    with pytest.raises(ValueError, match="plan"):
        dax.dft(image, plan=dax.DftPlan((6, 4)))
    with pytest.raises(TypeError, match="plan"):
        dax.dft(image, plan=dax.DctPlan((4, 6)))
    with pytest.raises(TypeError, match="dtype"):
        dax.DftPlan((4, 6), np.int32)
    with pytest.raises(ValueError, match="width"):
        dax.idft_real(image, 7)
    assert dax.dft_good_side(121) == 125


@pytest.mark.parametrize("dtype", [np.complex64, np.complex128])
def test_spectra(rng, pool, dtype):
    a, b = noise(rng, (9, 14), dtype), noise(rng, (9, 14), dtype)
    for each in (None, pool):
        assert np.allclose(dax.magnitude(a, pool=each), np.abs(a))
        assert np.allclose(dax.phase(a, pool=each), np.angle(a))
        assert np.allclose(dax.log_spectrum(a, pool=each), np.log1p(np.abs(a)))
        assert np.allclose(dax.multiply_spectra(a, b, pool=each), a * b)
        assert np.allclose(dax.multiply_spectra(a, b, conjugate=True, pool=each), a * b.conj())
        notched = dax.spectrum_notch(a, [(3, -2, 0.5), (1.5, 4, 2)], pool=each)
        assert notched[0, 0] == a[0, 0] and np.allclose(notched[-2, 3], 0) and np.allclose(notched[2, -3], 0)
        kept = dax.spectrum_band(a, 0.2, 0.1, pool=each) + dax.spectrum_band(a, 0.2, 0.1, keep=False, pool=each)
        kept[0, 0] /= 2
        assert np.allclose(kept, a)


@pytest.mark.parametrize("dtype", [np.uint8, np.float32, np.float64, np.complex64, np.complex128])
def test_quadrants(rng, pool, dtype):
    image = rng.integers(0, 200, (7, 10)).astype(dtype)
    for each in (None, pool):
        shifted = dax.shift_quadrants(image, pool=each)
        assert np.array_equal(shifted, np.fft.fftshift(image))
        assert np.array_equal(dax.shift_quadrants(shifted, back=True, pool=each), image)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32, np.float64])
def test_windows(rng, pool, dtype):
    image = rng.integers(0, 200, (12, 15)).astype(dtype)
    for kind, name in (("hann", "hann"), ("hamming", "hamming"), ("blackman", "blackman"), ("tukey", ("tukey", 0.5))):
        for symmetric in (False, True):
            rows, columns = (signal.get_window(name, n, fftbins=not symmetric) for n in image.shape)
            assert np.allclose(dax.window(12, kind, symmetric=symmetric), rows, atol=1e-12)
            assert np.allclose(dax.window(15, kind, symmetric=symmetric, dtype=np.float32), columns, atol=1e-6)
            weighted = dax.apply_window(image, kind, symmetric=symmetric, pool=pool)
            assert np.allclose(weighted, image * np.outer(rows, columns), atol=1e-3)
            assert np.array_equal(weighted, dax.apply_window(image, kind, symmetric=symmetric))
    with pytest.raises(TypeError, match="dtype"):
        dax.window(3, dtype=np.uint8)


@pytest.mark.parametrize("dtype", [np.float32, np.float64])
@pytest.mark.parametrize("part", ["full", "same", "valid"])
def test_convolution(rng, pool, dtype, part):
    image, kernel = noise(rng, (30, 41), dtype), noise(rng, (6, 11), dtype)
    atol = 1e-4 if dtype == np.float32 else 1e-12
    for each in (None, pool):
        convolved = dax.convolve_dft(image, kernel, part, pool=each)
        assert np.allclose(convolved, signal.convolve2d(image, kernel, part), atol=atol)
        correlated = dax.correlate_dft(image, kernel, part, pool=each)
        assert np.allclose(correlated, signal.correlate(image, kernel, part), atol=atol)
