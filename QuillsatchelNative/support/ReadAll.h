#pragma once

#include "support/ByteSink.h"

/// Passes all bytes of an open regular file to `sink`. False if reading fails.
bool readAll(int file, const ByteSink &sink);
