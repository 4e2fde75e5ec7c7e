#pragma once

#include <istream>
#include <optional>

/// A model file of whisper.cpp: a header, the bands of the spectrogram, the vocabulary and the
/// tensors. The library may crash or take all memory if the sizes in it are wrong.
struct WhisperModelFile {
    int languageCount = 0; ///< English is the first one in the library's order

    /// Checks all sizes, but no weights. None if the file is damaged or of another kind.
    static std::optional<WhisperModelFile> read(std::istream &file);
};
