#!/usr/bin/env python3
"""How much later dictation starts, and how much memory the listener needs, because it learns the
words of a library.

usage: learning_bench.py LISTENER

LISTENER is the program, such as build/bench/modules/listener. The library has invented texts with
words of Debian's English model and with new words. As many of the dictionary's words are missing
from the language model as in the documentation of this project: more of them take longer. Measures
CPU time, so that other programs hardly matter. Two seconds of noise are recognised before memory is
measured.
"""

import itertools
import pathlib
import random
import statistics
import sys

from dictation_bench import AUDIO, BEGIN, BUFFER, END, LEARN, TEXTS, Listener
from figure import Figure

MODEL = pathlib.Path("/usr/share/pocketsphinx/model/en-us")
COMMON = 0.97  # share of the dictionary's words that the language model has too
PROMINENT = b"\1"
MESSAGE = 1 << 16  # bytes
NODE = 300  # bytes
ROUNDS = 7


def dictionary_words():
    lines = (MODEL / "cmudict-en-us.dict").read_text().splitlines()
    return {word for word in (line.split()[0] for line in lines) if word.isalpha()}


def model_words():
    """The words of the language model, which end its file."""
    model = (MODEL / "en-us.lm.bin").read_bytes()
    count = int.from_bytes(model[20:24], "little")
    return {word.decode() for word in model.split(b"\0")[-count:-1]}


def new_words(count, known, chance):
    syllables = [first + second for first in "bdfgklmnprstvz" for second in "aeiou"]
    words = set()
    while len(words) < count:
        length = chance.randint(2, 4)
        word = "".join(chance.choices(syllables, k=length)) + chance.choice(("", "n", "r", "l"))
        if word not in known:
            words.add(word)
    return sorted(words)


def library(nodes, known_count, new_count):
    """Texts that have every word, common ones more often."""
    chance = random.Random(1)
    known, common = dictionary_words(), model_words()
    common_count = round(COMMON * known_count)
    words = (chance.sample(sorted(known & common), common_count) +
             chance.sample(sorted(known - common), known_count - common_count) +
             new_words(new_count, known, chance))
    chance.shuffle(words)
    weights = list(itertools.accumulate(1 / (rank + 5) for rank in range(len(words))))
    rare = list(words)
    for _ in range(nodes):
        text = ""
        while len(text) < NODE:
            sentence = chance.choices(words, cum_weights=weights, k=6) + rare[-6:]
            del rare[-6:]
            text += " ".join(sentence).capitalize() + ". "
        yield text[:NODE]


def messages(texts):
    stream = b"".join(text.encode() + PROMINENT for text in texts)
    return [stream[begin:begin + MESSAGE] for begin in range(0, len(stream), MESSAGE)]


def teach(listener, texts):
    for payload in texts:
        listener.send(TEXTS, payload)
        listener.receive()
    if texts:
        listener.send(LEARN)
        listener.receive()


def start(program, texts):
    """CPU seconds until a new listener hears the first sound, and its memory in megabytes."""
    with Listener(program) as listener:
        teach(listener, texts)
        listener.task += 1
        listener.send(BEGIN)
        listener.send(AUDIO, bytes(2 * BUFFER))
        listener.receive()
        seconds = listener.cpu_seconds()
        noise = random.Random(1)
        for _ in range(30):
            listener.send(AUDIO, noise.randbytes(2 * BUFFER))
            listener.receive()
        listener.send(END)
        listener.receive()
        return seconds, listener.peak_megabytes()


def measure(program, name, texts):
    pairs = [(start(program, []), start(program, texts)) for _ in range(ROUNDS)]
    seconds, megabytes = (statistics.median(after[index] - before[index]
                                            for before, after in pairs) for index in (0, 1))
    before = statistics.median(before[0] for before, _ in pairs)
    Figure("dictation: later start because of the vocabulary", name, seconds, "s",
           "the start without it", seconds / before).print()
    Figure("dictation: memory of the vocabulary", name, megabytes, "MB").print()


def main():
    program = sys.argv[1]
    if not MODEL.exists():
        sys.exit("learning_bench: pocketsphinx-en-us is not installed")
    measure(program, "1,000 nodes", messages(library(1_000, 6_000, 400)))
    measure(program, "5,000 new words in 1 MiB", messages(library(3_500, 12_000, 5_500)))


if __name__ == "__main__":
    main()
