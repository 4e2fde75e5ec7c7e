#include "views/OverlayCard.h"

#include "views/AccessibleRole.h"
#include "views/FocusOrder.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/SymbolButton.h"

#include <QBoxLayout>
#include <QEasingCurve>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QVariantAnimation>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace
{

using namespace Qt::StringLiterals;

constexpr int Radius = 20;
constexpr QSize CloseButtonSize(28, 28);
constexpr int CloseSymbolSize = 12;
constexpr int Duration = 160; // milliseconds
constexpr qreal MinimumScale = 0.97;

/// The standard ease-out curve.
QEasingCurve easeOut()
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({ 0, 0 }, { 0.58, 1 }, { 1, 1 });
    return curve;
}

/// The background of the card.
class Body final : public QWidget
{
public:
    Body(double fillOpacity, QWidget *parent)
        : QWidget(parent)
        , m_fillOpacity(fillOpacity)
    {
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        const SrgbColor fill { 0.035, 0.035, 0.045, m_fillOpacity };
        const QRectF edge = Painting::onWholePixels(painter, rect());
        Painting::fillRoundedRect(painter, edge, Radius, fill);
        Painting::strokeRoundedRect(painter, edge, Radius, SrgbColor::white(0.14),
                                    Painting::wholePixelLine(painter));
    }

private:
    double m_fillOpacity;
};

} // namespace

OverlayCard::OverlayCard(const QString &name, const Look &look, QWidget *parent)
    : QWidget(parent)
    , m_look(look)
    , m_card(new Body(look.fillOpacity, this))
    , m_closeButton(new SymbolButton(u"xmark"_s, CloseSymbolSize, SatchelTheme::secondary, m_card))
{
    setAccessibleRole(*this, QAccessible::Dialog);
    setAccessibleName(name);
    m_card->installEventFilter(this);
    m_closeButton->setLabel(tr("Close"));
    m_closeButton->resize(CloseButtonSize);
    connect(m_closeButton, &QAbstractButton::clicked, this, [this] { onClose(); });
    hide();
}

void OverlayCard::addText(QBoxLayout &layout, const QString &text, const QFont &font,
                          const SrgbColor &color)
{
    auto *const label = new QLabel(text);
    QPalette palette;
    palette.setColor(QPalette::WindowText, Painting::qColor(color));
    label->setPalette(palette);
    label->setFont(font);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    layout.addWidget(label);
}

void OverlayCard::appear(Qt::FocusReason reason)
{
    m_focusReason = reason;
    rememberFocus();
    setGeometry(parentWidget()->rect());
    placeCard();
    m_picture = picture();
    m_card->hide();
    show();
    raise();
    setFocus(Qt::PopupFocusReason);
    animate(0, 1, [this] { finishAppearing(); });
}

void OverlayCard::finishAppearing()
{
    m_picture = {};
    m_card->show();
    m_closeButton->raise();
    if (hasFocus())
        firstFocus().setFocus(m_focusReason);
}

QWidget &OverlayCard::firstFocus() const
{
    return *m_closeButton;
}

void OverlayCard::disappear()
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    auto *const earlier = earlierFocus();
    // Without an earlier focus this card keeps it, because hiding would move it to an arbitrary
    // widget.
    (earlier ? earlier : this)->setFocus(Qt::PopupFocusReason);
    m_picture = picture();
    m_card->hide();
    animate(m_visibility, 0, [this] {
        hide();
        deleteLater();
    });
}

// The window keeps its focus widget while another window is active.
void OverlayCard::rememberFocus()
{
    m_earlierFocus.clear();
    for (auto *widget = window()->focusWidget(); widget; widget = widget->parentWidget())
        m_earlierFocus.emplace_back(widget);
}

// The field that renames a tab disappears when it loses the focus. Its chip then gets the focus.
QWidget *OverlayCard::earlierFocus() const
{
    const auto found = std::ranges::find_if(m_earlierFocus, [this](const auto &widget) {
        return widget && widget->isVisible() &&
               (widget == m_earlierFocus.front() || widget->focusPolicy() != Qt::NoFocus);
    });
    return found == m_earlierFocus.end() ? nullptr : found->data();
}

