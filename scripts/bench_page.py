"""What scripts/bench puts into docs/performance.md beside its tables: the machine and the versions, and the plots."""
import platform
import re
import subprocess

PEER_PACKAGES = {"OpenCV": "libopencv-dev", "nanoflann": "libnanoflann-dev", "PCL": "libpcl-dev", "Ceres": "libceres-dev"}
OWN, PEER = "#1f618d", "#c0392b"
STYLES = ["-", "--", "-.", ":"]
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


def machine(cache):
    """Rows of (what, value); `cache`: the configuration of the native build."""
    settings = dict(re.findall(r"^(\w+):\w+=(.*)$", cache.read_text(), re.M))
    yield "DAX", f"{settings['CMAKE_PROJECT_VERSION']}, {first_line('git', 'describe', '--always', '--dirty')}"
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


def plot(path, family, peer, amounts, costs):
    """costs: {operation: (own, peer's)}, each a list of millions of instructions, None where not counted."""
    plt = pyplot()
    figure, panel = plt.subplots(figsize=(7.5, 4.2))
    for index, (operation, both) in enumerate(costs.items()):
        for values, color, style in zip(both, (OWN, PEER), ("-", "--")):
            points = [(amount, value) for amount, value in zip(amounts, values) if value]
            if points:
                panel.plot(*zip(*points), style, color=color, marker=MARKS[index % len(MARKS)],
                           label=operation if color == OWN else None)
    panel.set(xscale="log", yscale="log", xlabel="data, as a multiple of the table's", ylabel="millions of AArch64 instructions",
              title=f"{family.replace('_', ' ')}: DAX solid" + (f", {peer} dashed" if peer else ""))
    panel.set_xticks(amounts, [f"{amount:g}" for amount in amounts])
    panel.minorticks_off()
    panel.legend(loc="center left", bbox_to_anchor=(1, 0.5), frameon=False)
    figure.tight_layout()
    figure.savefig(path, dpi=120, metadata={"Software": None})
    plt.close(figure)
