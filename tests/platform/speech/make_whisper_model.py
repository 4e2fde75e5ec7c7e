#!/usr/bin/env python3
"""Writes a tiny model for whisper.cpp, whose weights are chosen by hand.

usage: make_whisper_model.py FILE english|multilingual

The file has the layout of real models, except that it has one layer and 32 channels. The model counts
the time with a voice: "One," after about a second, "One, two," after two, up to "twelve." So it tests
that sound goes in and text comes out; it recognises nothing.
"""

import math
import struct
import sys

MAGIC = 0x67676D6C
HALF_PRECISION = 1  # the type of matrices
CHANNELS, HEADS, LAYERS = 32, 1, 1
AUDIO_CONTEXT, TEXT_CONTEXT = 1500, 448
BANDS, BINS = 80, 201  # of the spectrogram

WORDS = (" One,", " two,", " three,", " four,", " five,", " six,", " seven,", " eight,", " nine,",
         " ten,", " eleven,", " twelve.")
TOKENS = (" ", *WORDS)  # the library requires the token " "

# Encoder channels: how much louder low bands are than high ones, and a large constant that keeps the
# normalisation from removing this.
VOICE, CONSTANT = 0, 1
OFFSET = 5  # in the linear part of the activation function
LARGE = 100

# Decoder channels: one for each word, and these. The text ends where END exceeds the time.
END, TIME, ZERO = 12, 13, 14
WORD_WEIGHT = 10
WORDS_PER_VOICE = 16  # so that a second of a voice, of 30 seconds, is about a word
SMALL = 0.1  # embeddings, which are added to the input too


def band_edges():
    def hertz(mel):
        return mel * 200 / 3 if mel < 15 else 1000 * math.exp((mel - 15) * math.log(6.4) / 27)
    highest = 15 + math.log(8) / math.log(6.4) * 27
    return [hertz(highest * index / (BANDS + 1)) for index in range(BANDS + 2)]


def band_filters():
    edges = band_edges()
    for low, center, high in zip(edges, edges[1:], edges[2:]):
        for frequency in (40 * index for index in range(BINS)):
            rise, fall = (frequency - low) / (center - low), (high - frequency) / (high - center)
            yield 2 / (high - low) * max(0, min(rise, fall))


