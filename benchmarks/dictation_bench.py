#!/usr/bin/env python3
"""Word error rate and speed of the listener, with synthetic voices and recordings of people.

usage: dictation_bench.py LISTENER [--all]

LISTENER is the program, such as build/bench/modules/listener; --all measures every voice and
sentence. The voices are flite's, the recordings come from Debian's package pocketsphinx-testdata;
missing ones are skipped.
Buffers are sent without waiting for real time. Delays are computed for a microphone that delivers
buffers in real time and a processor that does nothing else, from the CPU time of the listener: from
the first sound to the first words, and from the last sound to all words. Also measures whether the
last word is lost if "Stop" is pressed soon after it, and how many shown words are replaced.
"""

import array
import difflib
import pathlib
import random
import re
import shutil
import statistics
import struct
import subprocess
import sys
import tempfile
import wave

from figure import Figure

RATE = 16_000
BUFFER = 1024  # samples
HEADER = struct.Struct("=IIBBH")  # payload size, task, version, kind, zero
VERSION = 2
BEGIN, AUDIO, END, CANCEL, UNCHANGED, PARTIAL, FINAL, TEXTS, LEARN = range(9)

RECORDINGS = pathlib.Path("/usr/share/pocketsphinx/test/data")
VOICES = ("slt", "rms", "awb", "kal16")
STOPS = (0, 0.15, 0.3, 0.5)  # seconds after the last sound
NOISE = 18  # amplitude, of 32,768: about 40 dB below the voice

SENTENCES = """
summarize the following text in three bullet points
write a short and friendly answer to this email
what are the advantages and disadvantages of this approach
explain this error message and tell me how to fix it
translate the text below into simple english
plan a three day trip to paris with a small budget
correct the spelling and the grammar but keep my style
give me ten ideas for a birthday present under fifty dollars
compare these two offers and tell me which one is better
rewrite this paragraph so that a child can understand it
make a shopping list for a dinner with six guests
write a function that sorts a list of names by their length
what questions should i ask at the end of a job interview
find the mistakes in my argument and be honest about them
turn these notes into a clear agenda for the meeting
suggest a better title for this article
describe the picture in one sentence for people who cannot see it
i'm looking for a recipe with rice tomatoes and chicken
how can i learn to play the piano without a teacher
write a polite reminder about the unpaid invoice
remove everything from the table that is older than one year
tell me a story about a dog who wanted to fly
what happened in the world on the day that i was born
thank you for your message i will call you back tomorrow morning
""".strip().splitlines()


class Listener:
    """A listener process, which recognises one dictation after the other."""

    def __init__(self, program):
        self.process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.task = 0

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.stdout.close()
        self.process.wait()

    def send(self, kind, payload=b""):
        self.process.stdin.write(HEADER.pack(len(payload), self.task, VERSION, kind, 0) + payload)
        self.process.stdin.flush()

    def receive(self):
        size, _, _, kind, _ = HEADER.unpack(self.process.stdout.read(HEADER.size))
        return kind, self.process.stdout.read(size).decode()

    def cpu_seconds(self):
        with open(f"/proc/{self.process.pid}/schedstat", encoding="ascii") as times:
            return int(times.read().split()[0]) / 1e9

    def recognize(self, samples):
        """The text, the partial results with their times, and the computing time."""
        self.task += 1
        self.send(BEGIN)
        free = cost = 0.0
        partials = []
        for begin in range(0, len(samples), BUFFER):
            started = self.cpu_seconds()
            self.send(AUDIO, samples[begin:begin + BUFFER].tobytes())
            kind, text = self.receive()
            took = self.cpu_seconds() - started
            captured = (begin + BUFFER) / RATE
            free = max(free, captured) + took
            cost += took
            if kind == PARTIAL and text:
                partials.append((free, text))
        started = self.cpu_seconds()
        self.send(END)
        _, text = self.receive()
        cost += self.cpu_seconds() - started
        return {"text": text, "partials": partials, "cost": cost}

    def peak_megabytes(self):
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as status:
            return int(re.search(r"VmHWM:\s+(\d+)", status.read())[1]) / 1024


def samples_of(path):
    """The samples of a file with 16 bits, one channel and RATE samples a second."""
    if path.suffix == ".raw":
        return array.array("h", path.read_bytes())
    with wave.open(str(path)) as sound:
        assert (sound.getnchannels(), sound.getsampwidth(), sound.getframerate()) == (1, 2, RATE)
        return array.array("h", sound.readframes(sound.getnframes()))


