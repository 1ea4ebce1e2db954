"""Rotations, SO(3), and rigid motions, SE(3), for update functions and residuals of the solvers.

A rotation vector (..., 3) turns by its length, in radians, about its direction. A twist (..., 6) is (v, w), the
translational part first. Rotations are matrices of (..., 3, 3), motions of (..., 4, 4). Leading axes are broadcast.
Results are the same to the last bit on every machine.
"""
import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, pointer
from .._library import call

__all__ = [
    "se3_compose",
    "se3_exp",
    "se3_inverse",
    "se3_log",
    "se3_update",
    "so3_compose",
    "so3_exp",
    "so3_inverse",
    "so3_log",
    "so3_log_jacobian",
    "so3_update",
]

Doubles = NDArray[np.float64]
_Core = tuple[int, ...]


def so3_exp(w: ArrayLike) -> Doubles:
    """The rotation of a rotation vector.

    >>> dax.so3_exp([0, 0, np.pi / 2]).round(12) + 0
    array([[ 0., -1.,  0.],
           [ 1.,  0.,  0.],
           [ 0.,  0.,  1.]])
    """
    return _each("PRMT_SO3_Exp_f64", (3, 3), (w, (3,)))


def so3_log(rotation: ArrayLike) -> Doubles:
    """The rotation vector of a rotation, at most pi long.

    >>> dax.so3_log(dax.so3_exp([0.1, 0.2, 0.3])).round(12)
    array([0.1, 0.2, 0.3])
    """
    return _each("PRMT_SO3_Log_f64", (3,), (rotation, (3, 3)))


def so3_compose(a: ArrayLike, b: ArrayLike) -> Doubles:
    """The product of two rotations.

    >>> dax.so3_compose(np.eye(3), dax.so3_exp([0.1, 0, 0])).shape
    (3, 3)
    """
    return _each("PRMT_SO3_Compose_f64", (3, 3), (a, (3, 3)), (b, (3, 3)))


def so3_inverse(rotation: ArrayLike) -> Doubles:
    """The inverse of a rotation.

    >>> (dax.so3_inverse(dax.so3_exp([0.1, 0, 0])) == dax.so3_exp([0.1, 0, 0]).T).all()
    True
    """
    return _each("PRMT_SO3_Inverse_f64", (3, 3), (rotation, (3, 3)))


def so3_update(w: ArrayLike, step: ArrayLike) -> Doubles:
    """Log(Exp(w) Exp(step)).

    >>> dax.so3_update([0.1, 0, 0], [0.2, 0, 0]).round(12)
    array([0.3, 0. , 0. ])
    """
    return _update("PRMT_SO3_Update_f64", w, step, 3)


def so3_log_jacobian(w: ArrayLike) -> Doubles:
    """(..., 3, 3) derivative of Log(Exp(w) Exp(d)) by d at 0; w shorter than 2 pi.

    >>> dax.so3_log_jacobian([0, 0, 0])
    array([[1., 0., 0.],
           [0., 1., 0.],
           [0., 0., 1.]])
    """
    return _each("PRMT_SO3_LogJacobian_f64", (3, 3), (w, (3,)))


def se3_exp(twist: ArrayLike) -> Doubles:
    """The rigid motion of a twist.

    >>> dax.se3_exp([1, 2, 3, 0, 0, 0])[:3, 3]
    array([1., 2., 3.])
    """
    return _each("PRMT_SE3_Exp_f64", (4, 4), (twist, (6,)))


def se3_log(motion: ArrayLike) -> Doubles:
    """The twist of a rigid motion.

    >>> dax.se3_log(dax.se3_exp([1, 2, 3, 0.1, 0.2, 0.3])).round(12)
    array([1. , 2. , 3. , 0.1, 0.2, 0.3])
    """
    return _each("PRMT_SE3_Log_f64", (6,), (motion, (4, 4)))


def se3_compose(a: ArrayLike, b: ArrayLike) -> Doubles:
    """The product of two rigid motions.

    >>> dax.se3_compose(dax.se3_exp([1, 0, 0, 0, 0, 0]), dax.se3_exp([0, 2, 0, 0, 0, 0]))[:3, 3]
    array([1., 2., 0.])
    """
    return _each("PRMT_SE3_Compose_f64", (4, 4), (a, (4, 4)), (b, (4, 4)))


def se3_inverse(motion: ArrayLike) -> Doubles:
    """The inverse of a rigid motion.

    >>> dax.se3_inverse(dax.se3_exp([1, 2, 3, 0, 0, 0]))[:3, 3]
    array([-1., -2., -3.])
    """
    return _each("PRMT_SE3_Inverse_f64", (4, 4), (motion, (4, 4)))


def se3_update(twist: ArrayLike, step: ArrayLike) -> Doubles:
    """Log(Exp(twist) Exp(step)).

    >>> dax.se3_update([1, 0, 0, 0, 0, 0], [0, 2, 0, 0, 0, 0])[:3]
    array([1., 2., 0.])
    """
    return _update("PRMT_SE3_Update_f64", twist, step, 6)


def _spread(arguments: tuple[tuple[ArrayLike, _Core], ...]) -> tuple[tuple[int, ...], list[Array]]:
    """The leading axes of all arguments, and each as (count, its own axes)."""
    arrays = [np.asarray(value) for value, _ in arguments]
    for array, (_, core) in zip(arrays, arguments):
        if array.dtype.kind not in "fiub":
            raise TypeError(f"of type {array.dtype}, needed are numbers")
        if array.shape[max(array.ndim - len(core), 0) :] != core:
            raise ValueError(f"shape {array.shape}, needed is (..., {', '.join(map(str, core))})")
    leading = np.broadcast_shapes(
        *(array.shape[: array.ndim - len(core)] for array, (_, core) in zip(arrays, arguments))
    )
    spread = [np.broadcast_to(array, leading + core).reshape(-1, *core) for array, (_, core) in zip(arrays, arguments)]
    return leading, [np.ascontiguousarray(array, np.float64) for array in spread]


def _each(name: str, result: _Core, *arguments: tuple[ArrayLike, _Core]) -> Doubles:
    leading, arrays = _spread(arguments)
    values = np.empty((len(arrays[0]), *result))
    for row in range(len(values)):
        call(name, *(pointer(array[row], "double") for array in arrays), pointer(values[row], "double"))
    return values.reshape(leading + result)


def _update(name: str, vector: ArrayLike, step: ArrayLike, size: int) -> Doubles:
    leading, (values, steps) = _spread(((vector, (size,)), (step, (size,))))
    values = values.copy()
    for row in range(len(values)):
        call(name, pointer(values[row], "double"), pointer(steps[row], "double"))
    return values.reshape(*leading, size)
