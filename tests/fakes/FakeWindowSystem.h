#pragma once

#include "platform/WindowSystem.h"

#include <QSize>
#include <QWindow>

#include <vector>

/// Records the calls it gets. The test starts and stops the compositor.
class FakeWindowSystem final : public WindowSystem
{
    Q_OBJECT

public:
    void showOnAllDesktops(QWindow & /*window*/) override { ++showOnAllDesktopsCalls; }

    void blurBehind(QWindow & /*window*/, const QSize &size, int radius) override
    {
        blurs.push_back({ size, radius });
    }

    void activate(QWindow &window, const StartupToken &token) override
    {
        tokens.push_back(token);
        window.requestActivate();
    }

    /// The arguments of `blurBehind`, in points.
    struct Blur {
        QSize size;
        int radius = 0;

        bool operator==(const Blur &) const = default;
    };

    int showOnAllDesktopsCalls = 0;
    std::vector<Blur> blurs;
    std::vector<StartupToken> tokens; ///< one per call of `activate`
};
