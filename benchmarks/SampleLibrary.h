#pragma once

#include "library/SatchelDocument.h"

/// A library of one tab with `nodes` nodes of 300 realistic characters: words, quotes, an address,
/// a line break.
SatchelDocument sampleLibrary(std::size_t nodes);
