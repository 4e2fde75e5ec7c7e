#include "views/LauncherSlotEditor.h"

#include "launchers/LauncherStore.h"
#include "support/SingleLine.h"
#include "support/Utf8.h"
#include "support/Whitespace.h"
#include "views/AccessibleRole.h"
#include "views/Announcement.h"
#include "views/ElidedLabel.h"
#include "views/Painting.h"
#include "views/PushButton.h"
#include "views/SatchelTheme.h"
#include "views/Symbol.h"
#include "views/SymbolButton.h"
#include "views/TextField.h"

#include <QPainter>

#include <algorithm>

namespace
{

using namespace Qt::StringLiterals;

constexpr int Padding = 9;
constexpr int RowSpacing = 7;
constexpr int Radius = 10;
constexpr int SummarySpacing = 8;
constexpr int BadgeSize = 17;
constexpr int IconSize = 22;
constexpr int TextSpacing = 1;
constexpr int ClearButtonSize = 20;
constexpr int ControlSpacing = 6;
constexpr int TextsLeft = Padding + BadgeSize + SummarySpacing + IconSize + SummarySpacing;

/// A square of `size` at `left`, centred vertically in the first row.
QRect square(int left, int size, int rowHeight)
{
    return { left, Padding + (rowHeight - size) / 2, size, size };
}

} // namespace

LauncherSlotEditor::LauncherSlotEditor(const LauncherStore &store, int slot, QWidget *parent)
    : QWidget(parent)
    , m_store(store)
    , m_slot(slot)
    , m_title(new ElidedLabel(Qt::ElideRight, Painting::systemFont(11, QFont::DemiBold),
                              SrgbColor::white(0.92), this))
    , m_subtitle(
          new ElidedLabel(Qt::ElideMiddle, Painting::systemFont(9), SatchelTheme::secondary, this))
    , m_clearButton(
          new SymbolButton(u"xmark.circle.fill"_s, ClearButtonSize, SatchelTheme::secondary, this))
    , m_chooseButton(new PushButton(tr("Choose App…"), this))
    , m_urlField(new TextField(this))
    , m_setButton(new PushButton(tr("Set URL"), this))
{
    setAccessibleRole(*this, QAccessible::Grouping);
    setAccessibleName(tr("Launcher %1").arg(slot + 1));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_clearButton->setLabel(tr("Clear launcher"));
    m_chooseButton->setToolTip(tr("Choose the application that this launcher opens"));
    m_setButton->setToolTip(tr("Let this launcher open the website"));
    connect(m_clearButton, &QAbstractButton::clicked, this, &LauncherSlotEditor::clear);
    connect(m_chooseButton, &QAbstractButton::clicked, this, [this] { onChooseApplication(); });
    connect(m_setButton, &QAbstractButton::clicked, this, &LauncherSlotEditor::submit);
    makeField();
    followItem();
    renderIcon();
}

void LauncherSlotEditor::makeField()
{
    m_urlField->setAccessibleName(tr("Website"));
    m_urlField->setPlaceholderText(u"example.com"_s);
    m_urlField->setMaxLength(MaximumURLLength); // each key and cursor blink lays out the whole text
    connect(m_urlField, &QLineEdit::textChanged, this, &LauncherSlotEditor::renderSetButton);
    connect(m_urlField, &QLineEdit::returnPressed, this, &LauncherSlotEditor::submit);
}

const std::optional<LauncherItem> &LauncherSlotEditor::item() const
{
    return m_store.slots().get()[static_cast<std::size_t>(m_slot)];
}

void LauncherSlotEditor::render()
{
    if (item() != m_item)
        followItem();
    renderIcon();
}

void LauncherSlotEditor::followItem()
{
    m_item = item();
    if (m_item)
        showURL(m_item->kind == LauncherKind::website ? m_item->target : std::string());
    renderTexts();
    m_clearButton->setVisible(m_item.has_value());
    renderSetButton();
    layOut();
}

void LauncherSlotEditor::showURL(const std::string &url)
{
    m_urlField->setText(stringFromUtf8(url));
    if (!m_urlField->hasFocus())
        m_urlField->home(false); // the host is at the start
}

void LauncherSlotEditor::renderIcon()
{
    m_icon = m_item ? m_store.icon(*m_item, IconSize, devicePixelRatio())
                    : LauncherIcon { {}, "plus.square.dashed", {} };
    setAccessibleDescription(accessibleSummary());
    update();
}

QString LauncherSlotEditor::accessibleSummary() const
{
    if (!m_icon.image.isNull() || m_icon.description.empty())
        return m_title->text();
    return m_title->text() + QStringLiteral(", ") + stringFromUtf8(m_icon.description);
}

void LauncherSlotEditor::renderTexts()
{
    m_title->setText(m_item ? SingleLine::beginning(m_item->name) : tr("Empty launcher"));
    m_subtitle->setText(m_item ? SingleLine::ends(m_item->target)
                               : tr("Choose an app or enter a website"));
}

