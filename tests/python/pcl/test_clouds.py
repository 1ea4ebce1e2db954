"""Points, trees and normals against NumPy's long way, and what hostile clouds do."""
import copy
import pickle

import numpy as np
import pytest

import dax

WITHOUT = {
    r".*_Inner": "a tree's compact form; covered where a tree has one",
    r"DAX3DPCL_SEARCH_KDTREE_(KNearestSearch|HandleRerange)": "the second generation; the first one serves normals",
    r"DAX3DPCL_SEARCH_KDTREE_[KR]NearestSearch(Mask)?_V2(_BufferSize)?": "the pool forms, which do without one",
}


def test_neighbours_as_by_all_distances(rng, pool):
    for d in (2, 3, 7):
        points = rng.normal(size=(300, d)).astype(np.float32)
        queries = rng.normal(size=(40, d)).astype(np.float32)
        squares = ((queries[:, None].astype(float) - points) ** 2).sum(-1)
        order = np.argsort(squares, 1)[:, :9]
        for tree in (dax.KdTree(points), dax.KdTree(points, 1, compact=True)):
            found = tree.query(queries, 9)
            assert np.array_equal(found.indices, order), d
            assert np.allclose(found.squared_distances, np.take_along_axis(squares, order, 1), rtol=1e-5)
            for other in (
                tree.query(queries, 9, pool),
                copy.copy(tree).query(queries, 9),
                pickle.loads(pickle.dumps(tree)).query(queries, 9),
            ):
                assert np.array_equal(other.indices, found.indices)
                assert np.array_equal(other.squared_distances, found.squared_distances)
        single = tree.query(queries[3], 9)
        assert np.array_equal(single.indices, order[3]) and single.squared_distances.shape == (9,)


def test_radius_as_by_all_distances(rng, pool):
    points, query = rng.uniform(size=(500, 3)).astype(np.float32), np.float32([0.5, 0.5, 0.5])
    squares = ((query.astype(float) - points) ** 2).sum(-1)
    near, mask = np.flatnonzero(squares < 0.04), rng.integers(0, 2, 500) * 256  # not 0, whatever the low byte
    tree = dax.KdTree(points)
    alone, together, masked = (tree.query_radius([query], 0.2, **more) for more in ({}, {"pool": pool}, {"mask": mask}))
    near = sorted(near, key=lambda i: (squares[i], i))
    assert alone.indices.tolist() == [near] and np.array_equal(alone.indices, together.indices)
    assert masked.indices[0].tolist() == [i for i in near if mask[i]]
    assert np.allclose(alone.squared_distances[0], squares[near], rtol=1e-4)
    assert tree.query_radius(query, 0.2, 2).indices.tolist() == near[:2]


def test_radius_is_complete_and_of_any_size(rng):
    points = rng.uniform(size=(3000, 3)).astype(np.float32)
    tree, queries = dax.KdTree(points), points[[5, 9]]
    squares = ((queries[:, None].astype(float) - points) ** 2).sum(-1)
    found = tree.query_radius(queries, 0.5)
    counts = (squares < 0.25).sum(1)
    assert counts.min() > 600 and (found.indices >= 0).sum(1).tolist() == counts.tolist()
    assert np.array_equal(found.indices[:, :100], tree.query_radius(queries, 0.5, 100).indices)
    # All lengths a power of two smaller: the same neighbours, and distances that are scaled bit by bit.
    for exponent in (-12, -30):
        small = dax.KdTree(np.ldexp(points, exponent)).query_radius(np.ldexp(queries, exponent), 0.5 * 2.0**exponent)
        assert np.array_equal(small.indices, found.indices), exponent
        assert np.array_equal(np.ldexp(small.squared_distances, -2 * exponent), found.squared_distances), exponent
    with pytest.raises(ValueError, match="too small beside"):
        dax.KdTree([[1e20, 0]]).query_radius([0, 0], 1e-6)