def in_quiet_room(samples, loudness):
    """The samples with soft noise and a pause before and after them."""
    pause = [0] * (RATE // 2)
    noise = random.Random(1)
    return array.array("h", (int(sample * loudness) + noise.randint(-NOISE, NOISE)
                             for sample in (*pause, *samples, *pause, *pause)))


def speak(sentence, voice, folder):
    """The sentence in a quiet room, and the times of its first and last sound."""
    path = folder / "voice.wav"
    subprocess.run(["flite", "-voice", voice, "-t", sentence, "-o", path], check=True)
    voice_samples = samples_of(path)
    loud = max(map(abs, voice_samples)) / 20
    sounds = [index / RATE + 0.5 for index, value in enumerate(voice_samples) if abs(value) > loud]
    return in_quiet_room(voice_samples, 0.5), (sounds[0], sounds[-1])


def without_marks(text):
    """The words; some engines write punctuation too."""
    return [word for word in (word.strip(".,;:?!") for word in text.split()) if word]


def word_errors(expected, recognized):
    """The edit distance in words."""
    before = list(range(len(recognized) + 1))
    for row, word in enumerate(expected, 1):
        after = [row]
        for column, other in enumerate(recognized, 1):
            after.append(min(before[column] + 1, after[-1] + 1,
                             before[column - 1] + (word != other)))
        before = after
    return before[-1]


def shown_at(time, partials):
    """The words shown at that time."""
    return next((text for moment, text in reversed(partials) if moment <= time), "").split()


def has_last_word(shown, final):
    return len(shown) >= len(final) and shown[-1:] == final[-1:]


def replaced_words(texts):
    """How many words of each text the next one lacks."""
    pairs = ((before, difflib.SequenceMatcher(None, before, after, autojunk=False))
             for before, after in zip(texts, texts[1:]))
    return sum(len(before) - sum(block.size for block in matcher.get_matching_blocks())
               for before, matcher in pairs)


class Score:
    def __init__(self, name):
        self.name = name
        self.words = self.errors = 0
        self.seconds = self.cost = self.memory = 0.0
        self.first_partials = []
        self.last_partials = []
        self.last_words = {stop: [] for stop in STOPS}
        self.replaced = self.final_words = 0

    def add(self, sentence, samples, sounds, result, shows_errors):
        expected, recognized = sentence.lower().split(), without_marks(result["text"].lower())
        errors = word_errors(expected, recognized)
        self.words += len(expected)
        self.errors += errors
        self.seconds += len(samples) / RATE
        self.cost += result["cost"]
        partials, final = result["partials"], result["text"].split()
        if sounds and partials:
            self.first_partials.append(partials[0][0] - sounds[0])
            self.last_partials.append(partials[-1][0] - sounds[1])
            for stop, kept in self.last_words.items():
                kept.append(has_last_word(shown_at(sounds[1] + stop, partials), final))
        self.replaced += replaced_words([text.split() for _, text in partials] + [final])
        self.final_words += len(final)
        if shows_errors and errors:
            print(f"    {sentence}\n  > {result['text']}")

    def size(self):
        return f"{self.name}, {self.words:,} words"

    def report_words(self):
        Figure("dictation: words that are wrong", self.size(), 100 * self.errors / self.words,
               "%").print()
        Figure("dictation: CPU time to understand", self.size(), self.cost, "s", "the time spoken",
               self.cost / self.seconds).print()

    def report_delays(self):
        size = self.size()
        for what, delays in (("first words after the first sound", self.first_partials),
                             ("all words after the last sound", self.last_partials)):
            if delays:
                Figure(f"dictation: {what}", size, statistics.median(delays), "s").print()
        for stop, kept in self.last_words.items():
            if kept:
                Figure(f"dictation: last words lost by a stop {stop} s after them", size,
                       100 * kept.count(False) / len(kept), "%").print()
        Figure("dictation: replaced words for each final word", size,
               self.replaced / max(self.final_words, 1), "").print()


def recordings():
    for folder in ("librivox", "cards"):
        transcription = next(RECORDINGS.glob(f"{folder}/*transcription"), None)
        for line in transcription.read_text().splitlines() if transcription else ():
            words, name = re.fullmatch(r"<s>(.*)</s>\s*\((.*)\)", line.strip()).groups()
            yield " ".join(words.split()), RECORDINGS / folder / f"{name}.wav"
    for name, words in (("goforward", "go forward ten meters"), ("something", "go somewhere and do something")):
        if (RECORDINGS / f"{name}.raw").exists():
            yield words, RECORDINGS / f"{name}.raw"


def recognize_all(name, program, takes, total, is_complete):
    """Passes takes (words, samples, times of the sounds) to a new listener."""
    score = Score(name)
    with Listener(program) as listener:  # not yet adapted to this voice
        for words, samples, sounds in takes:
            result = listener.recognize(samples)
            score.add(words, samples, sounds, result, is_complete)
            total.add(words, samples, sounds, result, False)
        total.memory = max(total.memory, listener.peak_megabytes())
    if score.words:
        score.report_words()


def main():
    program, is_complete = sys.argv[1], "--all" in sys.argv
    voices = VOICES if is_complete else VOICES[:2]
    sentences = SENTENCES if is_complete else SENTENCES[::3]
    total = Score("all")
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for voice in voices if shutil.which("flite") else ():
            takes = ((words, *speak(words, voice, folder)) for words in sentences)
            recognize_all(f"voice {voice}", program, takes, total, is_complete)
    takes = ((words, in_quiet_room(samples_of(path), 0.9), None) for words, path in recordings())
    recognize_all("recordings", program, takes, total, is_complete)
    if not total.words:
        sys.exit("dictation_bench: neither flite nor pocketsphinx-testdata is installed")
    total.report_words()
    total.report_delays()
    Figure("dictation: memory of the listener", "at most", total.memory, "MB").print()


if __name__ == "__main__":
    main()
