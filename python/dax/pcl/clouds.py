"""Point clouds: voxel grid, nearest neighbours, normals.

A cloud is an (n, 3) array; other types than float32 are rounded to it, with a warning where that moves points that lie
far from the origin by more than a thousandth of their spacing.
"""
from typing import Any, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, numbers, pointer, warn
from .._interface import ffi
from .._library import Fixed, buffer, call, memory, needed
from ..pool import Pool, handle_of

__all__ = ["KdTree", "Neighbours", "Normals", "estimate_normals", "face_viewpoint", "normal_of", "voxel_grid"]

_SMALL_RADIUS = 3.5e-4  # below it the square is less than the bound of the search
_NONE_FURTHER = np.float32(np.finfo(np.float32).max)


def voxel_grid(points: ArrayLike, leaf: ArrayLike, box: Optional[ArrayLike] = None) -> NDArray[np.float32]:
    """One point for every occupied cell of a regular grid: the centroid of its points.

    points: (n, 3). leaf: edge length of cells, or (x, y, z). box: (2, 3) least and largest corner, faces included;
    points outside are dropped, and those with a NaN. Without a box: that of the finite points. Cells are ordered along
    z, then y, then x; the cell around 0 is twice as wide.

    >>> dax.voxel_grid([[0, 0, 0], [0, 0, 0.5], [5, 5, 5]], 1)
    array([[0.  , 0.  , 0.25],
           [5.  , 5.  , 5.  ]], dtype=float32)
    """
    cloud = _rounded(points)
    sides = numbers("leaf", np.full(3, leaf) if np.ndim(leaf) == 0 else leaf, (3,))
    if box is None:
        finite = cloud[np.isfinite(cloud).all(1)]
        box = [finite.min(0), finite.max(0)] if len(finite) else np.zeros((2, 3))
    corners = numbers("box", box, (2, 3))
    record = ffi.new(
        "DAX3DPCL_CLOUD3D*", {"capacity": len(cloud), "count": len(cloud), "points": pointer(cloud, "float")}
    )
    work = buffer("DAX3DPCL_PREP_SAMPLE_VoxelGridBufferSize", len(cloud))
    result = buffer("DAX3DPCL_PREP_SAMPLE_VoxelGridResultSize", len(cloud))
    found = ffi.new("DAX3DPCL_CLOUD3D**")
    call("DAX3DPCL_PREP_SAMPLE_VoxelGrid", record, pointer(corners, "float"), found, result, work, *map(float, sides))
    count = found[0].count
    if count == 1 and not ((cloud >= corners[0]) & (cloud <= corners[1])).all(1).any():
        return np.zeros((0, 3), np.float32)  # the library gives the first point
    return np.frombuffer(ffi.buffer(found[0].points, 12 * count), np.float32).reshape(count, 3).copy()


def _rounded(points: ArrayLike, columns: Optional[int] = 3) -> Array:
    """Points in single precision; warns where their spacing is lost."""
    cloud, given = numbers("points", points, (None, columns)), np.asarray(points)
    if given.dtype != np.float32 and len(cloud) > 1:
        with np.errstate(invalid="ignore", over="ignore"):
            moved = np.abs(cloud - given)
            finite = given[np.isfinite(given).all(1)]
            extent = np.ptp(finite, axis=0).max(initial=0) if finite.size else 0
        moved = moved[np.isfinite(moved)]
        spacing = extent / np.sqrt(len(cloud))  # of points on a surface
        if moved.size and moved.max() > 1e-3 * spacing:
            warn(f"points: single precision moves them by {moved.max():.2g}: subtract one of them from all first")
    return cloud


class Neighbours(NamedTuple):
    """Neighbours found. indices: int64, -1 where there are fewer. squared_distances: float32, infinite there."""

    indices: NDArray[np.int64]
    squared_distances: NDArray[np.float32]


