"""Rotations and rigid motions against SciPy's."""
import numpy as np
import pytest
import scipy.linalg
import scipy.spatial.transform

import dax


def test_lie_groups_as_scipy(rng):
    w = rng.normal(size=(4, 5, 3))
    rotations = scipy.spatial.transform.Rotation.from_rotvec(w.reshape(-1, 3)).as_matrix().reshape(4, 5, 3, 3)
    assert np.allclose(dax.so3_exp(w), rotations, atol=1e-14)
    assert np.allclose(dax.so3_exp(dax.so3_log(rotations)), rotations, atol=1e-13)
    assert np.allclose(dax.so3_compose(rotations, rotations[0]), rotations @ rotations[0])
    assert np.allclose(dax.so3_inverse(rotations), rotations.swapaxes(-1, -2))
    step = np.array([0.1, -0.2, 0.3])
    assert np.allclose(dax.so3_exp(dax.so3_update(w, step)), rotations @ dax.so3_exp(step))
    d = 1e-6 * np.eye(3)
    small = w[0, 0] / 2
    differences = (dax.so3_update(small, d) - small).T / 1e-6
    assert np.allclose(dax.so3_log_jacobian(small), differences, atol=1e-5)
    twist = rng.normal(size=6)
    generator = np.zeros((4, 4))
    generator[:3, 3], generator[:3, :3] = twist[:3], np.cross(twist[3:], np.eye(3)).T
    motion = dax.se3_exp(twist)
    assert np.allclose(motion, scipy.linalg.expm(generator)) and np.allclose(dax.se3_exp(dax.se3_log(motion)), motion)
    assert np.allclose(dax.se3_compose(motion, dax.se3_inverse(motion)), np.eye(4), atol=1e-14)
    assert np.allclose(dax.se3_exp(dax.se3_update(twist, twist[::-1])), motion @ dax.se3_exp(twist[::-1]))
    with pytest.raises(ValueError, match="shape"):
        dax.so3_exp([1, 2])
    with pytest.raises(ValueError):
        dax.so3_compose(np.ones((2, 3, 3)), np.ones((3, 3, 3)))
    assert dax.so3_exp(np.zeros((0, 3))).shape == (0, 3, 3)
