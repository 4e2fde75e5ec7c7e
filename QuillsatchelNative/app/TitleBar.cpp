#include "app/TitleBar.h"

#include "app/TitlebarControlsView.h"
#include "app/TrafficLight.h"
#include "app/WindowDragLabel.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/SymbolButton.h"

#include <QHBoxLayout>
#include <QMouseEvent>

#include <optional>

namespace
{

using namespace Qt::StringLiterals;

constexpr int LeftPadding = 8;
constexpr int RightPadding = 8;
constexpr int WindowButtonSpacing = 2;
constexpr int NameplateSpacing = 5;
constexpr QSize IconButtonSize(21, 21);
constexpr int IconSize = 19;

constexpr auto CloseColor = SatchelTheme::accent;
constexpr auto MinimizeColor = SrgbColor::fromHex(0xFFD60A);
constexpr SrgbColor ZoomColor { 0.31, 0.71, 0.39 };

QHBoxLayout *makeRow(QWidget *widget, int spacing)
{
    auto *const layout = new QHBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

} // namespace

TitleBar::TitleBar(WindowPreferences &windowPreferences, QWidget *parent)
    : QWidget(parent)
    , m_windowButtons(makeWindowButtons())
    , m_nameplate(makeNameplate())
    , m_controls(new TitlebarControlsView(windowPreferences, this))
{
}

QWidget *TitleBar::makeWindowButtons()
{
    auto *const buttons = new QWidget(this);
    auto *const close = new TrafficLight(u"xmark"_s, CloseColor, tr("Close"), buttons);
    auto *const minimize = new TrafficLight(u"minus"_s, MinimizeColor, tr("Minimize"), buttons);
    auto *const zoom =
        new TrafficLight(u"arrow.up.left.and.arrow.down.right"_s, ZoomColor, tr("Zoom"), buttons);
    connect(close, &QAbstractButton::clicked, this, [this] { window()->close(); });
    connect(minimize, &QAbstractButton::clicked, this, [this] { window()->showMinimized(); });
    connect(zoom, &QAbstractButton::clicked, this, &TitleBar::zoomWindow);
    auto *const row = makeRow(buttons, WindowButtonSpacing);
    for (auto *const button : { close, minimize, zoom })
        row->addWidget(button);
    return buttons;
}

QWidget *TitleBar::makeNameplate()
{
    auto *const nameplate = new QWidget(this);
    auto *const icon = new SymbolButton(u"CupIcon"_s, IconSize, std::nullopt, nameplate);
    icon->setFixedSize(IconButtonSize);
    icon->setLabel(tr("About Quillsatchel"));
    connect(icon, &QAbstractButton::clicked, this, [this] { onShowAbout(); });

    auto *const name = new WindowDragLabel(u"Quillsatchel"_s, nameplate);
    name->setFont(Painting::systemFont(11, QFont::DemiBold));
    name->setToolTip(tr("Drag to move Quillsatchel"));
    QPalette palette;
    palette.setColor(QPalette::WindowText, Painting::qColor(SatchelTheme::secondary));
    name->setPalette(palette);

    auto *const row = makeRow(nameplate, NameplateSpacing);
    row->addWidget(icon);
    row->addWidget(name);
    return nameplate;
}

void TitleBar::resizeEvent(QResizeEvent * /*event*/)
{
    const auto place = [this](QWidget *widget, auto leftOf) {
        const QSize size = widget->sizeHint();
        widget->setGeometry({ { leftOf(size.width()), (height() - size.height()) / 2 }, size });
    };
    place(m_windowButtons, [](int) { return LeftPadding; });
    place(m_nameplate, [this](int width) { return (this->width() - width) / 2; });
    place(m_controls, [this](int width) { return this->width() - RightPadding - width; });
}

void TitleBar::mousePressEvent(QMouseEvent *event)
{
    m_drag.press(*event);
}

void TitleBar::mouseMoveEvent(QMouseEvent *event)
{
    m_drag.move(*event);
}

void TitleBar::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        zoomWindow();
}

void TitleBar::zoomWindow()
{
    if (window()->isMaximized())
        window()->showNormal();
    else
        window()->showMaximized();
}
