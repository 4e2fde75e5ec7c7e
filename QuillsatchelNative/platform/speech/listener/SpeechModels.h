#pragma once

#include "platform/speech/listener/SpeechModel.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The models that are installed for all users or for this one: the folder ENGINE/TAG of each data
/// folder, or a file in ENGINE, where ENGINE is a path that the engine defines.
class SpeechModels
{
public:
    using Folders = std::vector<std::filesystem::path>;

    /// Whether the folder of a model has all its files.
    using IsComplete = bool (*)(const SpeechModel &);

    /// The models below `$XDG_DATA_HOME` and, after it, the folders in `$XDG_DATA_DIRS`.
    static SpeechModels ofEnvironment();

    explicit SpeechModels(Folders dataFolders);

    /// The model of exactly this language, otherwise one of another region.
    std::optional<SpeechModel> find(std::string_view engineFolder, std::string_view tag,
                                    IsComplete isComplete) const;
    /// The first usable file, by name, in the folder ENGINE of the first data folder that has one.
    std::optional<std::filesystem::path>
    findFile(std::string_view engineFolder,
             const std::function<bool(const std::filesystem::path &)> &isUsable) const;

private:
    const Folders m_dataFolders;
};
