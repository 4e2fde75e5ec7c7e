#include "app/TitlebarControlsView.h"

#include "app/MiniSwitch.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/Symbol.h"

#include <QFontMetrics>
#include <QPainter>

namespace
{

using namespace Qt::StringLiterals;

constexpr int Height = 28;
constexpr int Spacing = 6;
constexpr int PinSize = 12;
constexpr int BadgePadding = 6;
constexpr int BadgeVerticalPadding = 3;
constexpr qreal BadgeTracking = 1;

QFont badgeFont()
{
    QFont font = Painting::systemFont(8, QFont::Bold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, BadgeTracking);
    return font;
}

QString badgeText()
{
    return TitlebarControlsView::tr("LOCAL");
}

QSize badgeSize()
{
    const QFontMetrics metrics(badgeFont());
    return { metrics.horizontalAdvance(badgeText()) + 2 * BadgePadding,
             metrics.height() + 2 * BadgeVerticalPadding };
}

void paintBadge(QPainter &painter, const QRect &place)
{
    Painting::fillCapsule(painter, place, SrgbColor::white(0.07));
    painter.setFont(badgeFont());
    painter.setPen(Painting::qColor(SatchelTheme::secondary));
    // Compensates the letter spacing after the last letter.
    painter.drawText(place.adjusted(qRound(BadgeTracking), 0, 0, 0), Qt::AlignCenter, badgeText());
}

} // namespace

TitlebarControlsView::TitlebarControlsView(WindowPreferences &windowPreferences, QWidget *parent)
    : QWidget(parent)
    , m_windowPreferences(windowPreferences)
    , m_switch(new MiniSwitch(this))
{
    m_switch->setLabel(tr("Always on Top"));
    connect(m_switch, &QAbstractButton::toggled, this, [this](bool isOn) {
        if (isOn != m_windowPreferences.alwaysOnTop.get())
            m_windowPreferences.alwaysOnTop.set(isOn);
    });
    m_preferencesCancellable = m_windowPreferences.alwaysOnTop.sink([this](bool isOn) {
        m_switch->setChecked(isOn);
        update();
    });
}

QSize TitlebarControlsView::sizeHint() const
{
    const int switchWidth = m_switch->width() - 2 * Painting::FocusMargin;
    return { PinSize + Spacing + switchWidth + Spacing + badgeSize().width(), Height };
}

void TitlebarControlsView::resizeEvent(QResizeEvent * /*event*/)
{
    m_switch->move(PinSize + Spacing - Painting::FocusMargin, (height() - m_switch->height()) / 2);
}

void TitlebarControlsView::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    const bool isOnTop = m_windowPreferences.alwaysOnTop.get();
    const QRect pin(0, (height() - PinSize) / 2, PinSize, PinSize);
    Symbol::paint(painter, u"pin.fill"_s, pin,
                  isOnTop ? SatchelTheme::accent : SatchelTheme::secondary);
    const QSize size = badgeSize();
    paintBadge(painter, { { width() - size.width(), (height() - size.height()) / 2 }, size });
}