void LauncherSlotEditor::renderSetButton()
{
    const bool hasText = !trimmed(m_urlField->text().toStdString()).empty();
    // Disabling the focused button would move the focus to the next editor.
    if (!hasText && window()->focusWidget() == m_setButton)
        m_urlField->setFocus(Qt::OtherFocusReason);
    m_setButton->setEnabled(hasText);
}

void LauncherSlotEditor::submit()
{
    const QString text = m_urlField->text();
    const bool mayBeTruncated = text.size() >= MaximumURLLength;
    showInvalidURL(mayBeTruncated || !onWebsite(text.toStdString()));
}

void LauncherSlotEditor::clear()
{
    onClear();
    m_urlField->clear();
}

void LauncherSlotEditor::showInvalidURL(bool isInvalid)
{
    m_showsInvalidURL = isInvalid;
    if (isInvalid && !m_message)
        makeMessage();
    if (!m_message)
        return;
    if (isInvalid)
        announce(*m_message);
    else
        m_message->hide();
    m_urlField->setAccessibleDescription(isInvalid ? m_message->text() : QString());
    updateGeometry();
    if (isInvalid)
        onInvalidURL();
}

void LauncherSlotEditor::makeMessage()
{
    m_message =
        new ElidedLabel(Qt::ElideRight, Painting::systemFont(9), SatchelTheme::accent, this);
    setAccessibleRole(*m_message, QAccessible::AlertMessage);
    m_message->setText(tr("Enter a valid http or https website."));
    m_message->hide(); // `announce` shows it
    layOut();
}

int LauncherSlotEditor::summaryHeight() const
{
    const int texts = m_title->sizeHint().height() + TextSpacing + m_subtitle->sizeHint().height();
    return std::max(IconSize, texts);
}

int LauncherSlotEditor::controlsTop() const
{
    return Padding + summaryHeight() + RowSpacing;
}

QSize LauncherSlotEditor::sizeHint() const
{
    const int message = m_showsInvalidURL ? RowSpacing + m_message->sizeHint().height() : 0;
    return { 0, controlsTop() + PushButton::Height + message + Padding };
}

void LauncherSlotEditor::layOut()
{
    layOutSummary();
    const int right = width() - Padding;
    const int top = controlsTop();
    const QSize choose = m_chooseButton->sizeHint();
    const QSize set = m_setButton->sizeHint();
    const int fieldLeft = Padding + choose.width() + ControlSpacing;
    const int fieldRight = right - set.width() - ControlSpacing;
    m_chooseButton->setGeometry({ { Padding, top }, choose });
    m_urlField->setGeometry(fieldLeft, top, fieldRight - fieldLeft, PushButton::Height);
    m_setButton->setGeometry({ { right - set.width(), top }, set });
    if (m_message)
        m_message->setGeometry(Padding, top + PushButton::Height + RowSpacing, right - Padding,
                               m_message->sizeHint().height());
}

void LauncherSlotEditor::layOutSummary()
{
    const int height = summaryHeight();
    const int clearLeft = width() - Padding - ClearButtonSize;
    const int textsWidth = (m_item ? clearLeft - SummarySpacing : width() - Padding) - TextsLeft;
    const int titleHeight = m_title->sizeHint().height();
    const int subtitleHeight = m_subtitle->sizeHint().height();
    const int top = Padding + (height - titleHeight - TextSpacing - subtitleHeight) / 2;
    m_title->setGeometry(TextsLeft, top, textsWidth, titleHeight);
    m_subtitle->setGeometry(TextsLeft, top + titleHeight + TextSpacing, textsWidth, subtitleHeight);
    m_clearButton->setGeometry(square(clearLeft, ClearButtonSize, height));
}

void LauncherSlotEditor::resizeEvent(QResizeEvent * /*event*/)
{
    layOut();
}

void LauncherSlotEditor::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    Painting::fillRoundedRect(painter, rect(), Radius, SrgbColor::white(0.055));
    Painting::strokeRoundedRect(painter, rect(), Radius, SrgbColor::white(0.09));

    const QRect badge = square(Padding, BadgeSize, summaryHeight());
    Painting::fillCapsule(painter, badge, SrgbColor::white(0.07));
    painter.setFont(Painting::systemFont(10, QFont::Bold));
    painter.setPen(Painting::qColor(SatchelTheme::secondary));
    painter.drawText(badge, Qt::AlignCenter, QString::number(m_slot + 1));

    const QRect icon = square(Padding + BadgeSize + SummarySpacing, IconSize, summaryHeight());
    if (m_icon.image.isNull()) {
        const QString symbol = stringFromUtf8(m_icon.symbol);
        Symbol::paint(painter, symbol, icon, SatchelTheme::secondary);
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(icon, m_icon.image);
}
