#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The phones of the English model (ARPABET) for phoneme mnemonics of eSpeak NG that are separated
/// by "_" or spaces, such as "dZ_'eI_s_@_n". None if a mnemonic is unknown or nothing is to be
/// said.
std::optional<std::string> arpabetPhones(std::string_view mnemonics);
