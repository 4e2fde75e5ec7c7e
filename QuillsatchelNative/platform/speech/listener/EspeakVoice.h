#pragma once

#include <functional>
#include <optional>
#include <string>

/// Pronounces words by the rules of the library eSpeak NG, which is optional and therefore opened
/// at run time. It makes no sound. For one thread at a time.
class EspeakVoice
{
public:
    /// Loads the library and its English data on the first call. None if they are not installed.
    static std::optional<EspeakVoice> open();

    /// The phones of a word (UTF-8), as `arpabetPhones` gives them.
    std::optional<std::string> pronounce(const std::string &word) const;

private:
    struct Library;

    explicit EspeakVoice(const Library &library)
        : m_library(library)
    {
    }

    std::reference_wrapper<const Library> m_library;
};
