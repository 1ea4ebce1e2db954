"""Rotations, poses and geometry in space against SciPy and NumPy."""
import numpy as np
import pytest
import scipy.spatial
from scipy.spatial.transform import Rotation, Slerp

import dax
from dax import pose, space

ORDERS = ["XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX", "XYX", "XZX", "YXY", "YZY", "ZXZ", "ZYZ"]


def poses_of(rotations, translations):
    made = np.tile(np.eye(4), (len(rotations), 1, 1))
    made[:, :3, :3], made[:, :3, 3] = rotations.as_matrix(), translations
    return made


def test_rotations_as_scipy(rng):
    rotations = Rotation.random(50, random_state=3)
    matrices = rotations.as_matrix()
    quaternions = rotations.as_quat()[:, [3, 0, 1, 2]]
    quaternions *= np.where(quaternions[:, :1] < 0, -1, 1)
    assert np.allclose(pose.to_quaternion(matrices), quaternions, atol=1e-15)
    assert np.allclose(pose.from_quaternion(3 * quaternions), matrices, atol=1e-14)
    assert np.allclose(pose.to_rotation_vector(matrices), rotations.as_rotvec(), atol=1e-14)
    assert np.allclose(pose.from_rotation_vector(rotations.as_rotvec()), matrices, atol=1e-14)
    for order in ORDERS + [each.lower() for each in ORDERS]:
        angles = rotations.as_euler(order)
        assert np.allclose(pose.to_euler(order, matrices), angles, atol=1e-9), order
        assert np.allclose(pose.from_euler(order, angles), matrices, atol=1e-14), order
    assert pose.from_rotation_vector(np.zeros((2, 0, 3))).shape == (2, 0, 3, 3)
    for wrong in ("XY", "XYY", "xYz", ""):
        with pytest.raises(dax.Error):
            pose.from_euler(wrong, [0, 0, 0])
    with pytest.raises(TypeError):
        pose.from_euler(3, [0, 0, 0])
    with pytest.raises(dax.Error, match="orthonormal"):
        pose.to_quaternion(np.ones((3, 3)))


def test_poses_as_scipy(rng, pool):
    a, b = poses_of(Rotation.random(2, random_state=1), rng.normal(size=(2, 3)))
    assert np.allclose(pose.compose(a, b), a @ b) and np.allclose(pose.inverse(a), np.linalg.inv(a))
    for dtype in (np.float32, np.float64):
        points = rng.normal(size=(1000, 3)).astype(dtype)
        moved = points @ a[:3, :3].T + a[:3, 3]
        for each in (pose.apply(a, points), pose.apply(a, points, pool=pool)):
            assert each.dtype == dtype and np.allclose(each, moved, atol=1e-6)
        assert np.allclose(pose.apply_normals(a, points), points @ a[:3, :3].T, atol=1e-6)
    assert np.allclose(pose.apply(a, points[0]), moved[0]) and pose.apply(a, np.zeros((0, 3))).shape == (0, 3)
    both = Rotation.from_matrix([a[:3, :3], b[:3, :3]])
    between = pose.interpolate(a, b, 0.3)
    assert np.allclose(between[:3, :3], Slerp([0, 1], both)(0.3).as_matrix())
    assert np.allclose(between[:3, 3], 0.7 * a[:3, 3] + 0.3 * b[:3, 3])
    apart = pose.distance(a, b)
    assert np.isclose(apart.translation, np.linalg.norm(a[:3, 3] - b[:3, 3]))
    assert np.isclose(apart.angle, (both[0].inv() * both[1]).magnitude())
    assert pose.distance(np.stack([a, b]), a).angle.shape == (2,)
    near = Rotation.from_rotvec(0.01 * rng.normal(size=(20, 3)))
    many, weights = poses_of(near, rng.normal(size=(20, 3))), rng.uniform(size=20)
    mean = pose.mean(many, weights)
    assert np.allclose(mean[:3, :3], near.mean(weights).as_matrix(), atol=1e-6)
    assert np.allclose(mean[:3, 3], np.average(many[:, :3, 3], axis=0, weights=weights))
    many[:6, :3, 3] += 1000
    assert np.abs(pose.mean(many, robust=True)[:3, 3]).max() < 3
    with pytest.raises(dax.Error):
        pose.mean(many, -weights)


def test_alignment(rng):
    truth = poses_of(Rotation.random(1, random_state=5), rng.normal(size=(1, 3)))[0]
    points = rng.normal(size=(100, 3))
    for dtype, tolerance in ((np.float64, 1e-12), (np.float32, 1e-5)):
        source = points.astype(dtype)
        for scale in (1, 2.5):
            target = scale * points @ truth[:3, :3].T + truth[:3, 3]
            found = pose.align(source, target, np.ones(100), scale=scale != 1)
            assert np.allclose(found.pose, truth, atol=tolerance) and np.isclose(found.scale, scale, atol=tolerance)
            assert found.rms < 1e-5 and not found.mirrored
    assert pose.align(points, points * [1, 1, -1]).mirrored
    with pytest.raises(dax.Error):
        pose.align(points * [1, 0, 0], points)
    with pytest.raises(ValueError):
        pose.align(points, points[1:])


