"""Functions of the regular form: one operation over pixel types and layouts, from images to an image of the same
shape."""
import re
from typing import Any, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike

from ._arrays import PIXELS, Array, of_shape, pixel_value, refuse_overlap, source, target
from ._library import buffer, call, has
from .pool import Pool, handle_of

_DTYPES = {suffix: dtype for dtype, (suffix, _) in PIXELS.items()}


class Value(NamedTuple):
    """A parameter that is a pixel of the image's type."""

    name: str
    value: Any


def apply(
    function: str,
    images: dict[str, ArrayLike],
    *parameters: Any,
    types: str,
    layouts: str = "C1",
    to: str = "",
    out: Optional[Array] = None,
    in_place: bool = False,
    work: str = "",
    measures: tuple[Any, ...] = (),
    pooled: str = "",
    pool: Optional[Pool] = None,
) -> Array:
    """Calls function(source, step, ..., out, step, size, parameters..., work buffer) and returns the output.

    function: the C name, with {type} and {layout} where they stand in it, such as DAXI_FilterBox_{type}_{layout}R.
    images: the sources, of one shape and type, by the names that users know them by. types: those that there are, as C
    names say them ("8u 16s32f": of the source, and of the output where that differs). layouts: C1 for (height, width),
    C3 for (height, width, 3). to: the type of the output, where names do not tell it. in_place: the output may be a
    source. work: the name of the query for the work buffer, which takes the size and `measures`. pooled: the name of
    the form that takes (pool, threads) first, for the types that have one; it has the same query, or where there is one
    that of the name with _MT, which takes threads last.
    """
    (first, array), *others = images.items()
    of_type = {_source_type(each): each for each in types.split()}
    one = source(first, array, tuple(of_type), layouts)
    spelled = of_type[one.array.dtype]
    sources = [(first, one)]
    for name, other in others:
        sources.append((name, of_shape(name, other, one.array.shape, (one.array.dtype,), layouts)))
    result = target("out", out, one.array.shape, _DTYPES[to or _TYPE.findall(spelled)[-1]])
    for each in sources:
        refuse_overlap(each, ("out", result), in_place=in_place)
    arguments = [part for _, image in sources for part in (image.pointer, image.step)]
    arguments += [result.pointer, result.step, result.size]
    for parameter in parameters:
        arguments += pixel_value(*parameter, one) if isinstance(parameter, Value) else (parameter,)

    def name_of(form: str) -> str:
        return form.format(type=spelled, layout=one.layout)

    threads, handle = handle_of(pool)
    if pool is not None and pooled and has(name_of(pooled)):
        function, arguments = pooled, [handle, threads, *arguments]
        if work and has(name_of(work + "_MT")):
            work, measures = work + "_MT", (*measures, threads)
    if work:
        arguments.append(buffer(name_of(work), one.size, *measures))
    call(name_of(function), *arguments)
    return result.array


def apply_scaled(
    function: str,
    images: dict[str, ArrayLike],
    *parameters: Any,
    scale_factor: int,
    out: Optional[Array],
    pool: Optional[Pool] = None,
) -> Array:
    """The same for families whose integer forms end in Sfs and take a scale factor last; in place as well. pool: of
    functions that have a form with _MT."""
    function += "_{type}_{layout}R"
    is_real = np.asarray(next(iter(images.values()))).dtype.kind == "f"
    if is_real and scale_factor:
        raise ValueError("scale_factor: images of floats have none")
    if not is_real:
        function, parameters = function + "Sfs", (*parameters, scale_factor)
    form: dict[str, Any] = {"layouts": "C1 C3", "out": out, "in_place": True, "pooled": function + "_MT", "pool": pool}
    return apply(function, images, *parameters, types="32f" if is_real else "8u 16u 16s", **form)


def apply_elements(
    function: str,
    first: ArrayLike,
    second: Optional[ArrayLike] = None,
    *,
    parameters: tuple[Any, ...] = (),
    types: str = "8u 16u 16s 32f",
    to: str = "",
    scale_factor: Optional[int] = None,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Calls function_<type>_C1R on an image, on two, or function with a C on an image and a number. Pixels of three
    channels are elements of wider rows. to: the type of the output, else that of the input; it may then be one of the
    images. scale_factor: of functions whose integer forms end in Sfs. pool: of functions that have a form with _MT."""
    name, dtypes = "image" if second is None else "first", tuple(_DTYPES[each] for each in types.split())
    one = source(name, first, dtypes, "C1 C3")
    sources = [(name, one)]
    if second is not None and np.ndim(second):
        sources.append(("second", of_shape("second", second, one.array.shape, (one.array.dtype,), "C1 C3")))
    result = target("out", out, one.array.shape, _DTYPES[to or one.suffix])
    for each in sources:
        refuse_overlap(each, ("out", result), in_place=one.suffix == result.suffix)
    size = {"width": one.size["width"] * int(np.prod(one.array.shape[2:])), "height": one.size["height"]}
    one.layout = "C1"
    if second is not None and not np.ndim(second):
        function, parameters = function + "C", (*pixel_value("second", second, one), *parameters)
    name = f"{function}_{one.suffix}_C1R"
    if scale_factor is not None and one.array.dtype.kind != "f":
        name, parameters = name + "Sfs", (*parameters, scale_factor)
    elif scale_factor:
        raise ValueError("scale_factor: images of floats have none")
    arguments = [part for _, image in sources for part in (image.pointer, image.step)]
    if pool is not None:
        threads, handle = handle_of(pool)
        name, arguments = name + "_MT", [handle, threads, *arguments]
    call(name, *arguments, result.pointer, result.step, size, *parameters)
    return result.array


_TYPE = re.compile(r"\d+(?:u|s|fc|f)")


def _source_type(spelled: str) -> "np.dtype[Any]":
    return _DTYPES[_TYPE.findall(spelled)[0]]