class KdTree(Fixed):
    """A static tree over points, for nearest neighbours. It owns its memory; any number of threads may search it.

    points: (n, d), n and d at least 1; they are copied. leaf_size: most points in a leaf. compact: takes half of the
    memory. Distances are squared Euclidean. Points with a NaN or an infinity are never found.

    >>> tree = dax.KdTree([[0, 0], [3, 4], [6, 8]])
    >>> tree.query([0, 1], 2)
    Neighbours(indices=array([0, 1]), squared_distances=array([ 1., 18.], dtype=float32))
    """

    def __init__(self, points: ArrayLike, leaf_size: int = 10, compact: bool = False) -> None:
        self.points = _rounded(points, None).copy()
        self.points.flags.writeable = False
        self.leaf_size, self.compact = leaf_size, compact
        shape = self.points.shape
        inner = "_Inner" if compact else ""
        size = needed(f"DAX3DPCL_SEARCH_KDTREE_V2_BufferSize{inner}", *shape)
        stack = buffer(f"DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize{inner}", *shape)
        self._memory = memory(size)
        self._tree = ffi.cast("DAX3DPCL_KDTREE_V2*", self._memory)
        address = pointer(self.points, "float")
        call(f"DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2{inner}", self._tree, address, *shape, leaf_size, stack)

    def __len__(self) -> int:
        return len(self.points)

    def __reduce__(self) -> tuple[Any, ...]:
        return type(self), (self.points, self.leaf_size, self.compact)

    def __copy__(self) -> "KdTree":
        """A tree with memory of its own, without building it again."""
        twin = KdTree.__new__(type(self))
        twin.points, twin.leaf_size, twin.compact = self.points, self.leaf_size, self.compact
        twin._memory = memory(ffi.sizeof(self._memory))
        ffi.memmove(twin._memory, self._memory, ffi.sizeof(self._memory))
        twin._tree = ffi.cast("DAX3DPCL_KDTREE_V2*", twin._memory)
        call("DAX3DPCL_SEARCH_KDTREE_HandleRerange_V2", twin._tree)
        return twin

    def query(self, points: ArrayLike, k: int = 1, pool: Optional[Pool] = None) -> Neighbours:
        """The k nearest neighbours of each point, nearest first.

        points: (q, d), or (d,) for one. Returns arrays of (q, k), or (k,).

        >>> dax.KdTree([[0, 0], [3, 4]]).query([[3, 3], [0, 1]]).indices
        array([[1],
               [0]])
        """
        queries, single = self._queries(points)
        if k < 1:
            raise ValueError(f"k: {k}, at least 1")
        wanted = min(k, len(self))
        indices, distances = self._room(len(queries), wanted)
        if len(queries):
            threads, handle, stack = self._workers(pool)
            arguments = pointer(queries, "float"), *queries.shape, wanted, pointer(indices, "uint32_t")
            count = ffi.new("int32_t*")
            name = "DAX3DPCL_KDTREE_KNearestSearch_MT"
            call(name, handle, threads, self._tree, *arguments, pointer(distances, "float"), count, stack)
        return self._neighbours(indices, distances, self._found(queries, indices, distances), k, single)

    def query_radius(
        self,
        points: ArrayLike,
        radius: float,
        max_count: Optional[int] = None,
        mask: Optional[ArrayLike] = None,
        pool: Optional[Pool] = None,
    ) -> Neighbours:
        """All points nearer than `radius` to each point, or the `max_count` nearest of them, nearest first.

        points: (q, d), or (d,) for one. Only the first three coordinates count. mask: (n,) uint8 or bool, only points
        where it is not 0. Returns arrays of (q, k), or (k,), k being max_count or the largest number found.

        >>> tree = dax.KdTree([[0, 0], [3, 4], [6, 8]])
        >>> tree.query_radius([3, 3], 4.5).indices
        array([1, 0])
        >>> tree.query_radius([3, 3], 4.5, max_count=3, mask=[1, 1, 0]).indices
        array([ 1,  0, -1])
        """
        queries, single = self._queries(points)
        if max_count is not None and max_count < 1:
            raise ValueError(f"max_count: {max_count}, at least 1")
        kept = None if mask is None else numbers("mask", mask, (len(self),), np.asarray(mask).dtype) != 0
        with np.errstate(over="ignore", under="ignore"):  # a radius beyond single precision finds all, or nothing
            rows, found, squares = self._scaled(queries, np.float32(radius), pool)
        if kept is not None:
            rows, found, squares = (each[kept[found]] for each in (rows, found, squares))
        order = np.lexsort((found, squares, rows))
        rows, found, squares = rows[order], found[order], squares[order]
        places = np.arange(len(rows)) - np.searchsorted(rows, rows)
        width = max_count or int(places.max(initial=-1)) + 1
        few = places < width
        indices = np.full((len(queries), width), -1, np.int64)
        distances = np.full((len(queries), width), np.inf, np.float32)
        indices[rows[few], places[few]], distances[rows[few], places[few]] = found[few], squares[few]
        return Neighbours(indices[0], distances[0]) if single else Neighbours(indices, distances)

    def _scaled(self, queries: Array, radius: Any, pool: Optional[Pool]) -> tuple[Array, Array, Array]:
        """All neighbours as (query, point, squared distance). The library finds nothing within 3.45e-4: below it all
        lengths are scaled by a power of two, which keeps the bits of distances and their ties."""
        if not 0 < radius < _SMALL_RADIUS:
            return self._within(queries, radius, pool)
        exponent = int(1 - np.frexp(radius)[1])
        sizes = np.abs(np.concatenate([self.points, queries]))
        largest = float(sizes[np.isfinite(sizes)].max(initial=0))
        if np.frexp(largest)[1] + exponent > 60:
            raise ValueError(f"radius: {radius:g} is too small beside coordinates of {largest:g}")
        tree = KdTree(np.ldexp(self.points, exponent), self.leaf_size, self.compact)
        rows, found, squares = tree._within(np.ldexp(queries, exponent), np.ldexp(radius, exponent), pool)
        return rows, found, np.ldexp(squares, -2 * exponent)

    def _within(self, queries: Array, radius: Any, pool: Optional[Pool]) -> tuple[Array, Array, Array]:
        """The same without scaling: queries that fill their room are asked again with more."""
        threads, handle, stack = self._workers(pool)
        open_rows, room, parts = np.arange(len(queries)), min(64, len(self)), []
        while len(open_rows):
            some = np.ascontiguousarray(queries[open_rows])
            indices, distances = self._room(len(some), room)
            counts = np.zeros(len(some), np.int32)
            arguments = pointer(some, "float"), *some.shape, room, pointer(indices, "uint32_t")
            outputs = pointer(distances, "float"), pointer(counts, "int32_t"), stack, radius
            call("DAX3DPCL_KDTREE_RNearestSearch_MT", handle, threads, self._tree, *arguments, *outputs)
            full = (counts == room) & (room < len(self))
            row, place = np.nonzero((np.arange(room) < counts[:, None]) & ~full[:, None])
            parts.append((open_rows[row], indices[row, place], distances[row, place]))
            open_rows, room = open_rows[full], min(8 * room, len(self))
        if not parts:
            return np.zeros(0, np.int64), np.zeros(0, np.int64), np.zeros(0, np.float32)
        rows, found, squares = (np.concatenate(each) for each in zip(*parts))
        return rows, found.astype(np.int64), squares

    def _queries(self, points: ArrayLike) -> tuple[Array, bool]:
        array = np.asarray(points)
        single = array.ndim == 1
        return numbers("points", array[None] if single else array, (None, self.points.shape[1])), single

    def _workers(self, pool: Optional[Pool]) -> tuple[int, Any, Any]:
        """Threads and handle of a pool, with the stacks that they search on. Larger pools than 64 are not taken."""
        threads, handle = handle_of(pool)
        if threads > 64:
            threads, handle = 1, ffi.NULL
        name = "DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize" + ("_Inner" if self.compact else "")
        return threads, handle, buffer(name, len(self), threads)

    @staticmethod
    def _room(queries: int, each: int) -> tuple[Array, Array]:
        return np.zeros((queries, each), np.uint32), np.zeros((queries, each), np.float32)

    def _found(self, queries: Array, indices: Array, distances: Array) -> Array:
        """Which entries are neighbours. Rows that the search could not fill end in 0s, the last distance apart."""
        found = np.ones(indices.shape, bool)
        for row in np.flatnonzero(distances[:, -1] == _NONE_FURTHER):
            # A real neighbour at distance 0 lies in the place of the query, and each comes once.
            here = (self.points[indices[row]] == queries[row]).all(1)
            first = np.zeros(indices.shape[1], bool)
            first[np.unique(indices[row], return_index=True)[1]] = True
            found[row] = ((distances[row] > 0) | (here & first)) & (distances[row] < _NONE_FURTHER)
        return found

    @staticmethod
    def _neighbours(indices: Array, distances: Array, found: Array, each: int, single: bool) -> Neighbours:
        numbers_found = np.full((len(indices), each), -1, np.int64)
        squares = np.full((len(indices), each), np.inf, np.float32)
        width = indices.shape[1]
        numbers_found[:, :width] = np.where(found, indices, -1)
        squares[:, :width] = np.where(found, distances, np.inf)
        return Neighbours(numbers_found[0], squares[0]) if single else Neighbours(numbers_found, squares)


