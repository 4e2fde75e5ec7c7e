"""Waiting for what other programs do: asking again and again, with a deadline."""

import time

SECONDS = 60  # a busy machine may be slow; what is right is seen as soon as it is there


def wait_for(what, ask, seconds=SECONDS):
    """Asks until the answer is something true, and gives that answer."""
    deadline = time.monotonic() + seconds
    while not (answer := ask()):
        if time.monotonic() > deadline:
            raise AssertionError(f"After {seconds} s there is still not {what}.")
        time.sleep(0.02)
    return answer


def wait_for_value(what, expected, ask, seconds=SECONDS):
    """Asks until the answer is `expected`."""
    deadline = time.monotonic() + seconds
    while (answer := ask()) != expected:
        if time.monotonic() > deadline:
            raise AssertionError(
                f"After {seconds} s {what} is still\n{answer!r}\ninstead of\n{expected!r}")
        time.sleep(0.02)
