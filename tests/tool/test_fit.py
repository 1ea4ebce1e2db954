"""Curve fits: parameters and standard errors against their definition, plots, and what is refused."""

import math
import random
import re

import pytest


def write(path, x, y, title="x,y\n"):
    path.write_text(title + "".join(f"{a!r},{b!r}\n" for a, b in zip(x, y)))


def noise(count, size, seed=1):
    source = random.Random(seed)
    return [source.gauss(0, size) for _ in range(count)]


def spread(low, high, count):
    return [low + (high - low) * i / (count - 1) for i in range(count)]


FUNCTIONS = {
    "line": lambda p, x: p[0] + p[1] * x,
    "polynomial:3": lambda p, x: sum(c * x**k for k, c in enumerate(p)),
    "exponential": lambda p, x: p[0] * math.exp(p[1] * x) + p[2],
    "gaussian": lambda p, x: p[0] * math.exp(-((x - p[1]) ** 2) / (2 * p[2] ** 2)) + p[3],
    "sine": lambda p, x: p[0] * math.sin(2 * math.pi * p[1] * x + p[2]) + p[3],
}

# Model, truth, range of x, relative size of the noise: everyday and awkward units.
CASES = [
    ("line", [3, -0.25], (0, 40), 1e-2),
    ("line", [-7e9, 2e-6], (1.7e15, 1.7e15 + 1e4), 0),
    ("polynomial:3", [1, -2, 0.5, 0.125], (-3, 5), 1e-3),
    ("polynomial:3", [-999000, 2.999e3, -3.0, 1e-3], (990, 1010), 0),
    ("exponential", [5, -0.4, 1], (0, 12), 1e-3),
    ("exponential", [2e-3, 3.5, -7], (0, 2), 1e-3),
    ("exponential", [-40, -1e-3, 90], (0, 4000), 1e-3),
    ("gaussian", [100, 632.8, 1.5, 20], (620, 650), 1e-3),
    ("gaussian", [-4e-6, -3, 0.2, 1e-5], (-8, 5), 1e-3),
    ("sine", [2, 0.75, 1.2, 10], (0, 9), 1e-2),
    ("sine", [1e-3, 50, -2.5, 0], (100, 100.5), 1e-2),
]


@pytest.mark.parametrize("model, truth, span, level", CASES)
def test_functions(dax, tmp_path, model, truth, span, level):
    """Found from the points alone; within five standard errors of the truth, or as exact as the numbers are."""
    x = spread(*span, 200)
    y = [FUNCTIONS[model](truth, a) for a in x]
    size = max(y) - min(y)
    write(tmp_path / "in.csv", x, [b + e for b, e in zip(y, noise(200, level * size))])
    fit = dax("fit", "in.csv", "--model", model, "--json").json
    assert fit["model"] == model and fit["points"] == 200 and fit["degrees_of_freedom"] == 200 - len(truth)
    found = [p["value"] for p in fit["parameters"]]
    for p, expected in zip(fit["parameters"], truth):
        exact = 1e-6 * abs(expected) + (1e-6 if level == 0 else 0)
        assert abs(p["value"] - expected) < 5 * p["standard_error"] + exact, p
    if level:
        assert fit["deviation"] == pytest.approx(level * size, rel=0.2)
        assert fit["r_squared"] > 0.9
        rms = math.sqrt(sum(r * r for r in fit["residuals"]) / fit["degrees_of_freedom"])
        assert fit["deviation"] == pytest.approx(rms, rel=1e-9)
    # Residuals are data less curve; a start elsewhere ends there too.
    assert fit["residuals"][7] == pytest.approx(y[7] + noise(200, level * size)[7] - FUNCTIONS[model](found, x[7]),
                                                abs=1e-5 * size + 1e-15 * abs(truth[0]))
    start = ",".join(str(p * (1.001 if model in ("gaussian", "sine") else 1.02)) for p in truth)
    again = dax("fit", "in.csv", "--model", model, "--json", f"--start={start}").json
    assert again["deviation"] == pytest.approx(fit["deviation"], rel=1e-6, abs=1e-7 * size)