def test_points_that_cannot_be_found():
    points = np.array([[np.nan, 0], [1, 1], [np.inf, 1], [1, 1], [0, 0]], np.float32)
    tree = dax.KdTree(points)
    found = tree.query([[1, 1], [np.nan, 0], [0, 0]], 7)
    assert [sorted(row[row >= 0]) for row in found.indices] == [[1, 3, 4], [], [1, 3, 4]]
    assert (np.isinf(found.squared_distances) == (found.indices < 0)).all()
    assert dax.KdTree([[5.0, 5.0]]).query([5, 5], 3).indices.tolist() == [0, -1, -1]
    assert dax.KdTree([[np.nan, 0.0]]).query([0, 0]).indices.tolist() == [-1]
    assert tree.query(np.zeros((0, 2))).indices.shape == (0, 1)
    assert tree.query_radius(np.zeros((0, 2)), 1).indices.shape == (0, 0)
    for wrong in (np.zeros((0, 2)), np.zeros((2, 0))):
        with pytest.raises(dax.Error, match="n < 1"):
            dax.KdTree(wrong)
    with pytest.raises(ValueError, match="shape"):
        tree.query([[1, 2, 3]])
    with pytest.raises(TypeError):
        dax.KdTree([["a", "b"]])
    with pytest.raises(dax.Error, match="radius"):
        tree.query_radius([1, 1], np.nan)
    with pytest.raises(ValueError, match="k: 0"):
        tree.query([1, 1], 0)
    with pytest.raises(dax.Error, match="leafSize"):
        dax.KdTree(points, 0)
    for name in ("points", "compact"):  # by which memory was measured
        with pytest.raises(AttributeError, match="cannot be changed"):
            setattr(tree, name, getattr(tree, name))


def test_voxels():
    points = np.array([[0.1, 0, 9], [0.3, 0, 9], [3.6, 0.2, 0.1], [np.nan, 0, 0]])
    assert np.allclose(dax.voxel_grid(points, (1, 1, 10)), [[0.2, 0, 9], [3.6, 0.2, 0.1]])
    assert np.allclose(dax.voxel_grid(points, 1, [[3, 0, 0], [4, 1, 1]]), [[3.6, 0.2, 0.1]])
    for wrong in ((points, 0), (points, 1, [[1, 1, 1], [0, 0, 0]]), (np.zeros((0, 3)), 1)):
        with pytest.raises(dax.Error, match="VoxelGrid"):
            dax.voxel_grid(*wrong)
    with pytest.raises(ValueError, match="leaf: "):
        dax.voxel_grid(points, (1, 1))


def test_normals_of_a_sphere(rng):
    points = rng.normal(size=(2000, 3))
    points /= np.linalg.norm(points, axis=1)[:, None]
    outwards = dax.estimate_normals(points * 3 + 1, 12, viewpoint=(1, 1, 1)).normals * -1
    assert (np.einsum("ij,ij->i", outwards, points) > 0.97).all()
    found = dax.estimate_normals(points, 12)
    assert np.allclose(np.linalg.norm(found.normals, axis=1), 1, atol=1e-5) and (found.curvature < 0.05).all()
    turned = dax.face_viewpoint(found.normals, points, (0, 0, 0))
    assert (np.einsum("ij,ij->i", turned, points) < 0).all()
    patch = points[points[:, 2] > 0.95]
    normal, curvature = dax.normal_of(patch)
    eigen = np.linalg.eigh(np.cov(patch.T, bias=True))
    assert abs(normal @ eigen[1][:, 0]) == pytest.approx(1, abs=1e-4)
    assert curvature == pytest.approx(eigen[0][0] / eigen[0].sum(), rel=1e-3)


def test_far_points_warn(rng, recwarn):
    points = rng.uniform(size=(500, 3))
    far = points + [450000.0, 5600000.0, 300.0]
    for use in (dax.KdTree, dax.estimate_normals, dax.normal_of, lambda cloud: dax.voxel_grid(cloud, 0.1)):
        use(points), use(points.astype(np.float32) + 1e6), use(far - far[0])
        assert not recwarn.list
        with pytest.warns(UserWarning, match="single precision moves them by 0.25: subtract"):
            use(far)
        recwarn.clear()


def test_no_normals():
    line = np.stack([np.arange(9), np.zeros(9), np.zeros(9)], 1)
    assert dax.normal_of(line) is None
    assert (dax.estimate_normals(line).normals == (0, 0, 1)).all()
    lonely = dax.estimate_normals(line[:, [0, 2, 1]] * 100, radius=1, viewpoint=(0, 0, -5)).normals
    assert (lonely == (0, 0, -1)).all()
    for wrong in ({"k": 2}, {"radius": np.nan}, {"radius": 0}):
        with pytest.raises(dax.Error):
            dax.estimate_normals(line, **wrong)
    with pytest.raises(dax.Error, match="count < 4"):
        dax.normal_of(line[:3])
    for wrong in ((0, 0), (0, 0, np.nan)):
        with pytest.raises(ValueError, match="viewpoint"):
            dax.estimate_normals(line, viewpoint=wrong)
    for cloud, box in ((np.full((4, 3), np.nan), None), (line + 99, [[0, 0, 0], [1, 1, 1]])):
        assert dax.voxel_grid(cloud, 1, box).shape == (0, 3)