void OverlayCard::animate(qreal from, qreal to, std::function<void()> done)
{
    delete m_animation;
    m_animation = new QVariantAnimation(this);
    const bool isAnimated =
        style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0;
    m_animation->setDuration(isAnimated ? Duration : 0);
    m_animation->setEasingCurve(easeOut());
    m_animation->setStartValue(from);
    m_animation->setEndValue(to);
    connect(m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        m_visibility = value.toReal();
        update();
    });
    connect(m_animation, &QVariantAnimation::finished, this, std::move(done));
    m_visibility = from; // the animation reports its first value with the second frame
    m_animation->start(QAbstractAnimation::DeleteWhenStopped);
}

QPixmap OverlayCard::picture() const
{
    const qreal scale = devicePixelRatio();
    QPixmap pixmap(m_card->size() * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    m_card->render(&pixmap, {}, {}, QWidget::DrawChildren);
    return pixmap;
}

const QPixmap &OverlayCard::shadow()
{
    const int margin = m_look.shadow.margin();
    const QSize size = m_card->size() + QSize(2 * margin, 2 * margin);
    const bool hasCurrentScale = m_shadow.devicePixelRatio() == devicePixelRatio();
    if (!hasCurrentScale || m_shadow.deviceIndependentSize().toSize() != size)
        m_shadow = m_look.shadow.render(m_card->size(), Radius, devicePixelRatio());
    return m_shadow;
}

void OverlayCard::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(m_visibility);
    painter.fillRect(Painting::onWholePixels(painter, rect()),
                     Painting::qColor(SrgbColor::black(m_look.backdropOpacity)));
    const QPointF centre = QRectF(m_card->geometry()).center();
    const qreal scale = MinimumScale + (1 - MinimumScale) * m_visibility;
    painter.translate(centre);
    painter.scale(scale, scale);
    painter.translate(-centre);
    const int margin = m_look.shadow.margin();
    painter.drawPixmap(m_card->pos() - QPoint(margin, margin), shadow());
    if (!m_picture.isNull())
        painter.drawPixmap(m_card->pos(), m_picture);
}

void OverlayCard::placeCard()
{
    const QRect available = contentsRect();
    const int width = std::min(m_look.maximumWidth, available.width());
    const auto *const layout = m_card->layout();
    const int contentHeight = layout->hasHeightForWidth() ? layout->totalHeightForWidth(width)
                                                          : layout->totalSizeHint().height();
    QRect place(0, 0, width, std::min({ contentHeight, m_look.maximumHeight, available.height() }));
    place.moveCenter(available.center());
    m_card->setGeometry(place);
    m_closeButton->move(width - CloseButtonSize.width() - m_look.closePadding, m_look.closePadding);
}

bool OverlayCard::eventFilter(QObject *object, QEvent *event)
{
    if (object == m_card && event->type() == QEvent::LayoutRequest)
        placeCard();
    return QWidget::eventFilter(object, event);
}

void OverlayCard::resizeEvent(QResizeEvent * /*event*/)
{
    if (m_card->layout())
        placeCard();
}

void OverlayCard::mousePressEvent(QMouseEvent *event)
{
    m_isBackdropPressed = event->button() == Qt::LeftButton &&
                          !m_card->geometry().contains(event->position().toPoint());
}

void OverlayCard::mouseReleaseEvent(QMouseEvent *event)
{
    const bool isOnBackdrop = !m_card->geometry().contains(event->position().toPoint());
    if (std::exchange(m_isBackdropPressed, false) && isOnBackdrop)
        onClose();
}

void OverlayCard::wheelEvent(QWheelEvent *event)
{
    event->accept(); // the list below must not scroll
}

void OverlayCard::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        onClose();
    else
        QWidget::keyPressEvent(event);
}

bool OverlayCard::focusNextPrevChild(bool next)
{
    FocusOrder::move(FocusOrder::stopsIn(*m_card), next);
    return true; // the focus never leaves the card, even if no child can take it
}
