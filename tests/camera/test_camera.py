"""The live inspection example: frames in, statistics and a report out, and a camera that comes and goes."""
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


def run(*arguments, **options):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=20, **options)


class Watched:
    """A running program whose lines are waited for."""

    def __init__(self, *command):
        self.lines = []
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        os.set_blocking(self.process.stdout.fileno(), False)
        self.rest = b""

    def wait_for(self, pattern, seconds=15):
        """The first line from now on that matches."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            *lines, self.rest = (self.rest + (self.process.stdout.read() or b"")).split(b"\n")
            self.lines += (line.decode() for line in lines)
            while self.lines:
                if match := re.search(pattern, self.lines.pop(0)):
                    return match
            time.sleep(0.02)
        raise AssertionError(f"no line {pattern!r}")

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


def simulator(serial):
    camera = Watched(SIMULATOR, serial)
    camera.wait_for("running")
    return camera


def check_statistics(report):
    for name in ("inspection_ms", "latency_ms"):
        values = report[name]
        assert 0 < values["p50"] <= values["p95"] <= values["p99"] <= values["max"] < 5000


def test_camera_in_the_program(tmp_path):
    path = tmp_path / "report.json"
    result = run("--fake", "--frames", "30", "--fps", "100", "--queue", "64", "--report", str(path), "--threads", "2")
    assert result.returncode == 0, result.stderr
    assert "camera: Fake_1" in result.stdout and "p99" in result.stdout
    report = json.loads(path.read_text())
    assert report["frames"] == 30 and report["reconnections"] == report["dropped"] == report["damaged"] == 0
    assert report["camera"] == "Fake_1"
    assert 20 < report["frames_per_second"] < 200
    assert list(tmp_path.iterdir()) == [path]
    check_statistics(report)


def test_camera_that_dies_and_returns(tmp_path, loopback):
    path = tmp_path / "report.json"
    name = f"Aravis-Fake-{loopback}"
    with simulator(loopback) as camera, Watched(PROGRAM, "--camera", name, "--silence", "0.5", "--fps", "50",
                                                "--report", str(path)) as program:
        before = int(program.wait_for(r"^ *(\d+) frames .* 4 objects")[1])
        camera.process.kill()
        camera.process.wait()
        program.wait_for("camera lost")
        with simulator(loopback):
            program.wait_for(f"camera: {name}")
            program.wait_for(r"4 objects")
            program.process.send_signal(signal.SIGINT)
            assert program.process.wait(10) == 0
    report = json.loads(path.read_text())
    assert report["camera"] == name and report["reconnections"] >= 1
    assert report["frames"] > before > 0
    check_statistics(report)
    # The n-th bar is 20 n x 10 pixels, its first pixel at (10, 20 n).
    objects = report["last_frame"]["objects"]
    assert [o["area"] for o in objects] == [200 * n for n in (4, 3, 2, 1)]
    assert [o["rect"] for o in objects] == [[10, 20 * n, 20 * n, 10] for n in (4, 3, 2, 1)]
    assert objects[0]["centroid"] == [49.5, 84.5] and objects[0]["long_side"] == 79


@pytest.mark.parametrize("stop", [signal.SIGINT, signal.SIGTERM])
def test_last_report_when_stopped(tmp_path, stop):
    path = tmp_path / "report.json"
    with Watched(PROGRAM, "--fake", "--report", str(path)) as program:
        program.wait_for("camera: Fake_1")
        time.sleep(0.3)
        program.process.send_signal(stop)
        assert program.process.wait(10) == 0
    report = json.loads(path.read_text())
    assert report["frames"] > 0 and report["last_frame"]["width"] == 512


def test_no_frame_is_lost_in_silence(tmp_path, loopback):
    """Frames that the camera sends while the program sleeps are counted: inspected, damaged or dropped."""
    path = tmp_path / "report.json"
    with simulator(loopback), Watched(PROGRAM, "--camera", f"Aravis-Fake-{loopback}", "--fps", "50", "--queue", "2",
                                      "--report", str(path)) as program:
        program.wait_for("4 objects")
        program.process.send_signal(signal.SIGSTOP)
        time.sleep(1)
        program.process.send_signal(signal.SIGCONT)
        before = int(program.wait_for(r"^ *(\d+) frames")[1])
        while int(program.wait_for(r"^ *(\d+) frames")[1]) < before + 20:
            pass
        program.process.send_signal(signal.SIGTERM)
        assert program.process.wait(10) == 0
    report = json.loads(path.read_text())
    assert report["dropped"] > 10 and report["reconnections"] == 0
    seen = report["frames"] + report["damaged"] + report["dropped"]
    # Its numbers are of 16 bits, without a 0.
    assert seen == (report["last_frame"]["id"] - report["first_frame"]) % 65535 + 1


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
