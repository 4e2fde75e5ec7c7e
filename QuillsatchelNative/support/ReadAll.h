#pragma once

#include "support/ByteSink.h"

/// Gives `sink` all bytes of an open regular file, from its beginning. False if reading fails.
bool readAll(int file, const ByteSink &sink);
