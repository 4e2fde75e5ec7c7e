#pragma once

#include <chrono>
#include <string>

/// Asks the listener, whose path is `program`, whether it has a model for the user's language.
/// False too if it cannot be started, or does not answer within `limit`.
bool listenerHasModel(const std::string &program,
                      std::chrono::milliseconds limit = std::chrono::seconds(2));
