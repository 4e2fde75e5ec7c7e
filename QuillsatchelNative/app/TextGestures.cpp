#include "app/TextGestures.h"

#include "app/EditCommand.h"
#include "app/MainMenu.h"
#include "app/MenuMirror.h"
#include "platform/Pasteboard.h"
#include "support/Utf8.h"
#include "views/NodeEditor.h"
#include "views/PopupMenu.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>

namespace
{

/// The text that gets the events of `object`, which may be an editor's viewport; null for others.
QWidget *textOf(QObject *object)
{
    auto *const widget = qobject_cast<QWidget *>(object);
    if (EditCommand::isText(widget))
        return widget;
    auto *const editor = qobject_cast<NodeEditor *>(widget ? widget->parentWidget() : nullptr);
    return editor && editor->viewport() == widget ? editor : nullptr;
}

/// Where a middle click inserts; the press has placed the cursor of a field already.
void placeCursor(QWidget &text, const QPoint &place)
{
    if (auto *const editor = qobject_cast<NodeEditor *>(&text))
        editor->setTextCursor(editor->cursorForPosition(place));
    else if (auto *const field = qobject_cast<QLineEdit *>(&text))
        field->deselect();
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
    // An editor that is hidden may show another node's text when it comes back.
    if (type == QEvent::Hide && m_menu && m_menu->parent() == watched)
        m_menu->close();
    if (type != QEvent::KeyPress && type != QEvent::MouseButtonRelease &&
        type != QEvent::ContextMenu)
        return false;
    auto *const text = textOf(watched);
    if (!text)
        return false;
    if (type == QEvent::KeyPress)
        return pressKey(*static_cast<QKeyEvent *>(event), *text);
    if (type == QEvent::MouseButtonRelease)
        return releaseButton(*static_cast<QMouseEvent *>(event), *text);
    openMenu(*text, *static_cast<QContextMenuEvent *>(event));
    return true;
}

bool TextGestures::pressKey(const QKeyEvent &event, QWidget &text) const
{
    if (!event.matches(QKeySequence::Paste))
        return false;
    // One of the keys for pasting inserts the selection.
    if (event.key() == Qt::Key_Insert &&
        event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier))
        insertSelection(text);
    else
        EditCommand::perform(MenuItem::Action::Paste, &text, m_pasteboard);
    return true;
}

bool TextGestures::releaseButton(const QMouseEvent &event, QWidget &text) const
{
    if (event.button() != Qt::MiddleButton || !QGuiApplication::clipboard()->supportsSelection())
        return false;
    placeCursor(text, event.position().toPoint());
    insertSelection(text);
    return true;
}

void TextGestures::insertSelection(QWidget &text) const
{
    if (const auto selected = m_pasteboard.selectedText())
        EditCommand::insert(stringFromUtf8(*selected), &text);
}

// The text owns the menu: deleting the text closes it.
void TextGestures::openMenu(QWidget &text, const QContextMenuEvent &event)
{
    m_menu = new PopupMenu(&text);
    m_menu->setAttribute(Qt::WA_DeleteOnClose);
    MenuMirror::fill(*m_menu, MainMenu::makeEditMenu().items, [this, &text](const MenuItem &item) {
        EditCommand::perform(item.action, &text, m_pasteboard);
    });
    for (auto *const entry : m_menu->actions())
        entry->setEnabled(
            EditCommand::isPossible(MenuMirror::actionOf(*entry), &text, m_pasteboard));
    m_menu->open(event.globalPos(), event.reason());
}
