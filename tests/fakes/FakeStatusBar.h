#pragma once

#include "platform/StatusBar.h"

/// The test says what kind of icons the desktop shows.
class FakeStatusBar final : public StatusBar
{
    Q_OBJECT

public:
    void begin() override { ++beginnings; }

    int beginnings = 0;
};
