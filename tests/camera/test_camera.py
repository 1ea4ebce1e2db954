"""The live inspection example: frames in, statistics and a report out, and a camera that comes and goes."""
import contextlib
import itertools
import json
import os
import re
import signal
import socket
import subprocess
import time

import pytest

PROGRAM = os.environ["DAX_CAMERA"]
NETWORK_CAMERA = os.environ["DAX_NETWORK_CAMERA"]
# Beyond what the busiest machine takes: it ends a test that would hang.
LIMIT = 100


def run(*arguments, **options):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=LIMIT, **options)


class Watched:
    """A running program whose lines are waited for."""

    def __init__(self, *command):
        self.lines, self.seen = [], []
        self.started = time.monotonic()
        # Whatever ends this test ends the program: a camera that is left would keep the port.
        self.process = subprocess.Popen(["setpriv", "--pdeathsig", "KILL", *command], stdout=subprocess.PIPE,
                                        stderr=subprocess.STDOUT)
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

    def wait_for_frames(self, number):
        """The frames inspected so far, as soon as they are at least so many."""
        while (frames := int(self.wait_for(r"^ *(\d+) frames")[1])) < number:
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


def wait_until(condition):
    end = time.monotonic() + LIMIT
    while not condition():
        assert time.monotonic() < end, condition
        time.sleep(0.05)


def answer():
    """What the camera on the loopback interface answers to the question who is there; nothing without one."""
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as asking, contextlib.suppress(OSError):
        asking.connect(("127.0.0.1", 3956))
        asking.settimeout(0.5)
        asking.send(bytes.fromhex("4201000200000001"))
        return asking.recv(1024)
    return b""


@pytest.fixture
def loopback():
    """The serial number of a camera. Cameras have one port: whoever holds this name, which like the port belongs to one
    network namespace and goes with its holder, has it alone."""
    if not NETWORK_CAMERA:
        pytest.skip("arv-fake-gv-camera-0.8 is not installed")

    def mine():
        with contextlib.suppress(OSError):
            lock.bind("\0dax-camera-test")
            return True

    with socket.socket(socket.AF_UNIX) as lock:
        wait_until(mine)
        assert not answer(), "a foreign camera has the port on the loopback interface"
        yield f"DAX{os.getpid()}"


@contextlib.contextmanager
def network_camera(serial):
    with Watched(NETWORK_CAMERA, "-i", "127.0.0.1", "-s", serial) as camera:
        wait_until(lambda: serial.encode() in answer())
        yield camera


@contextlib.contextmanager
def watching(serial, *options):
    """The program with the network camera. Cameras have one second to answer; a busy machine may miss it."""
    for attempt in range(5):
        with Watched(PROGRAM, "--camera", f"Aravis-Fake-{serial}", *options) as program:
            if "camera: " in program.wait_for("^camera: |No camera answers|Cameras that answer")[0] or attempt == 4:
                yield program
                return


def check_statistics(report, seconds):
    for name in ("inspection_ms", "latency_ms"):
        values = report[name]
        assert 0 < values["p50"] <= values["p95"] <= values["p99"] <= values["max"] < 1000 * seconds


def bands(number, level, size=512):
    """Area, rect and centroid of what is above a level in a frame of the simulated cameras, whose pixel (x, y) is
    (x + y + number) mod 255: diagonal bands, the largest first."""
    last, found = 2 * size - 2, []
    for bright, band in itertools.groupby(range(last + 1), lambda d: (d + number) % 255 > level):
        pixels = {d: min(d, last - d) + 1 for d in band}
        area = sum(pixels.values())
        if bright and area >= 20:
            centre = sum(d * n for d, n in pixels.items()) / area / 2
            low, high = max(0, min(pixels) - size + 1), min(size, max(pixels) + 1)
            found.append((area, [low, low, high - low, high - low], pytest.approx([centre, centre], abs=1e-3)))
    return sorted(found, key=lambda band: -band[0])


def check_objects(frame):
    """The objects of the last frame are the bands of its number, above a level halfway."""
    assert (frame["width"], frame["height"]) == (512, 512)
    objects = [(o["area"], o["rect"], o["centroid"]) for o in frame["objects"]]
    assert objects and any(objects == bands(frame["id"], level) for level in range(90, 165)), frame


def test_camera_in_the_program(tmp_path):
    path = tmp_path / "report.json"
    start = time.monotonic()
    result = run("--fake", "--frames", "50", "--fps", "100", "--queue", "256", "--report", str(path), "--threads", "2")
    seconds = time.monotonic() - start
    assert result.returncode == 0, result.stderr
    assert "camera: Fake_1" in result.stdout and "p99" in result.stdout
    report = json.loads(path.read_text())
    assert report["frames"] == 50 and report["reconnections"] == report["dropped"] == report["damaged"] == 0
    assert report["camera"] == "Fake_1"
    # However slow the machine is, the camera waits a hundredth of a second between frames.
    assert 50 / seconds < report["frames_per_second"] < 50 / (48 / 100)
    assert list(tmp_path.iterdir()) == [path]
    check_statistics(report, seconds)
    check_objects(report["last_frame"])


