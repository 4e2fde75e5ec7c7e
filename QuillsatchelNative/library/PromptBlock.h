#pragma once

#include "library/BlockColor.h"

#include <QUuid>

#include <string>

/// A text block; users see it as a "node".
struct PromptBlock {
    QUuid id = QUuid::createUuid(); ///< never changes
    std::string text {};            ///< UTF-8, any length, may contain line breaks
    BlockColor color {};

    bool operator==(const PromptBlock &) const = default;
};
