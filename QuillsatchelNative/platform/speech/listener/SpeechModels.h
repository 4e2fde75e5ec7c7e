#pragma once

#include "platform/speech/listener/SpeechModel.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The models that are installed, for all users or for this one, below the data folders: in each, a
/// folder that an engine names has a folder for every language.
class SpeechModels
{
public:
    using Folders = std::vector<std::filesystem::path>;

    /// Whether what lies in a model's folder is a whole model.
    using IsComplete = bool (*)(const SpeechModel &);

    /// The data folders by the desktop's convention, the user's own first.
    static SpeechModels ofEnvironment();

    explicit SpeechModels(Folders dataFolders);

    /// The model of that very language, or else one of the same language spoken elsewhere.
    std::optional<SpeechModel> find(std::string_view engineFolder, std::string_view tag,
                                    IsComplete isComplete) const;

private:
    const Folders m_dataFolders;
};
