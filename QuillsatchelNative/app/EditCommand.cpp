#include "app/EditCommand.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace
{

using Action = MenuItem::Action;

bool isPossibleIn(Action action, const QPlainTextEdit &editor)
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
        return editor.canPaste();
    case Action::SelectAll:
        return !editor.document()->isEmpty();
    default:
        return false;
    }
}

bool isPossibleIn(Action action, const QLineEdit &field)
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
        return !field.isReadOnly() && !QGuiApplication::clipboard()->text().isEmpty();
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
    case Action::Paste:
        return text.paste();
    case Action::SelectAll:
        return text.selectAll();
    default:
        return;
    }
}

} // namespace

bool EditCommand::isPossible(Action action, QWidget *focus)
{
    if (const auto *const editor = qobject_cast<QPlainTextEdit *>(focus))
        return isPossibleIn(action, *editor);
    if (const auto *const field = qobject_cast<QLineEdit *>(focus))
        return isPossibleIn(action, *field);
    return false;
}

void EditCommand::perform(Action action, QWidget *focus)
{
    if (!isPossible(action, focus))
        return;
    if (auto *const editor = qobject_cast<QPlainTextEdit *>(focus))
        performIn(action, *editor);
    else if (auto *const field = qobject_cast<QLineEdit *>(focus))
        performIn(action, *field);
}
