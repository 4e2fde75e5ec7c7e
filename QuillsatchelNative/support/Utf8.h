#pragma once

#include <QString>

#include <string_view>

/// `text` (UTF-8) as a string of Qt's, whole: Qt's own conversion takes a U+FEFF at the beginning
/// for a byte order mark and drops it.
QString stringFromUtf8(std::string_view text);