@pytest.mark.parametrize("unit", [1, 1e200, 1e-200])
def test_standard_errors_of_a_line(dax, tmp_path, unit):
    """By the formulae of the textbook, in units whose squares are beyond the range of numbers, too."""
    x, y = [1.0, 2.0, 4.0, 7.0, 11.0], [2.0, 4.5, 7.0, 15.5, 21.0]
    write(tmp_path / "in.csv", [unit * a for a in x], y)
    fit = dax("fit", "in.csv", "--model", "line", "--json").json
    mx, my = sum(x) / 5, sum(y) / 5
    sxx = sum((a - mx) ** 2 for a in x)
    slope = sum((a - mx) * (b - my) for a, b in zip(x, y)) / sxx
    s = math.sqrt(sum((b - my - slope * (a - mx)) ** 2 for a, b in zip(x, y)) / 3)
    expected = [(my - slope * mx, s * math.sqrt(1 / 5 + mx * mx / sxx)), (slope / unit, s / math.sqrt(sxx) / unit)]
    assert [(p["value"], p["standard_error"]) for p in fit["parameters"]] == [
        pytest.approx(e, rel=1e-6, abs=0) for e in expected]
    assert fit["deviation"] == pytest.approx(s)
    assert fit["r_squared"] == pytest.approx(1 - 3 * s * s / sum((b - my) ** 2 for b in y))


@pytest.mark.parametrize("turn, level", [(2 * math.pi, 0.02), (0.5, 0.001)])
def test_circle(dax, tmp_path, turn, level):
    angles, errors = spread(0, turn, 80), noise(80, level)
    x = [1000 + (25 + e) * math.cos(a) for a, e in zip(angles, errors)]
    y = [-3 + (25 + e) * math.sin(a) for a, e in zip(angles, errors)]
    write(tmp_path / "in.csv", x, y)
    fit = dax("fit", "in.csv", "--model", "circle", "--json").json
    for p, expected in zip(fit["parameters"], [1000, -3, 25]):
        assert abs(p["value"] - expected) < 5 * p["standard_error"] < 0.2
    assert fit["deviation"] == pytest.approx(level, rel=0.3) and fit["r_squared"] is None
    cx, cy, radius = (p["value"] for p in fit["parameters"])
    assert fit["residuals"] == [pytest.approx(math.hypot(a - cx, b - cy) - radius, abs=1e-9) for a, b in zip(x, y)]


FORMATS = {
    "titles": "time,signal\n0,1\n1,3\n2,5\n3,7\n",
    "blanks": "  0   1\n1 3\n\n# a remark\n2 5\n3 7",
    "tabs": "0\t1\r\n1\t3\r\n2\t5\r\n3\t7\r\n",
    "semicolons": "\ufeff\"a\";\"b\"\n\"0\";\"1\"\n1; 3\n2;5;9\n3;7\n",
    "columns": "n,y,x\nA,1,0\nB,3,1\nC,5,2\nD,7,3\n",
}


@pytest.mark.parametrize("name", FORMATS)
def test_formats(dax, tmp_path, name):
    (tmp_path / "in.csv").write_bytes(FORMATS[name].encode())
    options = ["--columns", "3,2"] if name == "columns" else []
    fit = dax("fit", "in.csv", "--model", "line", "--json", *options).json
    assert fit["points"] == 4
    assert [p["value"] for p in fit["parameters"]] == [pytest.approx(1), pytest.approx(2)]


def test_table(dax, tmp_path):
    write(tmp_path / "in.csv", [0, 1, 2, 3, 4], [1.1, 2.9, 5.0, 7.1, 8.9])
    out = dax("fit", "in.csv", "--model", "line").out
    assert out.startswith("line: y = intercept + slope x\n\n")
    row = r"{} +(\S+) +(\S+)\n"
    intercept, _, slope, error = re.search(row.format("intercept") + row.format("slope"), out).groups()
    assert (float(intercept), float(slope), float(error)) == (pytest.approx(1.04), pytest.approx(1.98),
                                                              pytest.approx(0.0346, rel=0.01))
    assert "5 points, 3 degrees of freedom" in out and "R^2 0.999083" in out


