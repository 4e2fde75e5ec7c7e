#pragma once

#include "library/BlockColor.h"
#include "library/Excerpt.h"

#include <QUuid>

/// A node found by `NodeSearch`.
struct NodeHit {
    QUuid tabID;
    QUuid blockID;
    BlockColor color;
    Excerpt text;    ///< around the first match; the beginning if only the tab's name matches
    Excerpt tabName; ///< the beginning of the name

    bool operator==(const NodeHit &) const = default;
};
