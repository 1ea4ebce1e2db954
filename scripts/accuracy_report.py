"""What the scripts that measure errors share: statistics, tables of docs/accuracy.md, plots."""
import math
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
DOCUMENT = ROOT / "docs/accuracy.md"
PLOTS = ROOT / "docs/accuracy"


def lines_of(program, *arguments, under=()):
    """Builds a program of the benchmarks and runs it with the arguments; `under` are the words of a command in
    front."""
    for command in (["cmake", "--preset", "bench"],
                    ["cmake", "--build", "--preset", "bench", "-j2", "--target", program]):
        result = subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if result.returncode:
            sys.exit(f"{result.stdout}accuracy: {' '.join(command)} failed")
    binary = ROOT / "build/bench/bench" / program
    return subprocess.run([*under, binary, *arguments], check=True, stdout=subprocess.PIPE,
                          text=True).stdout.splitlines()


def update(tables, check, script):
    """Writes the tables into the page; with `check` fails where they are not there already."""
    before = DOCUMENT.read_text()
    after = with_tables(before, tables)
    if check:
        sys.exit(f"accuracy: docs/accuracy.md is not what is measured: run {script}" if after != before else 0)
    DOCUMENT.write_text(after)
    PLOTS.mkdir(exist_ok=True)


def mean(values):
    return math.fsum(values) / len(values)


def rms(values):
    return math.sqrt(mean([v * v for v in values]))


def worst(values):
    return max(values, key=abs)


def table(header, rows):
    lines = [header, ["---", *["---:"] * (len(header) - 1)], *rows]
    return "".join("| " + " | ".join(line) + " |\n" for line in lines)


def signed(value, decimals):
    text = f"{value:+.{decimals}f}"
    return text[1:] if float(text) == 0 else text.replace("-", "−")


def with_tables(text, tables):
    for name, content in tables.items():
        begin, end = f"<!-- begin {name} -->\n", f"<!-- end {name} -->"
        head, rest = text.split(begin)
        text = head + begin + content + end + rest.split(end, 1)[1]
    return text


def pyplot():
    try:
        import matplotlib
    except ImportError:
        sys.exit("accuracy: the plots need matplotlib: scripts/bootstrap --docs")
    matplotlib.use("svg")
    # Identifiers without chance, text as text.
    matplotlib.rcParams.update({"svg.hashsalt": "dax", "svg.fonttype": "none", "font.size": 8, "axes.grid": True,
                                "grid.alpha": 0.3, "lines.linewidth": 1.1})
    import matplotlib.pyplot
    return matplotlib.pyplot


def save(figure, name):
    figure.tight_layout()
    figure.savefig(PLOTS / name, metadata={"Date": None, "Creator": None}, facecolor="white")
