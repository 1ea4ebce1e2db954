"""Calipers on drawn edges whose places are known."""
import math

import numpy as np
import pytest

import dax


def vertical(at):
    """An anti-aliased edge, dark to the left."""
    return np.rint(20 + 100 * np.clip(np.arange(100) - at + 0.5, 0, 1)).astype(np.uint8) * np.ones((60, 1), np.uint8)


@pytest.mark.parametrize("dtype", [np.uint8, np.int16])
def test_straight_edge_in_every_kind_of_region(dtype):
    image = vertical(50.25).astype(dtype)
    regions = [dax.Box(50, 30, 40, 20), dax.Box(50, 30, 40, 20, 0.2)]
    if dtype == np.uint8:
        regions += [dax.Rhomboid(50, 30, 40, 20, 0.3, math.pi / 2), dax.Annulus(20, 30, 20, 40, -0.1, 0.2)]
    for region in regions:
        edges = dax.find_edges(image, region)
        # Turned and bent projections smear the edge over some pixels; its middle stays.
        assert len(edges) == 1 and abs(edges.points[0, 0] - 50.25) < (0.1 if region == regions[0] else 0.4), region
        assert edges.polarity[0] == 1 and abs(edges.score[0] - abs(edges.peak[0]) / 255) < 1e-5
    assert len(dax.find_edges(image, regions[0], polarity="light-to-dark")) == 0
    edges = dax.find_edges(image.T, dax.Box(30, 50, 20, 40), along="height")
    assert edges.points[0].tolist() == pytest.approx([30, 50.25], abs=0.1)


def test_order_choice_criteria_and_profile():
    image = np.zeros((20, 90), np.uint8)
    for x, value in ((20, 50), (40, 150), (60, 250)):
        image[:, x:] = value
    box = dax.Box(45, 10, 80, 11)
    edges = dax.find_edges(image, box, profile=True)
    assert edges.points[:, 0].tolist() == [39.5, 59.5, 19.5]  # equal contrasts along the profile
    assert edges.profile.gray.tolist() == image[10, 5:85].tolist()
    assert len(edges.profile.response) == 80 and edges.profile.kernel_length == 5
    assert np.array_equal(edges.response, edges.profile.response[edges.index])
    assert dax.find_edges(image, box, only=1).points[0, 0] == 19.5
    assert len(dax.find_edges(image, box, max_count=2**31 - 1)) == 3  # no memory for more than there can be
    assert dax.find_edges(image, box, max_count=2).points[:, 0].tolist() == [39.5, 59.5]
    nearest = dax.find_edges(image, box, offset=dax.Ramp(10, 20, 20, falling=True))
    assert nearest.points[0, 0] in (19.5, 39.5) and nearest.score[0] == 1
    right = dax.find_edges(image, box, offset=dax.Ramp(0, 0, 1), min_score=0.5)
    assert right.points[:, 0].tolist() == [59.5]
    mask = np.ones_like(image)
    mask[:, 30:50] = 0
    assert sorted(dax.find_edges(image, box, mask=mask).points[:, 0]) == [19.5, 59.5]
    edges.points[0] = 0  # the caller's own memory


def test_pairs():
    image = np.full((20, 90), 30, np.uint8)
    image[:, 20:28] = image[:, 50:60] = 130
    box = dax.Box(45, 10, 80, 11)
    pairs = dax.find_edge_pairs(
        image, box, polarity="dark-to-light", expected_width=10, width_error=dax.Ramp(0, 1, 1, falling=True)
    )
    assert pairs.width[0] == pytest.approx(10) and pairs.points[0, :, 0].tolist() == [49.5, 59.5]
    assert pairs.contrast[0] == pytest.approx(np.abs(pairs.peaks[0]).sum()) and pairs.polarity[0].tolist() == [1, 2]
    assert (np.diff(pairs.score) <= 0).all() and len(pairs) == 2
    assert np.allclose(pairs.positions.mean(1), pairs.position)
    gap = dax.find_edge_pairs(image, box, polarity="light-to-dark")
    assert gap.width.tolist() == [22] and len(dax.find_edge_pairs(image, dax.Box(45, 10, 16, 11))) == 0
    sides = (dax.Ramp(-0.5, -0.5, -0.1), dax.Ramp(0, 0.5, 0.5, falling=True))
    assert dax.find_edge_pairs(image, box, expected_width=9, signed_width_error=sides).width[:2].tolist() == [8, 10]
    with pytest.raises(dax.Error, match="DAXI_CalipEdgePairDetect_8u_C1R"):
        dax.find_edge_pairs(image, box, expected_width=0, relative_width=dax.Ramp(0, 1, 2))


