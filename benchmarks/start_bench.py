#!/usr/bin/env python3
"""Time to the first frame, private memory and rest of the panel, beside an empty Qt window with an
icon in the tray.

usage: start_bench.py FOLDER [RUNS]    FOLDER holds the benchmark programs

Each round starts every program once, so that a machine that is slow for a while is slow for
all. All of it happens on a virtual desktop with a tray.
"""

import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "tests" / "desktop"))

from session import Session  # noqa: E402
from tray import StatusItem, Tray  # noqa: E402
from x11 import press_keys, windows_named  # noqa: E402

SETTLE_SECONDS = 1.0
REST_SECONDS = 20


def private_megabytes(pid):
    """What only this process holds in memory, and the part of it that it has written to; the
    rest are pages of files, mostly libraries, that no other process happens to use."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as rollup:
        rows = dict(line.split(":", 1) for line in rollup if line[0].isalpha() and ":" in line)
    clean, dirty = (int(rows[key].split()[0]) for key in ("Private_Clean", "Private_Dirty"))
    return (clean + dirty) / 1024, dirty / 1024


def start(command, environment):
    """Milliseconds from the start of the process to its first frame, and its private memory."""
    started = time.clock_gettime_ns(time.CLOCK_MONOTONIC)
    with subprocess.Popen(command, env=environment, stdout=subprocess.PIPE) as process:
        painted = int(process.stdout.readline())
        time.sleep(SETTLE_SECONDS)
        memory = private_megabytes(process.pid)
        process.terminate()
    return ((painted - started) / 1e6, *memory)


def wakeups(pid):
    """How often its threads have been woken so far."""
    return sum(int(line.split()[1])
               for status in pathlib.Path(f"/proc/{pid}/task").glob("*/status")
               for line in status.read_text().splitlines()
               if line.startswith("voluntary_ctxt_switches"))


def count_wakeups_at_rest(command, environment):
    """Of the panel in sight, and hidden."""
    with subprocess.Popen(command, env=environment, stdout=subprocess.PIPE) as process:
        process.stdout.readline()
        StatusItem(process.pid)
        counts = []
        for hide in ((), ("ctrl+h",)):
            if hide:
                press_keys(*hide)
            time.sleep(5)  # whatever is to be done after the start or the key is done
            before = wakeups(process.pid)
            time.sleep(REST_SECONDS)
            counts.append(wakeups(process.pid) - before)
        is_hidden = not windows_named("Quillsatchel")
        process.terminate()
    if not is_hidden:
        raise RuntimeError("The panel was in sight all the time.")
    return counts


def main():
    folder = pathlib.Path(sys.argv[1]).resolve()
    rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 15
    with Session(True) as session:
        Tray(session)
        measure(folder, rounds)


def measure(folder, rounds):
    empty = [f"{folder}/empty_window_start"]
    panel = [f"{folder}/panel_start"]
    programs = {"empty window": (empty, 0), "a line of text": (empty + ["Some words"], 0)}
    with tempfile.TemporaryDirectory() as data:
        for nodes in (10, 100_000):
            library = os.path.join(data, str(nodes))
            subprocess.run([f"{folder}/write_sample_library", str(nodes), library], check=True)
            programs[f"{nodes:,} nodes"] = (panel, nodes)

        def environment(nodes):
            return dict(os.environ, XDG_DATA_HOME=os.path.join(data, str(nodes)))

        results = {name: [] for name in programs}
        for _ in range(rounds + 1):
            for name, (command, nodes) in programs.items():
                results[name].append(start(command, environment(nodes)))
        report({name: runs[1:] for name, runs in results.items()})  # the first warmed the caches
        shown, hidden = count_wakeups_at_rest(panel, environment(10))
        print(f"wake-ups in {REST_SECONDS} s of rest: {shown} in sight, {hidden} hidden")


def report(results):
    base = results["empty window"]
    for name, runs in results.items():
        figures = []
        for index, figure in enumerate(("first frame {:7.1f} ms", "private memory {:6.1f} MB",
                                        "of it written {:5.1f} MB")):
            median = statistics.median(run[index] for run in runs)
            ratio = statistics.median(run[index] / other[index] for run, other in zip(runs, base))
            figures.append(figure.format(median) + f" (x{ratio:.2f})")
        print(f"{name:15}", "   ".join(figures))


if __name__ == "__main__":
    main()
