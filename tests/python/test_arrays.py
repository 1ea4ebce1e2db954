"""Strides, outputs, types and failures: what every function does with its arrays."""
import gc
import pickle
import threading
import time
import types
import weakref

import numpy as np
import pytest

import dax


def layouts(image):
    """The same pixels laid out in every way that NumPy knows."""
    wide = np.zeros((image.shape[0] * 2, image.shape[1] * 3), image.dtype)
    yield "plain", image
    wide[: image.shape[0], 1 : image.shape[1] + 1] = image
    yield "slice", wide[: image.shape[0], 1 : image.shape[1] + 1]
    wide[::2, ::3] = image
    yield "stepped", wide[::2, ::3]
    yield "transposed", np.asfortranarray(image)
    yield "upside down", image[::-1].copy()[::-1]
    yield "mirrored", image[:, ::-1].copy()[:, ::-1]
    yield "foreign bytes", image.astype(image.dtype.newbyteorder())
    unaligned = np.zeros(image.nbytes + 1, np.uint8)[1:].view(image.dtype).reshape(image.shape)
    unaligned[:] = image
    yield "unaligned", unaligned
    yield "one value", np.broadcast_to(image[0, 0], image.shape)


@pytest.mark.parametrize("dtype", [np.uint8, np.int16, np.float32])
def test_inputs_of_any_layout(rng, dtype):
    image = rng.integers(0, 200, (7, 9)).astype(dtype)
    for name, array in layouts(image):
        if name == "foreign bytes" and array.dtype == np.dtype(dtype).newbyteorder() and array.itemsize > 1:
            with pytest.raises(TypeError):
                dax.median3x3(array)
            continue
        expected = dax.median3x3(np.array(array, dtype))
        assert np.array_equal(dax.median3x3(array), expected), name


def test_outputs_are_written_where_they_lie_or_refused(rng):
    image = rng.integers(0, 255, (6, 8), dtype=np.uint8)
    expected = dax.median3x3(image)
    canvas = np.full((10, 12), 77, np.uint8)
    assert dax.median3x3(image, out=canvas[2:8, 3:11]) is not None
    assert np.array_equal(canvas[2:8, 3:11], expected)
    canvas[2:8, 3:11] = 77
    assert (canvas == 77).all()
    read_only = np.empty_like(image)
    read_only.flags.writeable = False
    for out in (canvas[2:8, 3:11][:, ::-1], canvas[2:8][::-1, 3:11], np.empty((8, 6), np.uint8).T, read_only):
        with pytest.raises(ValueError):
            dax.median3x3(image, out=out)
    with pytest.raises(ValueError, match="overlap"):
        dax.median3x3(canvas[:6, :8], out=canvas[1:7, 1:9])
    with pytest.raises(ValueError, match="shape"):
        dax.median3x3(image, out=np.empty((6, 9), np.uint8))
    with pytest.raises(TypeError):
        dax.median3x3(image, out=np.empty((6, 8), np.uint16))
    with pytest.raises(TypeError):
        dax.median3x3(image, out=[[0] * 8] * 6)
    assert (canvas == 77).all()


def test_outputs_beside_their_input(rng):
    """In one canvas: side by side they share no pixel, though their rows alternate."""
    canvas = rng.integers(0, 255, (9, 40), dtype=np.uint8)
    left, right = canvas[:, :20], canvas[:, 20:]
    expected = dax.median3x3(left)
    assert dax.median3x3(left, out=right) is right and np.array_equal(right, expected)
    for columns in (slice(19, 39), slice(1, 21)):
        with pytest.raises(ValueError, match="overlap"):
            dax.median3x3(left, out=canvas[:, columns])


def test_failures_go_between_processes():
    for call in (lambda: dax.box_sum(np.ones((4, 9), np.float32), 2), lambda: dax.read_range("nowhere.range")):
        with pytest.raises(dax.Error) as failure:
            call()
        twin = pickle.loads(pickle.dumps(failure.value))
        assert str(twin) == str(failure.value) and vars(twin) == vars(failure.value)


def test_failures_name_function_clause_and_code():
    with pytest.raises(dax.Error) as failure:
        dax.box_sum(np.ones((4, 9), np.float32), 2)
    assert failure.value.function == "DAXI_FilterBox_32f_C1R"
    assert failure.value.status == 0x10000019
    assert "radius < 1, or 2 * radius >= min(width, height)" in str(failure.value)
    with pytest.raises(dax.Error, match="width < 1 or height < 1"):
        dax.box_sum(np.ones((0, 9), np.float32), 1)
    with pytest.raises(ValueError, match="two dimensions"):
        dax.median3x3(np.ones(4))
    with pytest.raises(TypeError, match="complex64"):
        dax.median3x3(np.ones((4, 4), np.complex64))
    with pytest.raises(ValueError, match="grey first"):
        dax.otsu(np.zeros((4, 4, 3), np.uint8))


def test_results_outlive_what_they_came_from(rng):
    labelling = dax.label(rng.integers(0, 2, (50, 50), dtype=np.uint8))
    runs, count = labelling.runs.copy(), len(labelling)
    gc.collect()
    scratch = [np.ones(100000, np.uint8) for _ in range(50)]
    assert np.array_equal(labelling.runs, runs) and len(labelling) == count and len(scratch) == 50
    trace, kept = weakref.ref(labelling), labelling.runs
    del labelling
    gc.collect()
    assert trace() is None
    scratch = [np.ones(n, np.uint8) for n in range(16, 60000, 16)]
    assert np.array_equal(kept, runs)


def test_interpreter_runs_on_during_a_call(rng):
    labelling = dax.label(rng.integers(0, 2, (1500, 1500), dtype=np.uint8))
    steps, busy = 0, threading.Event()

    def work():
        busy.set()
        dax.select_blobs(labelling)

    thread = threading.Thread(target=work)
    thread.start()
    busy.wait()
    start = time.monotonic()
    while thread.is_alive():
        steps += 1
    duration = time.monotonic() - start
    assert steps > 1000 * duration and duration > 0.01


def test_pool_gives_the_same(rng, pool):
    image = rng.integers(0, 255, (301, 217), dtype=np.uint8)
    if pool is None:
        pytest.skip("built without the library of pools")
    assert pool.threads == 2
    assert np.array_equal(dax.median3x3(image, pool=pool), dax.median3x3(image))
    labelling = dax.label(dax.otsu(image))
    alone, together = dax.select_blobs(labelling, area=(3, 99)), dax.select_blobs(labelling, area=(3, 99), pool=pool)
    for name in vars(alone):
        assert np.array_equal(getattr(alone, name), getattr(together, name)), name
    pool.close()
    pool.close()
    with pytest.raises(ValueError, match="closed"):
        dax.median3x3(image, pool=pool)
    with pytest.raises(ValueError):
        dax.Pool(-1)


def test_pool_closed_under_a_call_ends_after_it(pool, monkeypatch):
    if pool is None:
        pytest.skip("built without the library of pools")
    from dax import pool as module

    host, ended = module.host, []

    def end(handle):
        ended.append(handle)
        host.DAXHOST_DestroyPool(handle)

    functions = {"DAXHOST_CreatePool": host.DAXHOST_CreatePool, "DAXHOST_DestroyPool": end}
    functions["DAX_THREADPOOL_GetThreadsCnt"] = host.DAX_THREADPOOL_GetThreadsCnt
    monkeypatch.setattr(module, "host", types.SimpleNamespace(**functions))
    short = dax.Pool(2)
    call = module.handle_of(short)  # as a call holds it
    short.close()
    assert not ended
    del call
    assert len(ended) == 1
