#!/usr/bin/env python3
"""Word error rate of the listener with and without the user's vocabulary, with synthetic voices.

usage: vocabulary_bench.py LISTENER [1|2|ordinary]...

LISTENER is the program, such as build/bench/modules/listener. "1" and "2" are the halves of the
material, "ordinary" are sentences without unusual words. Also measures the time to learn and the
memory of the listener.
"""

import pathlib
import sys
import tempfile

from dictation_bench import LEARN, SENTENCES, TEXTS, Listener, Score, speak
from figure import Figure
from vocabulary_material import HALVES, OTHER_TEXTS, SAID

PROMINENT = b"\1"


def texts_of(halves):
    return [line for part in (*(half["texts"] for half in halves), OTHER_TEXTS)
            for line in part.strip().splitlines()]


def teach(listener, texts):
    """The CPU seconds until the listener has learnt the words of the texts."""
    listener.send(LEARN)  # the model is loaded
    listener.receive()
    started = listener.cpu_seconds()
    listener.send(TEXTS, b"".join(text.encode() + PROMINENT for text in texts))
    listener.receive()
    listener.send(LEARN)
    listener.receive()
    return listener.cpu_seconds() - started


def said(sentence):
    return " ".join(SAID.get(word, word) for word in sentence.split())


def measure(name, program, voices, sentences, texts):
    """Prints the figures. The voices take turns; each has a listener of its own."""
    score, learning = Score(name), []
    with tempfile.TemporaryDirectory() as folder:
        for number, voice in enumerate(voices):
            with Listener(program) as listener:
                if texts:
                    learning.append(teach(listener, texts))
                for sentence in sentences[number::len(voices)]:
                    samples, sounds = speak(said(sentence), voice, pathlib.Path(folder))
                    result = listener.recognize(samples)
                    score.add(sentence, samples, sounds, result, "-v" in sys.argv)
                score.memory = max(score.memory, listener.peak_megabytes())
    score.report()
    if learning:
        Figure("dictation: time to learn", name, max(learning), "s").print()
    Figure("dictation: memory of the listener", name, score.memory, "MB").print()


def main():
    program, parts = sys.argv[1], sys.argv[2:] or ["1", "2", "ordinary"]
    for number, half in enumerate(HALVES, 1):
        if str(number) not in parts:
            continue
        sentences = half["sentences"].strip().splitlines()
        for name, texts in (("without vocabulary", []), ("with vocabulary", texts_of([half]))):
            measure(f"half {number}, {name}", program, half["voices"], sentences, texts)
    if "ordinary" in parts:
        for name, texts in (("without vocabulary", []), ("with vocabulary", texts_of(HALVES))):
            measure(f"ordinary, {name}", program, ("slt", "rms"), SENTENCES, texts)


if __name__ == "__main__":
    main()