class Normals(NamedTuple):
    """normals: (n, 3) unit vectors. curvature: (n,) share of the least eigenvalue, 0 for a plane."""

    normals: NDArray[np.float32]
    curvature: NDArray[np.float32]


def estimate_normals(
    points: ArrayLike, k: int = 10, radius: float = np.inf, viewpoint: Optional[ArrayLike] = None
) -> Normals:
    """A normal for each point, by principal components of its neighbours.

    points: (n, 3), n >= 3. k: neighbours, itself among them, at least 3; radius: of them those nearer than this, length
    units. viewpoint: (3,), towards which normals are turned. Where no normal can be estimated it is (0, 0, 1) of
    curvature 0.

    >>> y, x = np.mgrid[0:4, 0:4]
    >>> plane = np.stack([x, y, np.zeros_like(x)], -1).reshape(-1, 3)
    >>> dax.estimate_normals(plane, viewpoint=(0, 0, 9)).normals[5]
    array([0., 0., 1.], dtype=float32)
    """
    cloud = _rounded(points)
    tree = buffer("DAX3DPCL_SEARCH_KDTREE_BufferSize", len(cloud), 3)
    record = ffi.cast("DAX3DPCL_KDTREE*", tree)
    work = buffer("DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize", len(cloud), k)
    call("DAX3DPCL_SEARCH_KDTREE_BuildIndex", record, pointer(cloud, "float"), len(cloud), 3, 10)
    result = np.empty((len(cloud), 4), np.float32)
    eye = None if viewpoint is None else _eye(viewpoint)
    eye_address = ffi.NULL if eye is None else pointer(eye, "float")
    outputs = pointer(result, "DAX3DPCL_NORMAL"), work, radius
    address = pointer(cloud, "float")
    call("DAX3DPCL_FEATURE_NORM_PCAEstimate", address, len(cloud), record, k, eye_address, *outputs)
    return Normals(result[:, :3].copy(), result[:, 3].copy())


