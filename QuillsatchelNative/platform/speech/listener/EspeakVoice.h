#pragma once

#include <memory>
#include <optional>
#include <string>

/// Pronounces words by the rules of the library eSpeak NG, which is optional and therefore opened
/// at run time. It makes no sound. At most one object at a time.
class EspeakVoice
{
public:
    /// Opens the library and its English data. Null if they are not installed.
    static std::unique_ptr<EspeakVoice> open();
    ~EspeakVoice();
    EspeakVoice(const EspeakVoice &) = delete;
    EspeakVoice &operator=(const EspeakVoice &) = delete;

    /// The phones of a word (UTF-8), as `arpabetPhones` gives them.
    std::optional<std::string> pronounce(const std::string &word) const;

private:
    struct Library;

    explicit EspeakVoice(std::unique_ptr<Library> library);

    const std::unique_ptr<Library> m_library;
};
