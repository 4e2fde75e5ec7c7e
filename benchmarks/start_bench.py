#!/usr/bin/env python3
"""Time to the first frame and private memory of the panel, beside an empty Qt window.

usage: start_bench.py FOLDER [RUNS]    FOLDER holds the benchmark programs

Each round starts every program once, so that a machine that is slow for a while is slow for
all. Needs a display.
"""

import os
import statistics
import subprocess
import sys
import tempfile
import time

SETTLE_SECONDS = 1.0


def private_kilobytes(pid):
    """What only this process holds in memory, as the kernel counts it."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as rollup:
        rows = dict(line.split(":", 1) for line in rollup if ":" in line and "-" not in line)
    return sum(int(rows[key].split()[0]) for key in ("Private_Clean", "Private_Dirty"))


def start(command, environment):
    """Milliseconds from the start of the process to its first frame, and private megabytes."""
    started = time.clock_gettime_ns(time.CLOCK_MONOTONIC)
    with subprocess.Popen(command, env=environment, stdout=subprocess.PIPE) as process:
        painted = int(process.stdout.readline())
        time.sleep(SETTLE_SECONDS)
        memory = private_kilobytes(process.pid)
        process.terminate()
    return (painted - started) / 1e6, memory / 1024


def main():
    folder = sys.argv[1]
    rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 15
    with tempfile.TemporaryDirectory() as data:
        programs = {"empty window": ("empty_window_start", 0)}
        for nodes in (10, 100_000):
            library = os.path.join(data, str(nodes))
            subprocess.run([f"{folder}/write_sample_library", str(nodes), library], check=True)
            programs[f"{nodes:,} nodes"] = ("panel_start", nodes)
        results = {name: [] for name in programs}
        for _ in range(rounds + 1):
            for name, (program, nodes) in programs.items():
                environment = dict(os.environ, XDG_DATA_HOME=os.path.join(data, str(nodes)))
                results[name].append(start([f"{folder}/{program}"], environment))
    empty = results["empty window"][1:]
    for name, runs in results.items():
        runs = runs[1:]  # the first round warmed the caches
        frame = statistics.median(run[0] for run in runs)
        memory = statistics.median(run[1] for run in runs)
        frame_ratio = statistics.median(run[0] / base[0] for run, base in zip(runs, empty))
        memory_ratio = statistics.median(run[1] / base[1] for run, base in zip(runs, empty))
        print(f"{name:14}  first frame {frame:7.1f} ms (x{frame_ratio:.2f})"
              f"   private memory {memory:6.1f} MB (x{memory_ratio:.2f})")


if __name__ == "__main__":
    main()
