#pragma once

#include "platform/ApplicationChooser.h"

#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Records requests, which the test answers through `receive`.
class FakeApplicationChooser final : public ApplicationChooser
{
public:
    struct Request {
        QString title;
        QString prompt;
        std::function<void(const std::optional<std::string> &)> receive;
    };

    void begin(const QString &title, const QString &prompt,
               std::function<void(const std::optional<std::string> &)> receive) override
    {
        requests.push_back({ title, prompt, std::move(receive) });
    }

    std::vector<Request> requests;
};
