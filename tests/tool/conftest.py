import json
import os
import re
import subprocess

import pytest

TOOL = os.environ["DAX_TOOL"]
# A sanitizer's verdict must not pass for a status of the program.
SANITIZED = {
    "SOURCE_DATE_EPOCH": "0",
    **os.environ,
    "ASAN_OPTIONS": "exitcode=99",
    "UBSAN_OPTIONS": "exitcode=99",
    "LSAN_OPTIONS": f"exitcode=99:print_suppressions=0:suppressions={os.path.dirname(__file__)}/leaks.supp",
}


class Run:
    """One run of the program. Whatever happens, it ends by itself and reports errors in lines of its own."""

    def __init__(self, folder, arguments):
        done = subprocess.run([TOOL, *map(str, arguments)], cwd=folder, capture_output=True, timeout=300,
                              env=SANITIZED)
        self.status = done.returncode
        self.all = done.stdout.decode()
        self.out = re.sub(r'\n *"command": .*', "", self.all)  # which names the threads, say
        self.err = done.stderr.decode()
        assert 0 <= self.status <= 8, f"crashed with {self.status}: {self.err}"

    @property
    def json(self):
        return json.loads(self.all)

    @property
    def blobs(self):
        return self.json["images"][0]["blobs"]


def pytest_configure(config):
    config.addinivalue_line("markers", "threads: the program runs on several threads; the thread sanitizer's share")


@pytest.fixture
def dax(tmp_path):
    """Runs the program in the test's folder."""

    def run(*arguments, status=0):
        result = Run(tmp_path, arguments)
        assert status is None or result.status == status, (arguments, result.status, result.err)
        return result

    return run


@pytest.fixture
def parts():
    """Four bright rectangles, by area: 12 x 10, 30 x 3, 4 x 20 and 5 x 5."""
    import pictures

    picture = pictures.blank(80, 60)
    for x, y, width, height in [(5, 5, 12, 10), (30, 6, 30, 3), (66, 20, 4, 20), (10, 40, 5, 5)]:
        pictures.draw(picture, x, y, width, height)
    return picture
