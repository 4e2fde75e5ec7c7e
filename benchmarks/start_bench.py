#!/usr/bin/env python3
"""Measures the panel's time and CPU time to the first frame, private memory, and threads and
wake-ups at rest, compared with an empty Qt window with a tray icon.

usage: start_bench.py PROGRAMS [RUNS]    PROGRAMS is the folder of the benchmark programs

Each round starts every program once, so that a slow phase of the machine affects all. Runs on a
virtual desktop with a tray.
"""

import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "tests" / "desktop"))

from figure import Figure  # noqa: E402
from session import Session  # noqa: E402
from tray import StatusItem, Tray  # noqa: E402
from x11 import press_keys, windows_named  # noqa: E402

SIZES = (10, 100, 1_000, 10_000, 100_000)
EMPTY = "an empty window"
WITHOUT_SPEECH = "the same without speech"
SETTLE_SECONDS = 1.0
REST_SECONDS = 20
UNUSED_SECONDS = 35  # Qt frees threads and pixmaps after 30 seconds without use
# Besides the main thread: Qt's reader of X11 events and its D-Bus connection.
THREADS_OF_CONNECTIONS = {"QXcbEventQueue", "QDBusConnection"}


def private_megabytes(pid):
    """The private memory of the process, and the dirty part of it. The clean part is file pages,
    mostly of libraries, that no other process uses."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as rollup:
        rows = dict(line.split(":", 1) for line in rollup if line[0].isalpha() and ":" in line)
    clean, dirty = (int(rows[key].split()[0]) for key in ("Private_Clean", "Private_Dirty"))
    return (clean + dirty) / 1024, dirty / 1024


def start(command, environment):
    """Milliseconds from process start to first frame, milliseconds of CPU time until then, and the
    process's private memory."""
    started = time.clock_gettime_ns(time.CLOCK_MONOTONIC)
    with subprocess.Popen(command, env=environment, stdout=subprocess.PIPE) as process:
        painted, cpu_time = map(int, process.stdout.readline().split())
        time.sleep(SETTLE_SECONDS)
        memory = private_megabytes(process.pid)
        process.terminate()
    return ((painted - started) / 1e6, cpu_time / 1e6, *memory)


def wakeups(pid):
    """How often the process's threads have been woken so far."""
    return sum(int(line.split()[1])
               for status in pathlib.Path(f"/proc/{pid}/task").glob("*/status")
               for line in status.read_text().splitlines()
               if line.startswith("voluntary_ctxt_switches"))


def other_threads(pid):
    """The number of threads apart from the main thread and those of the connections."""
    names = [task.joinpath("comm").read_text().strip()
             for task in pathlib.Path(f"/proc/{pid}/task").iterdir() if int(task.name) != pid]
    return sum(name not in THREADS_OF_CONNECTIONS for name in names)


def measure_rest(command, environment):
    """The wake-ups and the other threads of the visible and the hidden panel."""
    with subprocess.Popen(command, env=environment, stdout=subprocess.PIPE) as process:
        process.stdout.readline()
        StatusItem(process.pid)
        results = []
        for hide in ((), ("ctrl+h",)):
            if hide:
                press_keys(*hide)
            time.sleep(UNUSED_SECONDS)
            before = wakeups(process.pid)
            time.sleep(REST_SECONDS)
            results.append((wakeups(process.pid) - before, other_threads(process.pid)))
        is_hidden = not windows_named("Quillsatchel")
        process.terminate()
    if not is_hidden:
        raise RuntimeError("The panel was not hidden.")
    return results


def without_speech(programs):
    """A copy of the panel that finds all modules except the speech module."""
    folder = programs.parent / "without-speech"
    shutil.rmtree(folder, ignore_errors=True)
    for kind, source, names in (("modules", programs.parent / "modules",
                                 ("network.so", "workspace.so")),
                                ("bin", programs, ("panel_start",))):
        (folder / kind).mkdir(parents=True)
        for name in names:
            (folder / kind / name).hardlink_to(source / name)
    return folder / "bin" / "panel_start"


def main():
    programs = pathlib.Path(sys.argv[1]).resolve()
    rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 21
    with Session(True) as session:
        Tray(session)
        measure(programs, rounds)


def measure(programs, rounds):
    empty = [programs / "empty_window_start"]
    panel = [programs / "panel_start"]
    starts = {EMPTY: (empty, 0),
              "a window with a line of text": (empty + ["Some words"], 0),
              "a window with text in six sizes": (empty + 6 * ["Some words"], 0),
              WITHOUT_SPEECH: ([without_speech(programs)], SIZES[0])}
    with tempfile.TemporaryDirectory() as data:
        for nodes in SIZES:
            library = os.path.join(data, str(nodes))
            subprocess.run([programs / "write_sample_library", str(nodes), library], check=True)
            starts[f"{nodes:,} nodes"] = (panel, nodes)

        def environment(nodes):
            return dict(os.environ, XDG_DATA_HOME=os.path.join(data, str(nodes)))

        results = {name: [] for name in starts}
        for _ in range(rounds + 1):
            for name, (command, nodes) in starts.items():
                results[name].append(start(command, environment(nodes)))
        report({name: runs[1:] for name, runs in results.items()})  # the first warmed the caches
        for state, (wakeup_count, thread_count) in zip(
                ("visible", "hidden"), measure_rest(panel, environment(SIZES[0]))):
            Figure(f"wake-ups in {REST_SECONDS} seconds of rest", state, wakeup_count, "").print()
            Figure("threads at rest, except main and connections", state, thread_count, "").print()


def report(results):
    panel = f"{SIZES[0]:,} nodes"
    for index, (what, unit) in enumerate((("first frame", "ms"), ("CPU time to first frame", "ms"),
                                          ("private memory", "MB"),
                                          ("private dirty memory", "MB"))):
        def compare(size, name, base):
            values, others = ([run[index] for run in results[of]] for of in (name, base))
            ratio = statistics.median(value / other for value, other in zip(values, others))
            Figure(what, size, statistics.median(values), unit, base, ratio).print()

        for name in results:
            if name != WITHOUT_SPEECH:
                compare(name, name, EMPTY)
        compare(f"{panel}, with speech installed", panel, WITHOUT_SPEECH)


if __name__ == "__main__":
    main()
