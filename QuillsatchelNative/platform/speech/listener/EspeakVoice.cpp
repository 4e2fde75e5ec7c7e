#include "platform/speech/listener/EspeakVoice.h"

#include "platform/speech/listener/EspeakPhonemes.h"
#include "support/CPointer.h"

#include <dlfcn.h>
#include <utility>

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

struct EspeakVoice::Library {
    CPointer<void, &dlclose> handle { dlopen(LibraryName, RTLD_NOW | RTLD_LOCAL) };
    int (*initialize)(int output, int bufferLength, const char *path, int options) = nullptr;
    int (*setVoiceByName)(const char *name) = nullptr;
    const char *(*textToPhonemes)(const void **text, int textMode, int phonemeMode) = nullptr;
    int (*terminate)() = nullptr;

    bool isComplete()
    {
        return handle && find(initialize, "espeak_Initialize") &&
               find(setVoiceByName, "espeak_SetVoiceByName") &&
               find(textToPhonemes, "espeak_TextToPhonemes") && find(terminate, "espeak_Terminate");
    }

private:
    template <typename Function>
    bool find(Function &function, const char *name)
    {
        function = reinterpret_cast<Function>(dlsym(handle.get(), name));
        return function != nullptr;
    }
};

std::unique_ptr<EspeakVoice> EspeakVoice::open()
{
    auto library = std::make_unique<Library>();
    if (!library->isComplete() || library->initialize(NoSound, 0, nullptr, KeepProcess) < 0)
        return nullptr;
    std::unique_ptr<EspeakVoice> voice(new EspeakVoice(std::move(library)));
    const bool hasVoice = voice->m_library->setVoiceByName("en-us") == Success;
    return hasVoice ? std::move(voice) : nullptr;
}

EspeakVoice::EspeakVoice(std::unique_ptr<Library> library)
    : m_library(std::move(library))
{
}

EspeakVoice::~EspeakVoice()
{
    m_library->terminate();
}

std::optional<std::string> EspeakVoice::pronounce(const std::string &word) const
{
    const void *text = word.c_str();
    const auto *const mnemonics = m_library->textToPhonemes(&text, Utf8, SeparatedMnemonics);
    const bool isWhole = text == nullptr; // the library stops at the end of a clause
    return mnemonics && isWhole ? arpabetPhones(mnemonics) : std::nullopt;
}
