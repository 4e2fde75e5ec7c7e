#include "app/ScreenChanges.h"

#include <QGuiApplication>
#include <QScreen>

#include <chrono>
#include <utility>

namespace
{

constexpr std::chrono::milliseconds SettlingTime(200);

} // namespace

ScreenChanges::ScreenChanges(std::function<void()> onChange)
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(SettlingTime);
    m_settling.callOnTimeout(this, std::move(onChange));
    for (const auto *const screen : QGuiApplication::screens())
        watch(*screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](const QScreen *screen) {
        watch(*screen);
        m_settling.start();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, &m_settling, qOverload<>(&QTimer::start));
}

void ScreenChanges::watch(const QScreen &screen)
{
    const auto start = qOverload<>(&QTimer::start);
    connect(&screen, &QScreen::geometryChanged, &m_settling, start);
    connect(&screen, &QScreen::availableGeometryChanged, &m_settling, start);
}