def test_camera_that_dies_and_returns(tmp_path, loopback):
    path = tmp_path / "report.json"
    name = f"Aravis-Fake-{loopback}"
    with network_camera(loopback) as camera, watching(loopback, "--silence", "0.5", "--fps", "50",
                                                      "--report", str(path)) as program:
        program.wait_for_frames(1)
        camera.process.kill()
        camera.process.wait()
        program.wait_for("camera lost")
        with network_camera(loopback):
            program.wait_for(f"camera: {name}")
            before = program.wait_for_frames(1)
            program.wait_for_frames(before + 20)
            seconds = program.stop(signal.SIGINT)
    report = json.loads(path.read_text())
    assert report["camera"] == name and report["reconnections"] >= 1
    assert report["frames"] >= before + 20
    check_statistics(report, seconds)
    check_objects(report["last_frame"])


@pytest.mark.parametrize("stop", [signal.SIGINT, signal.SIGTERM])
def test_last_report_when_stopped(tmp_path, stop):
    path = tmp_path / "report.json"
    with Watched(PROGRAM, "--fake", "--report", str(path)) as program:
        program.wait_for_frames(1)
        program.stop(stop)
    report = json.loads(path.read_text())
    assert report["frames"] > 0
    check_objects(report["last_frame"])


def test_stops_while_it_waits_for_a_camera(tmp_path, loopback):
    path = tmp_path / "report.json"
    with network_camera(loopback) as camera, watching(loopback, "--silence", "0.5", "--report", str(path)) as program:
        program.wait_for_frames(1)
        camera.process.kill()
        program.wait_for("camera lost")
        program.stop(signal.SIGTERM)
    report = json.loads(path.read_text())
    assert report["frames"] > 0
    check_objects(report["last_frame"])


def test_no_frame_is_lost_in_silence(tmp_path, loopback):
    """Frames that the camera sends while the program sleeps are counted: inspected, damaged or dropped."""
    # A camera takes back control after three seconds without a word: a machine that slow gives nothing to count.
    for attempt in range(5):
        report = sleepily(loopback, tmp_path / "report.json")
        if report["reconnections"] == 0:
            break
    assert report["dropped"] > 10 and report["reconnections"] == 0
    seen = report["frames"] + report["damaged"] + report["dropped"]
    first, last = report["numbers"]
    # Of 16 bits, without a 0.
    assert seen == (last - first) % 65535 + 1


def sleepily(serial, path):
    """The report of a program that is put to sleep until it has lost frames."""
    with network_camera(serial), watching(serial, "--fps", "100", "--queue", "2", "--silence", "100",
                                          "--report", str(path)) as program:
        before = program.wait_for_frames(1)
        dropped = 0
        while dropped <= 10:
            program.process.send_signal(signal.SIGSTOP)
            time.sleep(0.3)
            program.process.send_signal(signal.SIGCONT)
            dropped = int(program.wait_for(r"dropped (\d+)")[1])
        program.wait_for_frames(before + 20)
        program.stop(signal.SIGTERM)
    return json.loads(path.read_text())


def test_no_such_camera(tmp_path, loopback):
    result = run("--camera", "Nobody-Knows-It", cwd=tmp_path)
    assert result.returncode == 3
    assert "cannot open the camera" in result.stderr or "no camera found" in result.stderr
    assert "No camera answers" in result.stderr or "Cameras that answer:\n" in result.stderr
    assert not list(tmp_path.iterdir())


def test_report_that_cannot_be_written(tmp_path):
    taken = tmp_path / "report.json"
    taken.mkdir()
    for path in ("/nowhere/report.json", str(taken)):
        result = run("--fake", "--frames", "1", "--report", path)
        assert result.returncode == 1 and f"cannot write {path}" in result.stderr
    assert list(tmp_path.iterdir()) == [taken]


@pytest.mark.parametrize("arguments",
                         [["--frames", "0"], ["--fps", "nan"], ["--count", "20001"], ["--queue", "0"], ["--what"],
                                       ["parts.png"], ["--report"]])
def test_wrong_command_lines(arguments):
    result = run(*arguments)
    assert result.returncode == 2 and "usage:" in result.stderr


def test_help():
    result = run("--help")
    assert result.returncode == 0 and not result.stderr
    assert result.stdout.startswith("usage: inspect_camera") and "--queue N" in result.stdout
