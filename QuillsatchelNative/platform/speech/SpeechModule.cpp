#include "platform/speech/ListenerSpeech.h"

#include <QtGlobal>

#include <dlfcn.h>
#include <filesystem>
#include <memory>

class MainQueue;

extern "C" Q_DECL_EXPORT Speech *make(MainQueue &mainQueue);

namespace
{

/// The listener lies beside the module.
std::string listenerPath()
{
    Dl_info module {};
    if (dladdr(reinterpret_cast<const void *>(&make), &module) == 0)
        return {};
    return std::filesystem::path(module.dli_fname).replace_filename("listener").string();
}

} // namespace

Speech *make(MainQueue & /*mainQueue*/)
{
    return std::make_unique<ListenerSpeech>(listenerPath()).release();
}
