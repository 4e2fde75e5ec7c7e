#pragma once

#include "platform/speech/ListenerInquiry.h"

#include <QTest>

#include <chrono>
#include <optional>
#include <string>

/// What a listener answers when it is asked for a model, within a limit for a busy machine.
inline bool listenerHasModel(const std::string &program,
                             std::chrono::milliseconds limit = std::chrono::seconds(30))
{
    QObject owner;
    std::optional<bool> answer;
    new ListenerInquiry(
        program, [&answer](bool hasModel) { answer = hasModel; }, &owner, limit);
    return QTest::qWaitFor([&answer] { return answer.has_value(); }, 60'000) && *answer;
}