class Model:
    def __init__(self, file, is_multilingual):
        self.file = file
        self.vocabulary = 51865 if is_multilingual else 51864
        self.end_token = 50257 if is_multilingual else 50256
        self.first_word = 3 if is_multilingual else 1  # its position follows those of the prompt

    def write_numbers(self, *numbers):
        self.file.write(struct.pack(f"<{len(numbers)}i", *numbers))

    def write_header(self):
        self.write_numbers(MAGIC, self.vocabulary, AUDIO_CONTEXT, CHANNELS, HEADS, LAYERS,
                           TEXT_CONTEXT, CHANNELS, HEADS, LAYERS, BANDS, HALF_PRECISION)
        self.write_numbers(BANDS, BINS)
        self.file.write(struct.pack(f"<{BANDS * BINS}f", *band_filters()))
        self.write_numbers(len(TOKENS))
        for token in map(str.encode, TOKENS):
            self.write_numbers(len(token))
            self.file.write(token)

    def write_tensor(self, name, shape, weights, is_half):
        """Of the weights {index: value}; all others are zero."""
        self.write_numbers(len(shape), len(name), HALF_PRECISION if is_half else 0)
        self.write_numbers(*reversed(shape))
        self.file.write(name.encode())
        code, size = ("<e", 2) if is_half else ("<f", 4)
        data = bytearray(size * math.prod(shape))
        strides = [math.prod(shape[axis + 1:]) for axis in range(len(shape))]
        for index, value in (weights or {}).items():
            struct.pack_into(code, data, size * sum(map(int.__mul__, index, strides)), value)
        self.file.write(data)

    def write_matrix(self, name, rows, columns, weights=None):
        self.write_tensor(f"{name}.weight", (rows, columns), weights, True)

    def write_bias(self, name, size=CHANNELS, weights=None):
        self.write_tensor(f"{name}.bias", (size,), weights, False)

    def write_linear(self, name, rows=CHANNELS, columns=CHANNELS):
        self.write_matrix(name, rows, columns)
        self.write_bias(name, rows)

    def write_norm(self, name, scale=1.0, bias=None):
        self.write_tensor(f"{name}.weight", (CHANNELS,),
                          {(channel,): scale for channel in range(CHANNELS)}, False)
        self.write_bias(name, weights=bias)

    def write_attention(self, name, values=None, outputs=None):
        """All positions count alike."""
        self.write_linear(f"{name}.query")
        self.write_matrix(f"{name}.key", CHANNELS, CHANNELS)
        self.write_matrix(f"{name}.value", CHANNELS, CHANNELS, values)
        self.write_bias(f"{name}.value")
        self.write_matrix(f"{name}.out", CHANNELS, CHANNELS, outputs)
        self.write_bias(f"{name}.out")

    def write_feed_forward(self, name):
        self.write_norm(f"{name}.mlp_ln")
        self.write_linear(f"{name}.mlp.0", rows=4 * CHANNELS)
        self.write_linear(f"{name}.mlp.2", columns=4 * CHANNELS)

    def write_convolution(self, name, inputs, weights, bias):
        self.write_tensor(f"{name}.weight", (CHANNELS, inputs, 3), weights, True)
        self.write_tensor(f"{name}.bias", (CHANNELS, 1), bias, False)

    def write_encoder(self):
        self.write_tensor("encoder.positional_embedding", (AUDIO_CONTEXT, CHANNELS), None, False)
        bands = {(VOICE, band, 1): 1 / 40 if band < 40 else -1 / 20
                 for band in (*range(40), *range(60, 80))}
        self.write_convolution("encoder.conv1", BANDS, bands, {(VOICE, 0): OFFSET})
        self.write_convolution("encoder.conv2", CHANNELS, {(VOICE, VOICE, 1): 1},
                               {(CONSTANT, 0): LARGE})
        # The normalisation of the channels for silence, undone.
        mean = (OFFSET + LARGE) / CHANNELS
        deviation = math.sqrt((OFFSET**2 + LARGE**2) / CHANNELS - mean**2)
        self.write_norm("encoder.ln_post", deviation, {(VOICE,): mean - OFFSET})
        self.write_attention("encoder.blocks.0.attn")
        self.write_norm("encoder.blocks.0.attn_ln")
        self.write_feed_forward("encoder.blocks.0")

    def write_decoder(self):
        positions = {}
        for index in range(TEXT_CONTEXT - self.first_word):
            position = self.first_word + index
            if index < len(WORDS):
                positions[position, index] = WORD_WEIGHT
            positions[position, END] = WORD_WEIGHT + index - 0.5
        self.write_tensor("decoder.positional_embedding", (TEXT_CONTEXT, CHANNELS), positions, False)
        # Differences, so that the mean that the normalisation subtracts does not count.
        tokens = {(self.end_token, END): SMALL, (self.end_token, TIME): -SMALL}
        for index in range(len(WORDS)):
            tokens |= {(1 + index, index): SMALL, (1 + index, ZERO): -SMALL}
        self.write_matrix("decoder.token_embedding", self.vocabulary, CHANNELS, tokens)
        self.write_norm("decoder.ln", 100)
        self.write_attention("decoder.blocks.0.attn")
        self.write_norm("decoder.blocks.0.attn_ln")
        self.write_attention("decoder.blocks.0.cross_attn", {(TIME, VOICE): 1},
                             {(TIME, TIME): WORDS_PER_VOICE})
        self.write_norm("decoder.blocks.0.cross_attn_ln")
        self.write_feed_forward("decoder.blocks.0")


def main():
    path, kind = sys.argv[1:]
    with open(path, "wb") as file:
        model = Model(file, {"english": False, "multilingual": True}[kind])
        model.write_header()
        model.write_encoder()
        model.write_decoder()


if __name__ == "__main__":
    main()
