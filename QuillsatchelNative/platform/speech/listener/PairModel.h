#pragma once

#include "platform/speech/listener/UserVocabulary.h"

#include <string>

/// A language model of the words and pairs of `vocabulary`, in the ARPA format: a text that lists
/// probabilities. Pairs that do not occur get their share by the frequency of the second word.
/// Empty without words.
std::string pairModel(const UserVocabulary &vocabulary);
