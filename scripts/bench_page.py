"""What scripts/bench --page writes beside the tables: the machine and the versions, the plots."""
import platform
import re
import subprocess
from fractions import Fraction

PEER_PACKAGES = {"OpenCV": "libopencv-dev", "nanoflann": "libnanoflann-dev", "PCL": "libpcl-dev",
                 "Ceres": "libceres-dev"}
MARKS = ["o", "s", "^", "v", "D", "x", "+", "*"]


def first_line(*command):
    try:
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()[0]
    except (OSError, subprocess.CalledProcessError, IndexError):
        return None


def processor():
    try:
        with open("/proc/cpuinfo") as file:
            name = re.search(r"^model name\s*: (.*)$", file.read(), re.M)
    except OSError:
        name = None
    return name[1] if name else platform.machine()


def revision():
    """The commit, and whether anything but the pages that are being written differs from it."""
    commit = first_line("git", "describe", "--always")
    changed = first_line("git", "status", "--porcelain", "--", ":/", ":(top,exclude)docs")
    return f"{commit}, with changes" if changed else commit


def machine(cache):
    """Rows of (what, value); `cache`: the configuration of the native build."""
    settings = dict(re.findall(r"^(\w+):\w+=(.*)$", cache.read_text(), re.M))
    yield "DAX", f"{settings['CMAKE_PROJECT_VERSION']}, {revision()}"
    yield "processor", processor()
    yield "system", first_line("sh", "-c", '. /etc/os-release && echo "$PRETTY_NAME"')
    options = f"{settings.get('CMAKE_BUILD_TYPE') or 'Release'}, -march={settings['DAX_X86_ARCH']}" \
        if platform.machine() == "x86_64" else settings.get("CMAKE_BUILD_TYPE") or "Release"
    yield "compiler", f"{first_line(settings['CMAKE_CXX_COMPILER'], '--version')}; {options}"
    if platform.machine() != "aarch64":
        yield "cross compiler", first_line("aarch64-linux-gnu-g++", "--version")
    yield "emulator", first_line("qemu-aarch64", "--version")
    for name, package in PEER_PACKAGES.items():
        yield name, first_line("dpkg-query", "-W", "-f", "${Version}\n", package)


def machine_table(cache):
    rows = [f"| {what} | {value or '–'} |\n" for what, value in machine(cache)]
    return "| | |\n| --- | --- |\n" + "".join(rows)


def pyplot():
    import matplotlib
    matplotlib.use("agg")
    matplotlib.rcParams.update({"font.size": 8, "axes.grid": True, "grid.alpha": 0.3, "lines.linewidth": 1.1,
                                "lines.markersize": 4})
    import matplotlib.pyplot
    return matplotlib.pyplot


def finish(figure, panel, path):
    from matplotlib import ticker
    panel.minorticks_off()
    few = max(panel.get_ylim()) < 100 * min(panel.get_ylim())
    panel.yaxis.set_major_locator(ticker.LogLocator(subs=(1, 2, 5) if few else (1,)))
    panel.yaxis.set_major_formatter(ticker.FormatStrFormatter("%g"))
    panel.legend(loc="center left", bbox_to_anchor=(1, 0.5), frameon=False)
    figure.tight_layout()
    figure.savefig(path, dpi=200, metadata={"Software": None})
    pyplot().close(figure)


def plot(path, family, peer, amounts, costs):
    """costs: {operation: (own, peer's)}, each a list of millions of instructions, None where not counted."""
    figure, panel = pyplot().subplots(figsize=(7.5, 4.2))
    for index, (operation, both) in enumerate(costs.items()):
        for values, style, label in zip(both, ("-", "--"), (operation, None)):
            points = [(amount, value) for amount, value in zip(amounts, values) if value]
            if points:
                panel.plot(*zip(*points), style, color=f"C{index}", marker=MARKS[index % len(MARKS)], label=label)
    panel.set(xscale="log", yscale="log", xlabel="data, as a multiple of the table's",
              ylabel="millions of AArch64 instructions",
              title=f"{family.replace('_', ' ')}: DAX solid" + (f", {peer} dashed" if peer else ""))
    panel.set_xticks(amounts, [str(Fraction(amount)) for amount in amounts])
    finish(figure, panel, path)


def cells(line):
    return [cell.strip() for cell in line.strip().strip("|").split("|")]


def numbers(texts):
    """None for a dash."""
    try:
        return [None if text == "–" else float(text) for text in texts]
    except ValueError:
        return None


def plot_growth(path, table):
    """Draws the columns of the finest unit of time against the first column; False where that is no size."""
    head, _, *rows = map(cells, table.strip().splitlines())
    columns = dict(zip(head, map(numbers, zip(*rows))))
    sizes = columns[head[0]]
    unit = next((unit for unit in ("ns", "us", "ms") if any(re.search(rf"\b{unit}\b", name) for name in head)), None)
    if not sizes or not unit or len(sizes) < 3:
        return False
    figure, panel = pyplot().subplots(figsize=(7.5, 3.4))
    for index, name in enumerate(name for name in head[1:] if re.search(rf"\b{unit}\b", name)):
        points = [(size, value) for size, value in zip(sizes, columns[name]) if value is not None]
        panel.plot(*zip(*points), marker=MARKS[index % len(MARKS)], label=name.removesuffix(f" {unit}"))
    panel.set(xscale="log", yscale="log", xlabel=head[0], ylabel=unit)
    finish(figure, panel, path)
    return True


def ratios(document):
    """(heading of the family, ratios of instructions, ratios of times) for the tables of the page that have peers."""
    for section in re.split(r"^## ", document, flags=re.M)[1:]:
        both = ([], [])
        for table in re.findall(r"^\| Operation.*\n(?:\|.*\n)+", section, re.M):
            head, _, *rows = map(cells, table.strip().splitlines())
            places = [i for i, name in enumerate(head) if name == "ratio"][:2]
            for row in rows:
                for values, place in zip(both, places):
                    values += [value for value in numbers([row[place]]) or [] if value]
        if any(both):
            yield section.partition("\n")[0], *both


def plot_summary(path, document):
    """The ratios of all operations to their peers', a row for each family: below 1 is faster than the peer."""
    rows = list(ratios(document))
    figure, panel = pyplot().subplots(figsize=(7.5, 0.32 * len(rows) + 1.2))
    for y, (_, instructions, times) in enumerate(reversed(rows)):
        panel.plot(instructions, [y + 0.14] * len(instructions), "o", color="#1f618d",
                   label="instructions, AArch64" if y == 0 else None)
        panel.plot(times, [y - 0.14] * len(times), "D", color="#a04000", label="time, x86-64" if y == 0 else None)
    panel.axvline(1, color="#333333", linewidth=1)
    panel.set(xscale="log", xlabel="DAX / peer: left of the line is less", title="Every operation that has a peer")
    panel.set_yticks(range(len(rows)), [name for name, *_ in reversed(rows)])
    from matplotlib import ticker
    panel.xaxis.set_major_locator(ticker.LogLocator(subs=(1, 2, 5)))
    panel.xaxis.set_major_formatter(ticker.FormatStrFormatter("%g"))
    panel.xaxis.set_minor_formatter(ticker.NullFormatter())
    panel.legend(loc="upper center", bbox_to_anchor=(0.4, -0.16 if len(rows) > 12 else -0.25), ncols=2, frameon=False)
    figure.tight_layout()
    figure.savefig(path, dpi=200, metadata={"Software": None})
    pyplot().close(figure)
