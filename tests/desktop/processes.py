"""Child processes of a test, none of which outlives it."""

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
    """Starts programs, and kills them with all their descendants."""

    def __init__(self, environment, log):
        self.environment = environment
        self._log = log
        # Orphaned descendants become children of this process, so they can be found and killed.
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
    """Sends SIGTERM, then SIGKILL after `seconds`. Returns the exit status."""
    process.terminate()
    try:
        return process.wait(seconds)
    except subprocess.TimeoutExpired:
        process.kill()
        return process.wait()


def _end_with_parent():
    _prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def _reap():
    """Reaps zombie children. Returns whether others are still running."""
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
            continue  # exited meanwhile
        if parent == os.getpid():
            yield int(status.parent.name)
