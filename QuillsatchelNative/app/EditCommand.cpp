#include "app/EditCommand.h"

#include "platform/Pasteboard.h"
#include "support/Utf8.h"
#include "views/NodeEditor.h"

#include <QLineEdit>

namespace
{

using Action = MenuItem::Action;

bool isPossibleIn(Action action, const NodeEditor &editor, const Pasteboard &pasteboard)
{
    switch (action) {
    case Action::Undo:
        return editor.document()->isUndoAvailable();
    case Action::Redo:
        return editor.document()->isRedoAvailable();
    case Action::Cut:
        return editor.textCursor().hasSelection() && !editor.isReadOnly();
    case Action::Copy:
        return editor.textCursor().hasSelection();
    case Action::Paste:
        return !editor.isReadOnly() && pasteboard.hasText();
    case Action::SelectAll:
        return !editor.document()->isEmpty();
    default:
        return false;
    }
}

bool isPossibleIn(Action action, const QLineEdit &field, const Pasteboard &pasteboard)
{
    switch (action) {
    case Action::Undo:
        return field.isUndoAvailable();
    case Action::Redo:
        return field.isRedoAvailable();
    case Action::Cut:
        return field.hasSelectedText() && !field.isReadOnly();
    case Action::Copy:
        return field.hasSelectedText();
    case Action::Paste:
        return !field.isReadOnly() && pasteboard.hasText();
    case Action::SelectAll:
        return !field.text().isEmpty();
    default:
        return false;
    }
}

template <typename Text>
void performIn(Action action, Text &text)
{
    switch (action) {
    case Action::Undo:
        return text.undo();
    case Action::Redo:
        return text.redo();
    case Action::Cut:
        return text.cut();
    case Action::Copy:
        return text.copy();
    case Action::SelectAll:
        return text.selectAll();
    default:
        return;
    }
}

void insertInto(NodeEditor &editor, const QString &text)
{
    editor.insert(text);
}

// Moving the cursor ends the undo step that typing before it belongs to.
void insertInto(QLineEdit &field, const QString &text)
{
    if (!field.hasSelectedText()) {
        const int place = field.cursorPosition();
        field.setCursorPosition(place == 0 ? static_cast<int>(field.text().size()) : 0);
        field.setCursorPosition(place);
    }
    field.insert(text);
}

} // namespace

bool EditCommand::isText(const QWidget *widget)
{
    return qobject_cast<const NodeEditor *>(widget) || qobject_cast<const QLineEdit *>(widget);
}

bool EditCommand::isPossible(Action action, QWidget *focus, const Pasteboard &pasteboard)
{
    if (const auto *const editor = qobject_cast<NodeEditor *>(focus))
        return isPossibleIn(action, *editor, pasteboard);
    if (const auto *const field = qobject_cast<QLineEdit *>(focus))
        return isPossibleIn(action, *field, pasteboard);
    return false;
}

void EditCommand::perform(Action action, QWidget *focus, const Pasteboard &pasteboard)
{
    if (action == Action::Paste) { // asks the clipboard's owner once, not also whether it has text
        if (const auto text = isText(focus) ? pasteboard.text() : std::nullopt)
            insert(stringFromUtf8(*text), focus);
        return;
    }
    if (!isPossible(action, focus, pasteboard))
        return;
    if (auto *const editor = qobject_cast<NodeEditor *>(focus))
        performIn(action, *editor);
    else if (auto *const field = qobject_cast<QLineEdit *>(focus))
        performIn(action, *field);
}

void EditCommand::insert(const QString &text, QWidget *focus)
{
    auto *const editor = qobject_cast<NodeEditor *>(focus);
    auto *const field = qobject_cast<QLineEdit *>(focus);
    if (editor && !editor->isReadOnly())
        insertInto(*editor, text);
    else if (field && !field->isReadOnly())
        insertInto(*field, text);
}
