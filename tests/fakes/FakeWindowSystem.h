#pragma once

#include "platform/WindowSystem.h"

#include <QSize>
#include <QWindow>

#include <vector>

/// Counts what it is asked for; the test starts and stops its compositor.
class FakeWindowSystem final : public WindowSystem
{
    Q_OBJECT

public:
    void showOnAllDesktops(QWindow & /*window*/) override { ++showings; }

    void blurBehind(QWindow & /*window*/, const QSize &size, int radius) override
    {
        blurs.push_back({ size, radius });
    }

    void activate(QWindow &window, const StartupToken &token) override
    {
        tokens.push_back(token);
        window.requestActivate();
    }

    /// What is blurred, in points.
    struct Blur {
        QSize size;
        int radius = 0;

        bool operator==(const Blur &) const = default;
    };

    int showings = 0;
    std::vector<Blur> blurs;          ///< one each time it is asked for
    std::vector<StartupToken> tokens; ///< one an activation
};
