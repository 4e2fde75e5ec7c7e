#pragma once

#include "library/SatchelDocument.h"

/// A library of one tab with `nodes` nodes of 300 characters, like what people write: words,
/// a quotation, an address, a line break.
SatchelDocument sampleLibrary(std::size_t nodes);
