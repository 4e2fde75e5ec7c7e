#!/usr/bin/env python3
"""Runs every benchmark and writes what came out to docs/figures.md and docs/growth.svg.

usage: figures.py BUILD    BUILD holds benchmarks/ and modules/, such as build/bench
"""

import dataclasses
import datetime
import os
import pathlib
import platform
import re
import subprocess
import sys

import growth_chart
from figure import Figure

HERE = pathlib.Path(__file__).resolve().parent
DOCS = HERE.parent / "docs"


@dataclasses.dataclass(frozen=True)
class Goal:
    """How much of a figure there may be, and what is to be said where there is more."""
    what: str
    size: str
    most: float
    is_ratio: bool = True
    reason: str = ""

    def is_met_by(self, figure):
        return (figure.ratio if self.is_ratio else figure.value) <= self.most


GOALS = (
    Goal("decode a library", "100,000 nodes", 0.15,
         reason="Two fifths of the time are page faults, of the parser's buffers and of the records "
                "themselves."),
    *(Goal("save a library", size, 1.3,
           reason="The encoding comes on top of the writing, and so do the temporary file and its "
                  "taking the old one's place, which keep a save that is cut off from doing harm.")
      for size in ("1,000 nodes", "10,000 nodes", "100,000 nodes")),
    Goal("keystroke", "100,000 nodes", 1.2),
    Goal("scroll step", "100,000 nodes", 1.2),
    *(Goal("settings card: added to its first frame", size, 10, is_ratio=False)
      for size in ("five slots", "five slots, the first time")),
    Goal("first frame", "10 nodes", 1.3,
         reason="Part of it is text, which the panel writes in six sizes and weights, and which the "
                "empty window has none of: see the windows with text. The rest is making and drawing "
                "what is in the panel."),
    Goal("private memory", "10 nodes", 1.3,
         reason="Text costs memory too, as the windows with text show; the rest are the pages of "
                "the program itself and of the libraries that read vector drawings and JSON."),
    *(Goal(what, "10 nodes, with speech installed", 1.02,
           reason="Nothing of speech is opened before the first dictation; what the ratio differs "
                  "from 1 by is how much the runs differ from each other.")
      for what in ("first frame", "private memory")),
    Goal("wake-ups in 20 seconds of rest", "in sight", 0, is_ratio=False),
    Goal("wake-ups in 20 seconds of rest", "hidden", 0, is_ratio=False),
)

GROWTH = ("first frame", "private memory", "save a library", "keystroke")


def run(command, **environment):
    """The figures that the command prints, which are printed here as they come."""
    figures = []
    with subprocess.Popen([str(word) for word in command], stdout=subprocess.PIPE, text=True,
                          env=os.environ | environment) as process:
        for line in process.stdout:
            if figure := Figure.parse(line):
                figures.append(figure)
                print(in_words(figure), flush=True)
    if process.returncode:
        sys.exit(f"{command[0]} ended with {process.returncode}")
    return figures


def measure(build):
    """The figures, by the headings that they stand under."""
    programs = build / "benchmarks"
    offscreen = {"QT_QPA_PLATFORM": "offscreen"}
    listener = build / "modules" / "listener"
    return {
        "The library": run([programs / "library_bench"]),
        "The panel": [*run([programs / "panel_bench"], **offscreen),
                      *run([sys.executable, "-B", HERE / "with_tray.py",
                            programs / "settings_card_bench"]),
                      *run([programs / "favicon_bench"], **offscreen)],
        "Start, memory, rest": run([sys.executable, "-B", HERE / "start_bench.py", programs]),
        "Dictation": run([sys.executable, "-B", HERE / "dictation_bench.py", listener, "--all"]),
    }


def number(value):
    """Three digits that count, more before the point."""
    if value >= 100 or value == int(value):
        return f"{value:,.0f}"
    return f"{value:.3g}" if value < 1 else f"{value:.{1 if value >= 10 else 2}f}"


def measured(figure):
    return f"{number(figure.value)} {figure.unit}".replace(" us", " µs").strip()


def in_words(figure):
    words = f"{figure.what}, {figure.size}: {measured(figure)}"
    if figure.ratio is not None:
        words += f", {figure.ratio:.3f} of {figure.reference}"
    return words


def judged(figure):
    """What was to be reached, and whether it was."""
    goal = goal_of(figure)
    if not goal:
        return ""
    unit = "" if goal.is_ratio else figure.unit
    most = f"at most {goal.most:g} {unit}".strip() if goal.most else "none"
    return most + (": met" if goal.is_met_by(figure) else ": **missed**")


def goal_of(figure):
    return next((goal for goal in GOALS
                 if (goal.what, goal.size) == (figure.what, figure.size)), None)


def table(heading, figures):
    yield f"## {heading}"
    yield ""
    yield "| what | of | median | ratio | to | goal |"
    yield "| --- | --- | ---: | ---: | --- | --- |"
    for figure in figures:
        ratio = "" if figure.ratio is None else f"{figure.ratio:.2f}"
        yield (f"| {figure.what} | {figure.size} | {measured(figure)} | {ratio} | "
               f"{figure.reference} | {judged(figure)} |")
    yield ""


def every_figure(chapters):
    return [figure for figures in chapters.values() for figure in figures]


def misses(figures):
    missed = {}
    for figure in figures:
        goal = goal_of(figure)
        if goal and not goal.is_met_by(figure):
            missed.setdefault((figure.what, goal.reason), []).append(figure.size)
    for (what, reason), sizes in missed.items():
        name = what[0].upper() + what[1:]
        yield f"- **{name}** ({'; '.join(sizes)}). {reason}".rstrip()


def machine():
    cpu = re.search(r"model name\s*:\s*(.*)", pathlib.Path("/proc/cpuinfo").read_text())
    memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    system = re.search(r'PRETTY_NAME="(.*)"', pathlib.Path("/etc/os-release").read_text())[1]
    name = cpu[1] if cpu else platform.machine()
    query = subprocess.run(["pkg-config", "--modversion", "Qt6Core"], capture_output=True, text=True)
    return (f"{len(os.sched_getaffinity(0))} processors ({name}), {memory:.0f} GiB, {system}, "
            f"Qt {query.stdout.strip()}, no graphics card")


def page(chapters):
    missed = list(misses(every_figure(chapters)))
    return "\n".join([
        "# Figures",
        "",
        f"What `script/bench` measured on {datetime.date.today():%-d %B %Y}, on the release build: "
        f"{machine()}. It takes about ten minutes and writes this page and its picture anew.",
        "",
        "Times are those of that machine; the ratios hold elsewhere too. Both sides of a ratio are "
        "measured in turn, and it is the median of the pairs.",
        "",
        *(line for chapter in chapters.items() for line in table(*chapter)),
        *(["## Goals that are missed, and why", "", *missed, ""] if missed else []),
        "## From 10 to 100,000 nodes",
        "",
        "![How first frame, memory, save and keystroke grow](growth.svg)",
        "",
        "A keystroke costs the same whatever the library holds. A save writes the whole library, "
        "and the start reads it before the first frame, so both grow with the file once it "
        "outweighs what they cost by themselves.",
        ""])


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    chapters = measure(build)
    figures = every_figure(chapters)
    curves = {what: growth_chart.curve(figures, what) for what in GROWTH}
    (DOCS / "growth.svg").write_text(growth_chart.draw(curves))
    (DOCS / "figures.md").write_text(page(chapters))
    print("", *misses(figures), sep="\n")


if __name__ == "__main__":
    main()
