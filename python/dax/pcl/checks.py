"""Checks of small geometric records, before they go elsewhere. Each returns nothing, or raises dax.Error with the
clause.

Single precision is checked for float32 arrays, double precision for all others.
"""
import numpy as np
from numpy.typing import ArrayLike

from .._arrays import numbers, pointer
from .._library import call

__all__ = ["check_box", "check_camera_matrix", "check_motion", "check_normal", "check_quaternion"]


def check_camera_matrix(matrix: ArrayLike) -> None:
    """A (3, 3) camera matrix: focal lengths and centre above 1.1920929e-7.

    >>> dax.check_camera_matrix([[500, 0, 320], [0, 500, 240], [0, 0, 1]])
    """
    _check("DAX3DPCL_UTILS_Check_Intrins", "matrix", matrix, (3, 3))


def check_motion(matrix: ArrayLike, near_identity: bool = False) -> None:
    """A (4, 4) rigid motion; products of columns of the rotation within 0.001 of those of the identity. A reflection
    passes. near_identity: all within 0.001 of the identity.

    >>> dax.check_motion(np.eye(4), near_identity=True)
    """
    _check(f"DAX3DPCL_UTILS_Check_{'EyeSE3' if near_identity else 'SE3'}", "matrix", matrix, (4, 4))


def check_quaternion(quaternion: ArrayLike) -> None:
    """A quaternion (w, x, y, z): w within +-1, x^2 + y^2 + z^2 at most 1.

    >>> dax.check_quaternion([1, 0, 0, 0])
    """
    _check("DAX3DPCL_UTILS_Check_Quat", "quaternion", quaternion, (4,))


def check_box(box: ArrayLike) -> None:
    """An oriented box (9,): centre, sizes above 0, angles about x, y and z within +-2 pi.

    >>> dax.check_box([0, 0, 0, 1, 1, 1, 0, 0, 0])
    """
    _check("DAX3DPCL_UTILS_Check_Box3d", "box", box, (9,))


def check_normal(normal: ArrayLike) -> None:
    """A normal (3,): not all components within +-1.1920929e-7.

    >>> dax.check_normal([0, 0, 1])
    """
    array = numbers("normal", normal, (3,), np.float64)
    call(f"DAX3DPCL_UTILS_Check_Normal_{_precision(normal)}", *array.tolist())


def _precision(values: ArrayLike) -> str:
    return "32f" if np.asarray(values).dtype == np.float32 else "64f"


def _check(name: str, what: str, values: ArrayLike, shape: tuple[int, ...]) -> None:
    suffix = _precision(values)
    dtype, ctype = (np.float32, "float") if suffix == "32f" else (np.float64, "double")
    array = numbers(what, values, shape, dtype)
    call(f"{name}_{suffix}", pointer(array, ctype))
