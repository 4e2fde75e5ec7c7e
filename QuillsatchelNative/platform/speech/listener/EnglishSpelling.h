#pragma once

#include <string>

/// Capitalises "i" and words such as "i'm", because models write lower case only.
std::string englishSpelling(std::string word);
