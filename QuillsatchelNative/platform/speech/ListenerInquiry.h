#pragma once

#include "platform/speech/ListenerProcess.h"

#include <QTimer>

#include <chrono>
#include <functional>
#include <string>

/// Asks a listener whether it has a model for the user's language. Deletes itself after the answer.
class ListenerInquiry final : public QObject
{
public:
    /// `program` is the path of the listener. `receive` gets false too if the listener cannot be
    /// started or does not answer within `limit`. Deleting the inquiry drops the answer.
    ListenerInquiry(const std::string &program, std::function<void(bool hasModel)> receive,
                    QObject *parent, std::chrono::milliseconds limit = std::chrono::seconds(2));

private:
    void answer(bool hasModel);

    std::function<void(bool)> m_receive; // null after the answer
    ListenerProcess m_listener;
    QTimer m_timer;
};