def test_pairs_are_opposite_unless_a_staircase_is_asked_for():
    image = np.full((20, 120), 30, np.uint8)
    image[:, 30:50], image[:, 50:70], image[:, 90:] = 110, 200, 90  # up, up, down, up
    box = dax.Box(60, 10, 110, 11)
    pairs = dax.find_edge_pairs(image, box)
    assert (pairs.polarity[:, 0] != pairs.polarity[:, 1]).all() and (np.diff(pairs.score) <= 0).all()
    apart = [dax.find_edge_pairs(image, box, polarity=each) for each in ("dark-to-light", "light-to-dark")]
    assert sorted(pairs.width.tolist()) == sorted(apart[0].width.tolist() + apart[1].width.tolist())
    steps = dax.find_edge_pairs(image, box, polarity="staircase")
    assert (steps.polarity[:, 0] == steps.polarity[:, 1]).any() and len(steps) > len(pairs)
    ordered = sorted(pairs.positions.tolist())
    assert [dax.find_edge_pairs(image, box, only=k).positions.tolist() for k in (1, 2, 99)] == [
        [ordered[0]], [ordered[1]], [ordered[-1]]
    ]
    (several,) = dax.find_edge_pairs_in(image, [box], max_count=1)
    assert several.positions.tolist() == pairs.positions[:1].tolist()


def test_a_factor_of_zero_is_no_result():
    image = np.full((20, 90), 30, np.uint8)
    image[:, 20:28] = image[:, 50:60] = 130
    box = dax.Box(45, 10, 80, 11)
    assert dax.find_edges(image, box, offset=dax.Ramp(0, 0, 1)).points[:, 0].tolist() == [49.5, 59.5]
    ramp = dax.Ramp(0, 0.01, 0.01, falling=True)
    assert dax.find_edge_pairs(image, box, expected_width=8, width_error=ramp).width.tolist() == [8]


def test_regions_are_checked():
    image = vertical(50)
    with pytest.warns(UserWarning, match="beyond the image") as warned:
        dax.find_edges(image, dax.Box(50, 30, 40, 70))
    assert warned[0].filename == __file__
    with pytest.warns(UserWarning, match="beyond the image"):
        dax.find_edges(image, dax.Annulus(50, 30, 5, 31))
    for region in (dax.Box(50, 30, 1e7, 1e7), dax.Annulus(50, 30, 1e6, 1e7)):
        with pytest.raises(ValueError, match="at most 100000000"):
            dax.find_edges_in(image, [region])
    turned = dax.find_edges(image, dax.Box(50, 30, 40, 20, 0.5)).points
    assert np.allclose(dax.find_edges(image, dax.Box(50, 30, 40, 20, 0.5 - 2 * math.pi)).points, turned, atol=1e-3)


@pytest.mark.parametrize("half_width, width, warns", [(1, 4, False), (2, 5, False), (2, 3, True), (5, 4, True)])
def test_stripes_narrower_than_the_filter(recwarn, half_width, width, warns):
    stripe = np.minimum(vertical(40.3), vertical(99 - 40.3 - width)[:, ::-1])
    pairs = dax.find_edge_pairs(stripe, dax.Box(45, 30, 80, 11), polarity="dark-to-light", half_width=half_width)
    assert len(pairs) == 1 and (abs(pairs.width[0] - width) > 0.05) == warns
    assert [str(each.message).startswith("a width of") for each in recwarn] == [True] * warns


