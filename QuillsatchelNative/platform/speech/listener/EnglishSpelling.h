#pragma once

#include <string>

/// Models have small letters only: "i" and "i'm" become "I" and "I'm". Other words stay.
std::string englishSpelling(std::string word);
