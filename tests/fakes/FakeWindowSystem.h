#pragma once

#include "platform/WindowSystem.h"

/// Counts what it is asked for; the test starts and stops its compositor.
class FakeWindowSystem final : public WindowSystem
{
    Q_OBJECT

public:
    void showOnAllDesktops(QWindow & /*window*/) override { ++showings; }

    int showings = 0;
};