def normal_of(points: ArrayLike) -> Optional[tuple[NDArray[np.float32], float]]:
    """One normal for all points as a whole: (unit vector, curvature), or None when there is none.

    points: (n, 3), n >= 4. The sign is arbitrary.

    >>> normal, curvature = dax.normal_of([[0, 0, 1], [1, 0, 1], [0, 1, 1], [1, 1, 1]])
    >>> abs(normal), curvature
    (array([0., 0., 1.], dtype=float32), 0.0)
    """
    cloud = _rounded(points)
    normal, estimated = ffi.new("DAX3DPCL_NORMAL*"), ffi.new("int32_t*")
    call("DAX3DPCL_FEATURE_NORM_Compute_32f", pointer(cloud, "float"), len(cloud), normal, estimated)
    if not estimated[0]:
        return None
    return np.array([normal.nx, normal.ny, normal.nz], np.float32), float(normal.curvature)


def _eye(viewpoint: ArrayLike) -> Array:
    eye = numbers("viewpoint", viewpoint, (3,))
    if not np.isfinite(eye).all():
        raise ValueError(f"viewpoint: {viewpoint!r}, needed are finite numbers")
    return eye


def face_viewpoint(normals: ArrayLike, points: ArrayLike, viewpoint: ArrayLike) -> NDArray[np.float32]:
    """Normals (n, 3) of points (n, 3), negated where they point away from the viewpoint (3,).

    >>> dax.face_viewpoint([[0, 0, -1]], [[5, 5, 0]], (0, 0, 9))
    array([[-0., -0.,  1.]], dtype=float32)
    """
    cloud = numbers("points", points, (None, 3))
    eye = _eye(viewpoint)
    result = np.zeros((len(cloud), 4), np.float32)
    result[:, :3] = numbers("normals", normals, (len(cloud), 3))
    address, view = pointer(eye, "float"), pointer(result, "DAX3DPCL_NORMAL")
    points_at = pointer(cloud, "float")
    for i in range(len(cloud)):
        call("DAX3DPCL_FEATURE_NORM_FlipTowardsViewPoint_I", view + i, points_at + 3 * i, address)
    return result[:, :3].copy()
