#include "views/TabChip.h"

#include "support/CharacterCount.h"
#include "support/SingleLine.h"
#include "support/Utf8.h"
#include "views/AccessibleRole.h"
#include "views/Painting.h"
#include "views/PopupMenu.h"
#include "views/SatchelTheme.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>

#include <algorithm>
#include <climits>

namespace
{

constexpr int HorizontalPadding = 7;
constexpr int VerticalPadding = 6;
constexpr int Radius = 6;
constexpr int MinimumTextWidth = 74;
constexpr int MaximumTextWidth = 145;
constexpr int PointsPerCharacter = 7;
constexpr int PointsAroundCharacters = 26;

QFont nameFont(bool isActive)
{
    return Painting::systemFont(11, isActive ? QFont::DemiBold : QFont::Normal);
}

int textHeight()
{
    return QFontMetrics(nameFont(true)).height();
}

} // namespace

TabChip::TabChip(QWidget *parent)
    : PlainButton(parent)
    , m_renaming(new QAction(tr("Rename Tab"), this))
    , m_deletion(new QAction(tr("Delete Tab"), this))
{
    setCheckable(true);
    setAccessibleRole(*this, QAccessible::PageTab);
    connect(this, &QAbstractButton::clicked, this, [this] { onSelect(); });
    connect(m_renaming, &QAction::triggered, this, [this] { onRename(); });
    connect(m_deletion, &QAction::triggered, this, [this] { onDelete(); });
    addActions({ m_renaming, m_deletion });
}

void TabChip::nextCheckState()
{
    // A click does not check the chip: `render` does, once the store has made the tab active.
}

void TabChip::render(const PromptTab &tab, bool isActive, bool isEditing, bool canDelete)
{
    const bool hasChanged = m_tabID != tab.id || m_name != tab.name || text().isEmpty();
    m_tabID = tab.id;
    m_deletion->setEnabled(canDelete);
    if (hasChanged) {
        m_name = tab.name;
        renderName();
    }
    renderActive(isActive);
    renderField(isEditing);
}

// A blank name is shown as it is, but screen readers would skip it.
void TabChip::renderName()
{
    const QString line = SingleLine::beginning(m_name);
    setText(m_name.empty() ? tr("Untitled") : line);
    setShortcut({}); // Qt derives one from an ampersand in the text
    setAccessibleName(SingleLine::looksEmpty(line) ? tr("Untitled") : line);
    resize(sizeHint());
}

void TabChip::renderActive(bool isActive)
{
    if (isActive == isChecked())
        return;
    setChecked(isActive);
    QAccessibleEvent selection(this, QAccessible::Selection);
    QAccessible::updateAccessibility(&selection);
}

void TabChip::renderField(bool isEditing)
{
    setToolTip(isEditing ? QString() : tr("Double-click to rename"));
    if (!isEditing)
        return removeField();
    if (!m_field)
        makeField();
    if (m_field->text().toStdString() != m_name)
        m_field->setText(stringFromUtf8(m_name));
}

// The chip takes the focus of the field, which Qt would move to another widget.
void TabChip::removeField()
{
    if (isFieldFocused())
        setFocus(Qt::MouseFocusReason);
    if (m_field)
        m_field->deleteLater();
    m_field.clear();
}

void TabChip::makeField()
{
    m_field = new QLineEdit(this);
    m_isComposing = false;
    m_field->setFont(nameFont(true));
    m_field->setFrame(false);
    m_field->setAlignment(Qt::AlignCenter); // like the label, so that the text does not move
    m_field->setMaxLength(INT_MAX);
    m_field->setTextMargins(-2, 0, -2, 0); // cancels the inset of QLineEdit
    m_field->setPlaceholderText(tr("Untitled"));
    m_field->setAccessibleName(tr("Tab name"));
    m_field->setText(stringFromUtf8(m_name));
    m_field->installEventFilter(this);
    // Not `textEdited`, which ignores text entered through the accessibility tree.
    connect(m_field, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (const auto name = text.toStdString(); name != m_name)
            onName(name);
    });
    placeField();
    m_field->show();
}

