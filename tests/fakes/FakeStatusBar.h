#pragma once

#include "platform/StatusBar.h"

/// The test sets how the desktop shows icons.
class FakeStatusBar final : public StatusBar
{
    Q_OBJECT

public:
    void begin() override { ++beginCalls; }

    bool hasMenuBar() const override { return false; }

    int beginCalls = 0;
};
