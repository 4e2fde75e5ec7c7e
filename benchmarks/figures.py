#!/usr/bin/env python3
"""Runs every benchmark and writes docs/figures.md and docs/growth.svg.

usage: figures.py BUILD    BUILD is the folder with benchmarks/ and modules/, such as build/bench
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
    """The maximum of a figure, and the reason to print if it is exceeded."""
    what: str
    size: str
    maximum: float
    is_ratio: bool = True
    reason: str = ""

    def is_met_by(self, figure):
        return (figure.ratio if self.is_ratio else figure.value) <= self.maximum


SIZES = ("10 nodes", "100 nodes", "1,000 nodes", "10,000 nodes", "100,000 nodes")
QUERIES = ("a word in every node", "a word in no node", "a letter in every node")
OTHER_SCRIPTS = ("a word with accents in every node", "a Cyrillic word in every node",
                 "a Cyrillic word in no node", "a Cyrillic letter in every node",
                 "a Japanese word in every node", "a Japanese word in no node")

GOALS = (
    Goal("decode a library", "100,000 nodes", 0.12,
         reason="Every text is copied once into memory of its own. A quarter of the time is the "
                "kernel's work for these pages."),
    *(Goal("save a library", size, 1.3,
           reason="A save also encodes the library: 0.17 to 0.4 ms for 1,000 nodes, depending on "
                  "the processor's speed, and a hundred times that for 100,000, in part while the "
                  "disk writes. The rest of a save takes as long as the plain write.")
      for size in ("1,000 nodes", "10,000 nodes", "100,000 nodes")),
    Goal("keep an earlier version", "1,000 nodes", 0.1, is_ratio=False,
         reason="Half of it is the disk's work for one link more and one less: in memory (tmpfs), "
                "keeping takes 0.07 ms."),
    Goal("keep an earlier version", "100,000 nodes", 0.02),
    *(Goal(f"find: {query}", size, 1) for query in QUERIES for size in SIZES),
    *(Goal(f"find: {query}", size, 1,
           reason="Texts that are not ASCII are folded for every query, because keeping their "
                  "folded forms would need as much memory as the library. A search that reads them "
                  "to their ends takes 1.2 ms for 1,000 Cyrillic texts, and 1.6 ms for Japanese "
                  "ones. It has to unless the whole word occurs, because better matches rank "
                  "higher; grep stops at the first match.")
      for query in OTHER_SCRIPTS for size in SIZES[-2:]),
    Goal("find: the slowest of these", "10,000 nodes", 5, is_ratio=False),
    Goal("find: the slowest of these", "100,000 nodes", 40, is_ratio=False),
    *(Goal("find: one more letter", size, 0.1) for size in SIZES[1:]),
    *(Goal("find: memory while open", size, 0.1) for size in SIZES),
    Goal("keystroke", "100,000 nodes", 1.2),
    Goal("scroll step", "100,000 nodes", 1.2),
    *(Goal("settings card: added to its first frame", size, 10, is_ratio=False)
      for size in ("five slots", "five slots, the first time")),
    Goal("first frame", "10 nodes", 1.25,
         reason="The panel shows text in six sizes and weights, and the empty window shows none: "
                "compare the windows with text. The rest is creating and drawing its widgets, and "
                "Qt 6.4 fills large shapes through a thread pool."),
    Goal("first frame", "10,000 nodes", 1.4,
         reason="The library is read before the first frame, which takes as long as the figures "
                "for decoding say; the rest as with 10 nodes."),
    Goal("CPU time to first frame", "10 nodes", 1.45,
         reason="Text needs Qt's font database and a font for each size, as the windows with text "
                "show. The second thread that reads them saves time, not CPU time."),
    Goal("private memory", "10 nodes", 1.28,
         reason="Text needs memory too, as the windows with text show. The rest is the program "
                "itself and the library for JSON."),
    *(Goal(what, "10 nodes, with speech installed", 1.02,
           reason="Speech is not loaded before the first dictation; the difference from 1 is the "
                  "variation between runs.")
      for what in ("first frame", "private memory")),
    Goal("wake-ups in 20 seconds of rest", "visible", 0, is_ratio=False),
    Goal("wake-ups in 20 seconds of rest", "hidden", 0, is_ratio=False),
    *(Goal("threads at rest, except main and connections", state, 0, is_ratio=False)
      for state in ("visible", "hidden")),
    Goal("dictation: last words lost by a stop 0.15 s after them", "all, 1,085 words", 50,
         is_ratio=False),
    Goal("dictation: replaced words for each final word", "all, 1,085 words", 0.3, is_ratio=False),
    Goal("dictation: wrong words with vocabulary", "half 2", 0.5,
         reason="With PocketSphinx 5prealpha, seven of the ten words that the dictionary lacks are "
                "recognised. Of the 41 words that stay wrong, 17 are in the three sentences with the "
                "other ones (\"sign up\" instead of \"signup\", and two names). The vocabulary helps "
                "little with the other 24, which are mostly ordinary words."),
    Goal("dictation: more words that are wrong with vocabulary", "ordinary", 0.5, is_ratio=False),
    Goal("dictation: later start because of the vocabulary", "1,000 nodes", 0.15, is_ratio=False,
         reason="It took 0.12 to 0.24 s on the same machine at different times, with unchanged "
                "code. Reading the texts takes 0.03 s, pronouncing new words and writing the model "
                "of pairs 0.06 s, at the fastest of these times. The rest is PocketSphinx, which merges "
                "the sorted words of both models."),
    Goal("dictation: later start because of the vocabulary", "5,000 new words in 1 MiB", 0.15,
         is_ratio=False,
         reason="This is the largest library that is learnt, with every new word new to the "
                "listener. It needs several times the text and the new words of 1,000 nodes, and "
                "lower limits would leave words out."),
    Goal("dictation: memory of the vocabulary", "5,000 new words in 1 MiB", 20, is_ratio=False),
)

GROWTH = ("first frame", "private memory", "save a library", "keystroke")


def run(command, **environment):
    """Returns the figures that the command prints, and prints each immediately."""
    figures = []
    with subprocess.Popen([str(word) for word in command], stdout=subprocess.PIPE, text=True,
                          env=os.environ | environment) as process:
        for line in process.stdout:
            if figure := Figure.parse(line):
                figures.append(figure)
                print(description(figure), flush=True)
    if process.returncode:
        sys.exit(f"{command[0]} ended with {process.returncode}")
    return figures


def measure(build):
    """Maps each heading to its figures."""
    programs = build / "benchmarks"
    offscreen = {"QT_QPA_PLATFORM": "offscreen"}
    listener = build / "modules" / "listener"
    return {
        "The library": run([programs / "library_bench"]),
        "Find": run([programs / "find_bench"]),
        "The panel": [*run([programs / "panel_bench"], **offscreen),
                      *run([sys.executable, "-B", HERE / "with_tray.py",
                            programs / "settings_card_bench"]),
                      *run([programs / "favicon_bench"], **offscreen)],
        "Start, memory, rest": run([sys.executable, "-B", HERE / "start_bench.py", programs]),
        "Dictation": [*run([sys.executable, "-B", HERE / "dictation_bench.py", listener, "--all"]),
                      *run([sys.executable, "-B", HERE / "vocabulary_bench.py", listener]),
                      *run([sys.executable, "-B", HERE / "learning_bench.py", listener])],
        "Dictation with PocketSphinx 5": recorded(HERE / "pocketsphinx5.tsv"),
    }


def recorded(path):
    """The figures of a file, which were measured on another system."""
    return [figure for line in path.read_text().splitlines() if (figure := Figure.parse(line))]


def number(value):
    """Three significant digits, or all digits before the decimal point."""
    if value >= 100 or value == int(value):
        return f"{value:,.0f}"
    return f"{value:.3g}" if value < 1 else f"{value:.{1 if value >= 10 else 2}f}"


def value_with_unit(figure):
    return f"{number(figure.value)} {figure.unit}".replace(" us", " µs").strip()


def description(figure):
    text = f"{figure.what}, {figure.size}: {value_with_unit(figure)}"
    if figure.ratio is not None:
        text += f", {figure.ratio:.3f} of {figure.reference}"
    return text


def verdict(figure):
    """The goal, and whether the figure meets it."""
    goal = goal_of(figure)
    if not goal:
        return ""
    unit = "" if goal.is_ratio else figure.unit
    maximum = f"at most {goal.maximum:g} {unit}".strip() if goal.maximum else "none"
    return maximum + (": met" if goal.is_met_by(figure) else ": **missed**")


def goal_of(figure):
    return next((goal for goal in GOALS
                 if (goal.what, goal.size) == (figure.what, figure.size)), None)


def table(heading, figures):
    yield f"## {heading}"
    yield ""
    yield "| figure | case | median | ratio | compared with | goal |"
    yield "| --- | --- | ---: | ---: | --- | --- |"
    for figure in figures:
        ratio = "" if figure.ratio is None else f"{figure.ratio:.2f}"
        yield (f"| {figure.what} | {figure.size} | {value_with_unit(figure)} | {ratio} | "
               f"{figure.reference} | {verdict(figure)} |")
    yield ""


def all_figures(chapters):
    return [figure for figures in chapters.values() for figure in figures]


def missed_goals(figures):
    missed = {}
    for figure in figures:
        goal = goal_of(figure)
        if goal and not goal.is_met_by(figure):
            missed.setdefault((figure.what, goal.reason), {})[figure.size] = True
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
    missed = list(missed_goals(all_figures(chapters)))
    return "\n".join([
        "# Figures",
        "",
        f"`script/bench` measured the release build on {datetime.date.today():%-d %B %Y}: "
        f"{machine()}. It takes about twenty minutes and rewrites this page and its chart.",
        "",
        "Times depend on the machine; ratios should hold on others too. Both sides of a ratio are "
        "measured alternately, and the ratio is the median of the pairs. The figures of PocketSphinx 5 "
        "are from Debian 14, measured separately on the same machine on 22 November 2026.",
        "",
        *(line for chapter in chapters.items() for line in table(*chapter)),
        *(["## Missed goals", "", *missed, ""] if missed else []),
        "## From 10 to 100,000 nodes",
        "",
        "![Growth of first frame, memory, save and keystroke](growth.svg)",
        "",
        "A keystroke costs the same in libraries of any size. A save writes the whole library, and "
        "the start reads it before the first frame, so both grow with a large file.",
        ""])


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    chapters = measure(build)
    figures = all_figures(chapters)
    curves = {what: growth_chart.curve(figures, what) for what in GROWTH}
    (DOCS / "growth.svg").write_text(growth_chart.draw(curves))
    (DOCS / "figures.md").write_text(page(chapters))
    print("", *missed_goals(figures), sep="\n")


if __name__ == "__main__":
    main()
