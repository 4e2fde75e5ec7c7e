#include "app/TextGestures.h"

#include "app/EditMenu.h"
#include "platform/Pasteboard.h"
#include "support/Utf8.h"
#include "views/NodeEditor.h"
#include "views/PopupMenu.h"
#include "views/TextWidget.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <optional>

namespace
{

/// The text that receives the events of `object`, which may be an editor's viewport.
std::optional<TextWidget> textOf(QObject *object)
{
    auto *const widget = qobject_cast<QWidget *>(object);
    if (const auto text = TextWidget::of(widget))
        return text;
    auto *const editor = qobject_cast<NodeEditor *>(widget ? widget->parentWidget() : nullptr);
    return editor && editor->viewport() == widget ? TextWidget::of(editor) : std::nullopt;
}

} // namespace

TextGestures::TextGestures(const Pasteboard &pasteboard)
    : m_pasteboard(pasteboard)
{
    qApp->installEventFilter(this);
}

bool TextGestures::eventFilter(QObject *watched, QEvent *event)
{
    const auto type = event->type();
    // A hidden editor may show another node's text when it appears again.
    if (type == QEvent::Hide && m_menu && m_menu->parent() == watched)
        m_menu->close();
    if (type != QEvent::KeyPress && type != QEvent::MouseButtonRelease &&
        type != QEvent::ContextMenu)
        return false;
    const auto text = textOf(watched);
    if (!text)
        return false;
    if (type == QEvent::KeyPress)
        return pressKey(*static_cast<QKeyEvent *>(event), *text);
    if (type == QEvent::MouseButtonRelease)
        return releaseButton(*static_cast<QMouseEvent *>(event), *text);
    openMenu(*text, *static_cast<QContextMenuEvent *>(event));
    return true;
}

bool TextGestures::pressKey(const QKeyEvent &event, const TextWidget &text) const
{
    if (!event.matches(QKeySequence::Paste))
        return false;
    // QKeySequence::Paste includes Ctrl+Shift+Insert, which inserts the selection.
    if (event.key() == Qt::Key_Insert &&
        event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier))
        insertSelection(text);
    else
        text.paste(m_pasteboard);
    return true;
}

bool TextGestures::releaseButton(const QMouseEvent &event, const TextWidget &text) const
{
    if (event.button() != Qt::MiddleButton || !QGuiApplication::clipboard()->supportsSelection())
        return false;
    text.placeCursor(event.position().toPoint());
    insertSelection(text);
    return true;
}

void TextGestures::insertSelection(const TextWidget &text) const
{
    if (const auto selected = m_pasteboard.selectedText())
        text.insert(stringFromUtf8(*selected));
}

// The text owns the menu, so deleting the text closes it.
void TextGestures::openMenu(const TextWidget &text, const QContextMenuEvent &event)
{
    m_menu = new PopupMenu(&text.widget());
    m_menu->setAttribute(Qt::WA_DeleteOnClose);
    EditMenu::fill(
        *m_menu, [text] { return text; }, m_pasteboard);
    m_menu->open(event.globalPos(), event.reason());
}
