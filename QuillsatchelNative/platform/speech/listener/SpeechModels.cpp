#include "platform/speech/listener/SpeechModels.h"

#include "platform/speech/listener/LanguageTag.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace
{

using Path = std::filesystem::path;

std::string valueOf(const char *variable)
{
    const auto *const value = std::getenv(variable);
    return value ? value : "";
}

Path userFolder()
{
    const Path folder = valueOf("XDG_DATA_HOME");
    return folder.is_absolute() ? folder : Path(valueOf("HOME")) / ".local/share";
}

/// Sorted, so that the choice does not depend on the file system.
std::vector<std::string> namesIn(const Path &folder)
{
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        names.push_back(entry->path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

SpeechModels SpeechModels::ofEnvironment()
{
    Folders folders { userFolder() };
    auto list = valueOf("XDG_DATA_DIRS");
    if (list.empty())
        list = "/usr/local/share:/usr/share";
    for (std::size_t begin = 0; begin <= list.size();) {
        const auto end = std::min(list.find(':', begin), list.size());
        folders.emplace_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    std::erase_if(folders, [](const Path &folder) { return !folder.is_absolute(); });
    return SpeechModels(std::move(folders));
}

SpeechModels::SpeechModels(Folders dataFolders)
    : m_dataFolders(std::move(dataFolders))
{
}

std::optional<SpeechModel> SpeechModels::find(std::string_view engineFolder, std::string_view tag,
                                              IsComplete isComplete) const
{
    if (tag.empty())
        return std::nullopt;
    for (const auto &dataFolder : m_dataFolders) {
        SpeechModel model { .path = dataFolder / engineFolder / tag, .tag = std::string(tag) };
        if (isComplete(model))
            return model;
    }
    for (const auto &dataFolder : m_dataFolders) {
        for (auto &other : namesIn(dataFolder / engineFolder)) {
            SpeechModel model { .path = dataFolder / engineFolder / other, .tag = other };
            if (languageOf(other) == languageOf(tag) && isComplete(model))
                return model;
        }
    }
    return std::nullopt;
}

std::optional<Path> SpeechModels::findFile(std::string_view engineFolder,
                                           const std::function<bool(const Path &)> &isUsable) const
{
    for (const auto &dataFolder : m_dataFolders) {
        for (const auto &name : namesIn(dataFolder / engineFolder)) {
            auto path = dataFolder / engineFolder / name;
            if (isUsable(path))
                return path;
        }
    }
    return std::nullopt;
}
