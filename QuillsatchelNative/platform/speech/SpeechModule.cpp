#include "platform/Speech.h"
#include "platform/speech/ListenerInquiry.h"
#include "platform/speech/ListenerRecognizer.h"
#include "platform/speech/PulseAudioEngine.h"

#include <QObject>

#include <dlfcn.h>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

extern "C" Q_DECL_EXPORT Speech *make(MainQueue &mainQueue);

namespace
{

/// The listener is installed beside the module.
std::string listenerPath()
{
    Dl_info module {};
    if (dladdr(reinterpret_cast<const void *>(&make), &module) == 0)
        return {};
    return std::filesystem::path(module.dli_fname).replace_filename("listener").string();
}

/// Speech recognition on this machine alone: no audio leaves it.
class ListenerSpeech final : public Speech
{
public:
    explicit ListenerSpeech(MainQueue &mainQueue)
        : m_mainQueue(mainQueue)
    {
    }

    void requestAuthorization(std::function<void(AuthorizationStatus)> receive) override
    {
        if (m_hasModel) {
            receive(AuthorizationStatus::authorized);
            return;
        }
        const auto answer = [this, receive = std::move(receive)](bool hasModel) {
            m_hasModel = hasModel;
            receive(AuthorizationStatus::authorized);
        };
        new ListenerInquiry(m_listener, answer, &m_inquiries);
    }

    std::unique_ptr<SpeechRecognizer> makeRecognizer(VocabularySource &vocabulary) override
    {
        if (!m_hasModel)
            return nullptr;
        return std::make_unique<ListenerRecognizer>(std::vector { m_listener }, m_mainQueue,
                                                    ListenerLimits(), &vocabulary);
    }

    std::unique_ptr<AudioEngine> makeAudioEngine() override
    {
        return std::make_unique<PulseAudioEngine>();
    }

private:
    MainQueue &m_mainQueue;
    const std::string m_listener = listenerPath();
    bool m_hasModel = false; // by the latest answer
    QObject m_inquiries;     // their owner
};

} // namespace

Speech *make(MainQueue &mainQueue)
{
    return std::make_unique<ListenerSpeech>(mainQueue).release();
}
