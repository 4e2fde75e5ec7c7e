#pragma once

#include "library/PromptBlock.h"

#include <QUuid>

#include <string>
#include <vector>

/// A tab with its nodes.
struct PromptTab {
    QUuid id = QUuid::createUuid();
    std::string name = "Prompts";       ///< UTF-8, may be empty
    std::vector<PromptBlock> blocks {}; ///< top to bottom

    bool operator==(const PromptTab &) const = default;
};