void TabChip::placeField()
{
    if (m_field)
        m_field->setGeometry(rect().adjusted(HorizontalPadding, 0, -HorizontalPadding, 0));
}

bool TabChip::focusField()
{
    if (!m_field)
        return false;
    m_field->setFocus(Qt::OtherFocusReason);
    m_field->selectAll();
    return true;
}

bool TabChip::isFieldFocused() const
{
    return m_field && window()->focusWidget() == m_field;
}

bool TabChip::isInField(const QWidget &widget) const
{
    return m_field && (&widget == m_field || m_field->isAncestorOf(&widget));
}

bool TabChip::eventFilter(QObject *object, QEvent *event)
{
    if (object != m_field)
        return PlainButton::eventFilter(object, event);
    if (event->type() == QEvent::InputMethod) {
        m_isComposing = !static_cast<QInputMethodEvent *>(event)->preeditString().isEmpty();
        update();
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
            setFocus(Qt::OtherFocusReason); // this ends renaming
            return true;
        }
    }
    return false;
}

QSize TabChip::sizeHint() const
{
    return { textWidth(m_name) + 2 * HorizontalPadding, textHeight() + 2 * VerticalPadding };
}

int TabChip::textWidth(const std::string &name)
{
    // Further characters do not make the chip wider.
    constexpr std::size_t MaximumCount = MaximumTextWidth / PointsPerCharacter;
    const auto characters = static_cast<int>(characterCount(name, MaximumCount));
    return std::clamp(PointsPerCharacter * characters + PointsAroundCharacters, MinimumTextWidth,
                      MaximumTextWidth);
}

qreal TabChip::focusRadius() const
{
    return Radius;
}

void TabChip::paintContent(QPainter &painter)
{
    if (isChecked())
        Painting::fillRoundedRect(painter, rect(), Radius, SatchelTheme::accent.withOpacity(0.12));
    else if (isHovered())
        Painting::fillRoundedRect(painter, rect(), Radius, SrgbColor::white(0.05));
    const bool showsPlaceholder = m_field && m_name.empty() && !m_isComposing;
    if (m_field && !showsPlaceholder)
        return;
    const QRect frame = rect().adjusted(HorizontalPadding, 0, -HorizontalPadding, 0);
    painter.setFont(nameFont(isChecked()));
    // Qt hides the placeholder of a centred field that has the focus, so the chip paints it.
    painter.setPen(showsPlaceholder ? palette().color(QPalette::PlaceholderText)
                                    : Painting::qColor(SrgbColor::white(isChecked() ? 0.95 : 0.8)));
    Painting::drawLine(painter, frame, Qt::AlignHCenter, text());
}

void TabChip::resizeEvent(QResizeEvent * /*event*/)
{
    placeField();
}

// Does not call the base class: the release of a second press would be a click, which ends
// renaming.
void TabChip::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        onRename();
}

void TabChip::contextMenuEvent(QContextMenuEvent *event)
{
    if (m_field && m_field->geometry().contains(event->pos()))
        return openFieldMenu(*event);
    if (!m_menu)
        makeMenu();
    const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
    m_menu->open(isByMouse ? event->globalPos() : mapToGlobal(rect().bottomLeft()),
                 event->reason());
}

// Qt 6.11 sends the field's requests to the chip.
void TabChip::openFieldMenu(const QContextMenuEvent &event)
{
    QContextMenuEvent request(event.reason(), m_field->mapFromParent(event.pos()),
                              event.globalPos(), event.modifiers());
    QCoreApplication::sendEvent(m_field, &request);
}

// The menu is reused, because the accessibility tree associates each action with the first menu
// that contains it.
void TabChip::makeMenu()
{
    m_menu = new PopupMenu(this);
    m_menu->addAction(m_renaming);
    m_menu->addSeparator();
    m_menu->addAction(m_deletion);
}

void TabChip::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F2)
        onRename();
    else
        PlainButton::keyPressEvent(event);
}
