"""Polling for changes that other programs make, with a timeout."""

import time

SECONDS = 60  # long enough for a busy machine


def wait_for(what, ask, seconds=SECONDS):
    """Polls until `ask` returns a true value, and returns that."""
    deadline = time.monotonic() + seconds
    while not (answer := ask()):
        if time.monotonic() > deadline:
            raise AssertionError(f"Timed out after {seconds} s waiting for {what}.")
        time.sleep(0.02)
    return answer


def wait_for_value(what, expected, ask, seconds=SECONDS):
    """Polls until `ask` returns `expected`."""
    deadline = time.monotonic() + seconds
    while (answer := ask()) != expected:
        if time.monotonic() > deadline:
            raise AssertionError(
                f"Timed out after {seconds} s: {what} is\n{answer!r}\nexpected\n{expected!r}")
        time.sleep(0.02)
