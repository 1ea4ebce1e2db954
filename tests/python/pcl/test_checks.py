"""Checks of geometric records at their limits."""
import numpy as np
import pytest

import dax

EYE = np.eye(4)
MATRIX = [[500, 0, 320], [0, 500, 240], [0, 0, 1]]
BOX = [0, 0, 0, 1, 1, 1, 0, 0, 0]


@pytest.mark.parametrize("dtype", [np.float32, np.float64])
def test_records(dtype):
    good = [
        (dax.check_camera_matrix, MATRIX),
        (dax.check_motion, dax.se3_exp([1, 2, 3, 0.1, 0.2, 0.3])),
        (lambda m: dax.check_motion(m, True), EYE),
        (dax.check_quaternion, [0.5, 0.5, 0.5, 0.5]),
        (dax.check_box, BOX),
        (dax.check_normal, [0, 1e-6, 0]),
    ]
    bad = [
        (dax.check_camera_matrix, np.zeros((3, 3))),
        (dax.check_camera_matrix, np.full((3, 3), np.nan)),
        (dax.check_motion, 2 * EYE),
        (lambda m: dax.check_motion(m, True), dax.se3_exp([1, 2, 3, 0.1, 0.2, 0.3])),
        (dax.check_quaternion, [1.1, 0, 0, 0]),
        (dax.check_box, np.zeros(9)),
        (dax.check_normal, [0, 1e-8, 0]),
    ]
    for check, value in good:
        check(np.asarray(value, dtype))
        check(np.asfortranarray(np.asarray(value, dtype)))
    for check, value in bad:
        with pytest.raises(dax.Error, match="32f" if dtype == np.float32 else "64f"):
            check(np.asarray(value, dtype))
    for check, value in good:
        with pytest.raises(ValueError, match="shape"):
            check(np.asarray(value, dtype)[1:])
