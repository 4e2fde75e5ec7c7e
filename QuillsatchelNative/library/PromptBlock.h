#pragma once

#include "library/BlockColor.h"

#include <QUuid>

#include <string>

/// One text block, a "node" to the user. Copying it copies its text.
struct PromptBlock {
    QUuid id = QUuid::createUuid(); ///< never changes once made
    std::string text {};            ///< UTF-8, any length, may hold line breaks
    BlockColor color {};

    bool operator==(const PromptBlock &) const = default;
};
