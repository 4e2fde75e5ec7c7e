"""Programs a test runs, none of which outlives it."""

import ctypes
import os
import pathlib
import signal
import subprocess
import time

PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36
_prctl = ctypes.CDLL(None, use_errno=True).prctl


class Processes:
    """Starts programs and ends them, with all that these have started in turn."""

    def __init__(self, environment, log):
        self.environment = environment
        self._log = log
        # What loses its parent becomes a child of this process, and so can be found and ended.
        _prctl(PR_SET_CHILD_SUBREAPER, 1)

    def start(self, *command, environment=None, **options):
        return subprocess.Popen(
            command, env=self.environment | (environment or {}),
            stdin=options.pop("stdin", subprocess.DEVNULL),
            stdout=options.pop("stdout", self._log), stderr=self._log,
            preexec_fn=_end_with_parent, **options)

    def end_all(self):
        deadline = time.monotonic() + 10
        while _reap() and time.monotonic() < deadline:
            for child in _children():
                os.kill(child, signal.SIGKILL)
            time.sleep(0.02)


def end(process, seconds=10):
    """Ends one program kindly, or else not, and tells how it ended."""
    process.terminate()
    try:
        return process.wait(seconds)
    except subprocess.TimeoutExpired:
        process.kill()
        return process.wait()


def _end_with_parent():
    _prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def _reap():
    """Buries children that have ended; tells whether others live."""
    try:
        while os.waitpid(-1, os.WNOHANG)[0]:
            pass
        return True
    except ChildProcessError:
        return False


def _children():
    for status in pathlib.Path("/proc").glob("[0-9]*/stat"):
        try:
            parent = int(status.read_text().rpartition(")")[2].split()[1])
        except OSError:
            continue  # ended meanwhile
        if parent == os.getpid():
            yield int(status.parent.name)