@pytest.mark.parametrize("model, count", [("gaussian", 60), ("circle", 60), ("line", 12000)])
def test_plot(dax, tmp_path, model, count):
    """Points, curve and residuals lie where the numbers say."""
    angles = spread(0, 6, count)
    if model == "circle":
        x, y = [5 * math.cos(a) for a in angles], [5 * math.sin(a) for a in angles]
    else:
        x, y = angles, [math.exp(-((a - 3) ** 2)) if model == "gaussian" else 2 * a for a in angles]
    write(tmp_path / "a<b.csv", x, y)
    dax("fit", "a<b.csv", "--model", model, "--plot", "out.svg")
    svg = (tmp_path / "out.svg").read_text()
    assert "a&lt;b.csv" in svg and "nan" not in svg and "inf" not in svg
    data, residuals = (re.findall(r"cx='(\S+)' cy='(\S+)'", part) for part in
                       re.search(r"class='data'>(.*?)</g>.*class='residuals'>(.*?)</g>", svg, re.S).groups())
    drawn = count if count <= 5000 else count // 3
    assert len(data) == len(residuals) == drawn
    curve = [tuple(map(float, p.split(","))) for p in re.search(r"points='(.*?) '", svg).group(1).split()]
    for px, py in data[:: drawn // 20]:
        nearest = min(math.hypot(float(px) - cx, float(py) - cy) for cx, cy in curve)
        assert nearest < 3
    zero = float(re.search(r"class='zero'.* y1='(\S+)'", svg).group(1))
    assert all(abs(float(cy) - zero) <= 80 for _, cy in residuals)


BROKEN = {
    "": (5, "0 points are too few: line and its standard errors need 3"),
    "1,2\n2,3\n": (5, "2 points are too few"),
    "x,y\n": (5, "0 points are too few"),
    "1,2\n2,nan\n3,4\n": (3, 'line 2: "nan" is not a finite number'),
    "1,2\n2,inf\n3,4\n": (3, 'line 2: "inf" is not a finite number'),
    "1,2\n2,1e999\n3,4\n": (3, 'line 2: "1e999" is not a finite number'),
    "x,y\n1,2\n2\n3,4\n": (3, "line 3: no column 2"),
    "1,2\n2,\n3,4\n": (3, 'line 2: "" is not a finite number'),
    "x,y\nu,v\n1,2\n": (3, 'line 2: "u" is not a finite number'),
    "\x00\x1b[31m\n": (3, "is not a finite number"),
    "1,2\n1,3\n1,4\n": (5, "all points have the same x"),
    "0,0\n1e-300,1e300\n2e-300,2e300\n3e-300,4e300\n": (5, "beyond the range of numbers"),
}


@pytest.mark.parametrize("content", BROKEN)
def test_broken_files(dax, tmp_path, content):
    (tmp_path / "in.csv").write_bytes(content.encode())
    status, message = BROKEN[content]
    run = dax("fit", "in.csv", "--model", "line", "--plot", "out.svg", status=status)
    assert run.err.startswith("dax: in.csv: ") and message in run.err and run.err.count("\n") == 1 and run.out == ""
    assert not (tmp_path / "out.svg").exists()


@pytest.mark.parametrize("model, x, y", [
    ("circle", range(9), range(9)), ("circle", [3] * 9, [4] * 9), ("gaussian", range(9), [2] * 9),
    ("exponential", range(9), [2] * 9), ("sine", range(9), [0] * 9), ("polynomial:4", [1, 2, 3] * 3, range(9))])
def test_points_that_tell_nothing(dax, tmp_path, model, x, y):
    write(tmp_path / "in.csv", x, y)
    run = dax("fit", "in.csv", "--model", model, status=5)
    assert run.err.startswith("dax: in.csv: ") and run.out == ""


def test_a_start_that_leads_nowhere(dax, tmp_path):
    write(tmp_path / "in.csv", [1, 2, 3, 4], [2, 4, 6, 9])
    assert dax("fit", "in.csv", "--model", "gaussian", "--start=1,0,0,0", status=5).err.startswith("dax: in.csv: ")