def test_shapes(rng):
    eye, origin = np.eye(4), np.zeros(3)
    line, plane = space.Line(origin, [0, 0, 2]), space.Plane([0, 0, 2], -4)
    box, sphere = space.Box(eye, [2, 2, 2]), space.Sphere(origin, 1)
    triangle = space.Triangle([-1, -1, 1], [3, -1, 1], [-1, 3, 1])
    for shape, distance, foot in (
        (line, 5, [0, 0, 9]),
        (space.Segment(origin, [0, 0, 1]), np.sqrt(89), [0, 0, 1]),
        (plane, 7, [3, 4, 2]),
        (sphere, np.sqrt(106) - 1, np.array([3, 4, 9]) / np.sqrt(106)),
        (space.Cylinder(origin, [0, 0, 3], 1), 4, [0.6, 0.8, 9]),
        (space.Circle(origin, [0, 0, 3], 1), np.sqrt(97), [0.6, 0.8, 0]),
        (triangle, None, None),
        (box, np.sqrt(4 + 9 + 64), [1, 1, 1]),
    ):
        found = space.distance_to([3, 4, 9], shape)
        assert distance is None or np.isclose(found.distance, distance) and np.allclose(found.foot, foot)
    assert space.distance_to(line, space.Line([1, 0, 0], [0, 1, 0])).distance == 1
    apart = space.distance_to(space.Segment(origin, [0, 0, 1]), space.Segment([3, 0, 2], [4, 0, 2]))
    assert apart.distance == np.sqrt(10)
    assert np.allclose(space.intersect(line, plane), [0, 0, 2])
    assert np.allclose(space.intersect(space.Segment(origin, [0, 0, 8]), plane), [0, 0, 2])
    assert np.allclose(space.intersect(line, sphere), [[0, 0, -1], [0, 0, 1]])
    assert np.allclose(space.intersect(line, box), [[0, 0, -1], [0, 0, 1]])
    across = space.Line(origin, [1, 0, 0])
    assert np.allclose(space.intersect(across, space.Cylinder(origin, [0, 0, 3], 2)), [[-2, 0, 0], [2, 0, 0]])
    assert np.allclose(space.intersect(line, triangle), [0, 0, 1])
    assert np.allclose(space.intersect(plane, space.Plane([1, 0, 0], -3)).point, [3, 0, 2])
    assert np.allclose(space.intersect(plane, space.Plane([1, 0, 0], -3), space.Plane([0, 1, 0], 1)), [3, -1, 2])
    assert np.isclose(space.intersect(space.Plane([0, 0, 1], -0.6), sphere).radius, 0.8)
    assert np.isclose(space.intersect(sphere, space.Sphere([1.2, 0, 0], 1)).radius, 0.8)
    assert space.intersect(box, box) is None
    with pytest.raises(dax.Error, match="do not meet"):
        space.intersect(plane, sphere)
    assert space.angle(line, across) == np.pi / 2 and space.angle(line, plane) == np.pi / 2
    assert space.angle(plane, plane) == 0 and space.angle([1, 0, 0], [-1, 0, 0]) == np.pi
    for call in (space.angle, space.intersect, space.distance_to):
        with pytest.raises(TypeError):
            call(line, space.Segment([0, 0, 0], [1, 0, 0]))
    with pytest.raises(ValueError):
        space.distance_to([1, 2], plane)


def test_fits_boxes_and_hulls(rng):
    directions = rng.normal(size=(500, 3))
    directions /= np.linalg.norm(directions, axis=1)[:, None]
    t = rng.uniform(0, 4, 500)
    for dtype in (np.float64, np.float32):
        sphere = space.fit_sphere((3 + 2 * directions).astype(dtype))
        assert np.allclose(sphere.shape.centre, 3, atol=1e-5) and np.isclose(sphere.shape.radius, 2, atol=1e-5)
        ring = np.c_[2 * np.cos(t), 2 * np.sin(t), 0 * t].astype(dtype)
        assert np.isclose(space.fit_circle(ring).shape.radius, 2, atol=1e-5)
        ring[:, 2] = directions[:, 0]
        assert np.isclose(space.fit_cylinder(ring).shape.radius, 2, atol=1e-5)
        flat = (directions * [1, 2, 0] + [0, 0, 5]).astype(dtype)
        assert np.allclose(space.fit_plane(flat).shape.normal, [0, 0, 1], atol=1e-6)
        assert np.allclose(space.fit_line((flat * [0, 1, 1]).astype(dtype)).shape.direction, [0, 1, 0], atol=1e-6)
        flat[:200, 2] += 7 + 3 * directions[:200, 0]
        robust = space.fit_plane(flat, robust=True)
        assert robust.inliers == 300 and np.isclose(robust.shape.offset, -5)
        cloud = (directions * [3, 2, 1]).astype(dtype)
        upright, principal, least = (space.box(cloud, kind) for kind in ("upright", "principal", "least"))
        assert np.allclose(upright.size, np.ptp(cloud, axis=0))
        for each in (principal, least):
            local = (cloud - each.pose[:3, 3]) @ each.pose[:3, :3]
            assert np.allclose(np.ptp(local, axis=0), each.size, atol=1e-5)
        triangles = space.convex_hull(cloud)
        theirs = scipy.spatial.ConvexHull(cloud)
        assert set(triangles.ravel()) == set(theirs.vertices)
        a, b, c = cloud[triangles].astype(float).transpose(1, 0, 2)
        assert np.isclose((np.cross(a, b) * c).sum() / 6, theirs.volume, rtol=1e-5)
    with pytest.raises(ValueError):
        space.convex_hull(cloud[:3])
    with pytest.raises(ValueError):
        space.box(cloud, "round")
    with pytest.raises(dax.Error):
        space.box(flat[:0], "principal")
