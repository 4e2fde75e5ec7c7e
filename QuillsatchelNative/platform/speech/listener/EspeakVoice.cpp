#include "platform/speech/listener/EspeakVoice.h"

#include "platform/speech/listener/EspeakPhonemes.h"

#include <dlfcn.h>

namespace
{

// From espeak-ng/speak_lib.h. The library's name guarantees its binary interface.
constexpr auto LibraryName = "libespeak-ng.so.1";
constexpr int NoSound = 2;          // AUDIO_OUTPUT_SYNCHRONOUS without a callback
constexpr int KeepProcess = 0x8000; // espeakINITIALIZE_DONT_EXIT
constexpr int Utf8 = 1;             // espeakCHARS_UTF8
constexpr int SeparatedMnemonics = '_' << 8;
constexpr int Success = 0;

} // namespace

/// The library and its English data, loaded on first use. Stays until the process ends, because the
/// library leaks memory when it is terminated, and cannot begin again without being unloaded.
struct EspeakVoice::Library {
    static const Library &shared()
    {
        static const Library library;
        return library;
    }

    void *handle = dlopen(LibraryName, RTLD_NOW | RTLD_LOCAL);
    int (*initialize)(int output, int bufferLength, const char *path, int options) = nullptr;
    int (*setVoiceByName)(const char *name) = nullptr;
    const char *(*textToPhonemes)(const void **text, int textMode, int phonemeMode) = nullptr;
    bool isReady = false;

private:
    Library()
    {
        isReady = handle && find(initialize, "espeak_Initialize") &&
                  find(setVoiceByName, "espeak_SetVoiceByName") &&
                  find(textToPhonemes, "espeak_TextToPhonemes") &&
                  initialize(NoSound, 0, nullptr, KeepProcess) >= 0 &&
                  setVoiceByName("en-us") == Success;
    }

    template <typename Function>
    bool find(Function &function, const char *name)
    {
        function = reinterpret_cast<Function>(dlsym(handle, name));
        return function != nullptr;
    }
};

std::optional<EspeakVoice> EspeakVoice::open()
{
    const auto &library = Library::shared();
    return library.isReady ? std::optional(EspeakVoice(library)) : std::nullopt;
}

std::optional<std::string> EspeakVoice::pronounce(const std::string &word) const
{
    const void *text = word.c_str();
    const auto *const mnemonics = m_library.get().textToPhonemes(&text, Utf8, SeparatedMnemonics);
    const bool isWhole = text == nullptr; // the library stops at the end of a clause
    return mnemonics && isWhole ? arpabetPhones(mnemonics) : std::nullopt;
}
