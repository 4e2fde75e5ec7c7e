#pragma once

#include "platform/WindowSystem.h"

#include <QWindow>

#include <vector>

/// Counts what it is asked for; the test starts and stops its compositor.
class FakeWindowSystem final : public WindowSystem
{
    Q_OBJECT

public:
    void showOnAllDesktops(QWindow & /*window*/) override { ++showings; }

    void activate(QWindow &window, const StartupToken &token) override
    {
        tokens.push_back(token);
        window.requestActivate();
    }

    int showings = 0;
    std::vector<StartupToken> tokens; ///< one an activation
};
