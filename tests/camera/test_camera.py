"""The live inspection example: frames in, statistics and a report out, and a camera that comes and goes."""
import contextlib
import fcntl
import json
import os
import pathlib
import re
import signal
import subprocess
import time

import pytest

PROGRAM = os.environ["DAX_CAMERA"]
SIMULATOR = os.environ["DAX_CAMERA_SIMULATOR"]
# Beyond what the busiest machine takes: it ends a test that would hang.
LIMIT = 100


def run(*arguments, **options):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=LIMIT, **options)


class Watched:
    """A running program whose lines are waited for."""

    def __init__(self, *command):
        self.lines, self.seen = [], []
        self.started = time.monotonic()
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        os.set_blocking(self.process.stdout.fileno(), False)
        self.rest = b""

    def wait_for(self, pattern):
        """The first line from now on that matches."""
        end = time.monotonic() + LIMIT
        while True:
            # In this order, so that the last lines of a program that has ended are read too.
            last = self.process.poll() is not None or time.monotonic() > end
            *lines, self.rest = (self.rest + (self.process.stdout.read() or b"")).split(b"\n")
            self.lines += (line.decode() for line in lines)
            while self.lines:
                self.seen.append(self.lines.pop(0))
                if match := re.search(pattern, self.seen[-1]):
                    return match
            if last:
                raise AssertionError(f"no line {pattern!r}, status {self.process.poll()}:\n" + "\n".join(self.seen))
            time.sleep(0.02)

    def wait_for_frames(self, least):
        """The frames inspected so far, as soon as they are at least so many."""
        while (frames := int(self.wait_for(r"^ *(\d+) frames")[1])) < least:
            pass
        return frames

    def stop(self, number):
        """Ends the program with a signal; the seconds that it ran."""
        self.process.send_signal(number)
        assert self.process.wait(LIMIT) == 0
        return time.monotonic() - self.started

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()


@pytest.fixture
def loopback():
    """Cameras have one port, so that one test on this machine has it at a time."""
    with open("/tmp/dax-camera-test.lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        yield f"DAX{os.getpid()}"


@contextlib.contextmanager
def simulator(serial):
    with Watched(SIMULATOR, serial) as camera:
        camera.wait_for("running")
        yield camera


@contextlib.contextmanager
def watching(serial, *options):
    """The program with the simulator's camera. Cameras have one second to answer; a busy machine may miss it."""
    for attempt in range(5):
        with Watched(PROGRAM, "--camera", f"Aravis-Fake-{serial}", *options) as program:
            if "camera: " in program.wait_for("^camera: |No camera answers|Cameras that answer")[0] or attempt == 4:
                yield program
                return


def check_statistics(report, seconds):
    for name in ("inspection_ms", "latency_ms"):
        values = report[name]
        assert 0 < values["p50"] <= values["p95"] <= values["p99"] <= values["max"] < 1000 * seconds


def test_camera_in_the_program(tmp_path):
    path = tmp_path / "report.json"
    start = time.monotonic()
    result = run("--fake", "--frames", "30", "--fps", "50", "--queue", "64", "--report", str(path), "--threads", "2")
    seconds = time.monotonic() - start
    assert result.returncode == 0, result.stderr
    assert "camera: Fake_1" in result.stdout and "p99" in result.stdout
    report = json.loads(path.read_text())
    assert report["frames"] == 30 and report["reconnections"] == report["dropped"] == report["damaged"] == 0
    assert report["camera"] == "Fake_1"
    # However slow the machine is, the camera waits a fiftieth of a second between frames.
    assert 30 / seconds < report["frames_per_second"] < 30 / (28 / 50)
    assert list(tmp_path.iterdir()) == [path]
    check_statistics(report, seconds)


def test_camera_that_dies_and_returns(tmp_path, loopback):
    path = tmp_path / "report.json"
    name = f"Aravis-Fake-{loopback}"
    with simulator(loopback) as camera, watching(loopback, "--silence", "1", "--fps", "50",
                                                 "--report", str(path)) as program:
        program.wait_for_frames(1)
        camera.process.kill()
        camera.process.wait()
        program.wait_for("camera lost")
        with simulator(loopback):
            program.wait_for(f"camera: {name}")
            before = program.wait_for_frames(1)
            program.wait_for_frames(before + 20)
            seconds = program.stop(signal.SIGINT)
    report = json.loads(path.read_text())
    assert report["camera"] == name and report["reconnections"] >= 1
    assert report["frames"] >= before + 20
    check_statistics(report, seconds)
    # The n-th bar is 20 n x 10 pixels, its first pixel at (10, 20 n).
    objects = report["last_frame"]["objects"]
    assert [o["area"] for o in objects] == [200 * n for n in (4, 3, 2, 1)]
    assert [o["rect"] for o in objects] == [[10, 20 * n, 20 * n, 10] for n in (4, 3, 2, 1)]
    assert objects[0]["centroid"] == [49.5, 84.5] and objects[0]["long_side"] == 79


@pytest.mark.parametrize("stop", [signal.SIGINT, signal.SIGTERM])
def test_last_report_when_stopped(tmp_path, stop):
    path = tmp_path / "report.json"
    with Watched(PROGRAM, "--fake", "--report", str(path)) as program:
        program.wait_for_frames(1)
        program.stop(stop)
    report = json.loads(path.read_text())
    assert report["frames"] > 0 and report["last_frame"]["width"] == 512


def test_no_frame_is_lost_in_silence(tmp_path, loopback):
    """Frames that the camera sends while the program sleeps are counted: inspected, damaged or dropped."""
    path = tmp_path / "report.json"
    with simulator(loopback), watching(loopback, "--fps", "50", "--queue", "2", "--silence", "100",
                                       "--report", str(path)) as program:
        before = program.wait_for_frames(1)
        dropped = 0
        while dropped <= 10:
            program.process.send_signal(signal.SIGSTOP)
            time.sleep(0.5)
            program.process.send_signal(signal.SIGCONT)
            dropped = int(program.wait_for(r"dropped (\d+)")[1])
        program.wait_for_frames(before + 20)
        program.stop(signal.SIGTERM)
    report = json.loads(path.read_text())
    assert report["dropped"] > 10 and report["reconnections"] == 0
    seen = report["frames"] + report["damaged"] + report["dropped"]
    first, last = report["numbers"]
    # Of 16 bits, without a 0.
    assert seen == (last - first) % 65535 + 1


def test_no_such_camera(tmp_path, loopback):
    result = run("--camera", "Nobody-Knows-It", cwd=tmp_path)
    assert result.returncode == 3
    assert "cannot open the camera" in result.stderr or "no camera found" in result.stderr
    assert "No camera answers" in result.stderr or "Cameras that answer:\n" in result.stderr
    assert not list(tmp_path.iterdir())


def test_report_that_cannot_be_written():
    result = run("--fake", "--frames", "1", "--report", "/nowhere/report.json")
    assert result.returncode == 1 and "cannot write /nowhere/report.json" in result.stderr


@pytest.mark.parametrize("arguments", [["--frames", "0"], ["--fps", "nan"], ["--count", "20001"], ["--queue", "0"], ["--what"],
                                       ["parts.png"], ["--report"]])
def test_wrong_command_lines(arguments):
    result = run(*arguments)
    assert result.returncode == 2 and "usage:" in result.stderr


def test_help():
    result = run("--help")
    assert result.returncode == 0 and not result.stderr
    assert result.stdout.startswith("usage: inspect_camera") and "--queue N" in result.stdout
