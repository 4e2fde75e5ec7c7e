#!/usr/bin/env python3
"""Word error rate of the listener with and without the user's vocabulary, with synthetic voices.

usage: vocabulary_bench.py LISTENER [1|2|ordinary]...

LISTENER is the program, such as build/bench/modules/listener. "1" and "2" are the halves of the
material, "ordinary" are sentences without unusual words.
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
    listener.send(TEXTS, b"".join(text.encode() + PROMINENT for text in texts))
    listener.receive()
    listener.send(LEARN)
    listener.receive()


def said(sentence):
    return " ".join(SAID.get(word, word) for word in sentence.split())


def measure(name, program, voices, sentences, texts):
    """Prints the figures. The voices take turns; each has a listener of its own."""
    score = Score(name)
    with tempfile.TemporaryDirectory() as folder:
        for number, voice in enumerate(voices):
            with Listener(program) as listener:
                if texts:
                    teach(listener, texts)
                for sentence in sentences[number::len(voices)]:
                    samples, sounds = speak(said(sentence), voice, pathlib.Path(folder))
                    result = listener.recognize(samples)
                    score.add(sentence, samples, sounds, result, "-v" in sys.argv)
                score.memory = max(score.memory, listener.peak_megabytes())
    score.report_words()
    Figure("dictation: memory of the listener", name, score.memory, "MB").print()
    return score


def compare(name, program, voices, sentences, texts):
    without = measure(f"{name}, without vocabulary", program, voices, sentences, [])
    score = measure(f"{name}, with vocabulary", program, voices, sentences, texts)
    Figure("dictation: more words that are wrong with vocabulary", name,
           100 * (score.errors - without.errors) / score.words, "% of the words").print()
    Figure("dictation: wrong words with vocabulary", name, score.errors, "words",
           "without vocabulary", score.errors / without.errors).print()


def main():
    program, parts = sys.argv[1], sys.argv[2:] or ["1", "2", "ordinary"]
    for number, half in enumerate(HALVES, 1):
        if str(number) not in parts:
            continue
        sentences = half["sentences"].strip().splitlines()
        compare(f"half {number}", program, half["voices"], sentences, texts_of([half]))
    if "ordinary" in parts:
        compare("ordinary", program, ("slt", "rms"), SENTENCES, texts_of(HALVES))


if __name__ == "__main__":
    main()