def test_fine_is_more_exact(rng):
    """A blurred edge at all fractions of a pixel, straight and turned."""
    errors = {}
    for fine in (False, True):
        errors[fine] = []
        for at in np.arange(50, 51, 0.05):
            x = (np.arange(100)[:, None] + (np.arange(16) + 0.5) / 16 - 0.5) - at
            blurred = 20 + 200 * (0.5 + 0.5 * np.vectorize(math.erf)(x / (0.5 * math.sqrt(2)))).mean(1)
            image = np.rint(blurred).astype(np.uint8) * np.ones((60, 1), np.uint8)
            for region, along in ((dax.Box(50, 30, 40, 21), "width"),
                                  (dax.Rhomboid(50, 30, 21, 40, math.pi / 2, 0), "height")):
                edges = dax.find_edges(image, region, along=along, fine=fine)
                errors[fine].append(abs(edges.points[0, 0] - at))
                middle = edges.points[0, 0] - 50
                assert abs(abs(edges.position[0]) - abs(middle)) < 1e-3
            stripe = np.minimum(image, np.roll(image[:, ::-1], 20, 1))
            pair = dax.find_edge_pairs(stripe, dax.Box(50, 30, 60, 21), polarity="dark-to-light", fine=True)
            assert abs(pair.width[0] - (119 - 2 * at)) < 0.02
            assert np.ptp(pair.points[0, :, 0]) == pytest.approx(pair.width[0], abs=1e-4)
    assert max(errors[True]) < max(errors[False]) / 2.5 and max(errors[True]) < 0.011


@pytest.mark.parametrize("kind", ["boxes", "rhomboids", "annuli"])
def test_many_regions_as_one_by_one(rng, pool, kind):
    image = np.cumsum(rng.integers(-30, 31, (80, 120)), 1)
    image = ((image - image.min()) * 255 // np.ptp(image)).astype(np.uint8)
    make = {
        "boxes": lambda x, y, a: dax.Box(x, y, 30, 7, a),
        "rhomboids": lambda x, y, a: dax.Rhomboid(x, y, 30, 7, a, a + 1),
        "annuli": lambda x, y, a: dax.Annulus(x, y, 5, 25, a, 0.5),
    }[kind]
    regions = [make(*v) for v in rng.uniform([20, 20, -3], [100, 60, 2], (9, 3))]
    covered = np.ones_like(image)
    for single, several in ((dax.find_edges, dax.find_edges_in), (dax.find_edge_pairs, dax.find_edge_pairs_in)):
        alone = [single(image, region, threshold=4) for region in regions]
        assert sum(map(len, alone)) > 0
        forms = [{"mask": covered}, {"profile": True}, {"mask": covered, "profile": True}]
        results = [[single(image, region, threshold=4, **form) for region in regions] for form in forms]
        if kind == "boxes":
            results.append([single(image.astype(np.int16), region, threshold=4) for region in regions])
        for result in (several(image, regions, threshold=4), several(image, regions, threshold=4, pool=pool), *results):
            for one, other in zip(alone, result):
                assert np.array_equal(one.points, other.points) and np.array_equal(one.score, other.score)
    assert dax.find_edges_in(image, []) == []
    with pytest.raises(TypeError, match="list.*find_edges"):
        dax.find_edges_in(image, regions[0])
    with pytest.raises(TypeError, match="one kind"):
        dax.find_edges_in(image, [regions[0], dax.Box(20, 20, 5, 5), dax.Annulus(9, 9, 1, 5)])


def test_impossible_calipers(rng):
    image = vertical(50)
    for region in (
        dax.Box(math.nan, 30, 40, 20),
        dax.Box(50, 30, 40, -20),
        dax.Rhomboid(50, 30, 40, 20, 1, 1),
        dax.Annulus(50, 30, 20, math.inf),
    ):
        with pytest.raises(dax.Error, match="region impossible"):
            dax.find_edges(image, region, profile=region.x == 50)
    box = dax.Box(50, 30, 40, 20)
    with pytest.raises(ValueError, match="degrees"):
        dax.find_edges(image, box._replace(angle=90))
    for wrong in ({"max_count": 0}, {"min_score": math.nan}, {"gray": dax.Ramp(2, 1, 3)}, {"half_width": 51},
                  {"only": -1}, {"min_score": 1.5}, {"contrast": dax.Ramp(0, 0, math.inf)}):
        with pytest.raises(ValueError, match=f"{next(iter(wrong))}: "):
            dax.find_edges(image, box, **wrong)
    with pytest.raises(ValueError, match="expected_width: "):
        dax.find_edge_pairs(image, box, expected_width=math.nan)
    with pytest.raises(TypeError):
        dax.find_edges(image.astype(np.int16), box, mask=np.ones_like(image))
    with pytest.raises(TypeError, match="needed is a Box"):
        dax.find_edges(image, (50, 30, 40, 20, 0))
    with pytest.raises(ValueError, match="shape"):
        dax.find_edges(image, box, mask=np.ones((9, 9), np.uint8))
    with pytest.raises(ValueError, match="polarity"):
        dax.find_edges(image, box, polarity="up")
