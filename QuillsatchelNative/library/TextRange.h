#pragma once

#include <QtGlobal>

/// A part of a QString, in UTF-16 code units.
struct TextRange {
    qsizetype start = 0;
    qsizetype length = 0;

    bool operator==(const TextRange &) const = default;
};
