"""Line fits against NumPy's least squares, with and without outliers."""
import math

import numpy as np
import pytest

import dax


@pytest.mark.parametrize("dtype", [np.int16, np.int32, np.float32, np.float64])
def test_lines(rng, dtype):
    x = rng.uniform(-200, 200, 80)
    y = 0.75 * x + 10 + rng.normal(0, 0.5, 80)
    points = np.stack([x, y], 1).astype(dtype)
    centred = points - points.mean(0)
    normal = np.linalg.svd(centred.astype(float))[2][1]
    line = dax.fit_line(points, weights="least-squares")
    assert abs(normal @ (line.a, line.b)) == pytest.approx(1, abs=1e-6) and line.inliers.all()
    assert np.abs(line.distances(points)).max() < 4 and line.rms == pytest.approx(
        line.distances(points).std(), rel=0.05
    )
    points[::3] = rng.uniform(-200, 200, (27, 2)).astype(dtype)
    for start in ("all-pairs", "some-pairs"):
        robust = dax.fit_line(points, weights="tukey", start=start, threshold=3)
        assert abs(normal @ (robust.a, robust.b)) == pytest.approx(1, abs=1e-3)
        assert robust.inliers[1::3].mean() > 0.9 and robust.inliers[::3].mean() < 0.2
        assert (robust.weights[~robust.inliers] == 0).all()
    assert dax.fit_line(points[:, ::-1].copy()[:, ::-1], threshold=3).a == dax.fit_line(points, threshold=3).a


def test_rms_is_of_distances_without_weights(rng):
    x = np.arange(100.0)
    points = np.stack([x, 0.5 * x + rng.normal(0, 0.3, 100)], 1)
    points[::10, 1] += 20
    line = dax.fit_line(points, weights="huber", threshold=5, start="all-pairs")
    distances = line.distances(points)
    assert line.inliers.sum() == 90 and line.rms < 0.5 < 5 < line.rms_all
    assert line.rms == pytest.approx(np.sqrt((distances[line.inliers] ** 2).mean()))
    assert line.rms_all == pytest.approx(np.sqrt((distances**2).mean()))


def test_impossible_lines():
    diagonal = np.arange(10.0).repeat(2).reshape(10, 2)
    assert dax.fit_line(diagonal, angle=(math.pi / 4, 0.1)).rms < 1e-5
    with pytest.raises(dax.Error, match="DAXI_LineFitRegre_32f") as failure:
        dax.fit_line(diagonal, angle=(0, 0.1))
    assert failure.value.status == 0x10000038
    for wrong in ({"rejected": 9}, {"iterations": 0}, {"threshold": math.nan}, {"angle": (9, 1)}):
        with pytest.raises(ValueError, match=f"{next(iter(wrong))}: "):
            dax.fit_line(diagonal, **wrong)
    with pytest.raises(dax.Error, match="no initial line"):
        dax.fit_line([[0, 0], [1, 5], [2, 2], [3, 9]], threshold=1e-3)
    with pytest.raises(TypeError, match="angle: 0"):
        dax.fit_line(diagonal, angle=0)
    with pytest.raises(ValueError, match="shape"):
        dax.fit_line(np.zeros((5, 3)))
    with pytest.raises(TypeError):
        dax.fit_line(np.zeros((5, 2), complex))
