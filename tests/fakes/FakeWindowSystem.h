#pragma once

#include "platform/WindowSystem.h"

/// Counts what it is asked for; the test starts and stops its compositor.
class FakeWindowSystem final : public WindowSystem
{
    Q_OBJECT

public:
    void showOnAllDesktops(QWindow & /*window*/) override { ++showings; }

    void activate(QWindow & /*window*/, const StartupToken & /*token*/) override { ++activations; }

    int showings = 0;
    int activations = 0;
};
