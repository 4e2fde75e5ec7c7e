#include "views/TextWidget.h"

#include "platform/Pasteboard.h"
#include "support/Utf8.h"
#include "views/NodeEditor.h"

#include <QLineEdit>

namespace
{

/// A visitor with one function per type.
template <typename... Functions>
struct Visitor : Functions... {
    using Functions::operator()...;
};

template <typename... Functions>
Visitor(Functions...) -> Visitor<Functions...>;

// Moving the cursor ends the undo step that typing before it belongs to.
void insertIntoField(QLineEdit &field, const QString &text)
{
    if (!field.hasSelectedText()) {
        const int place = field.cursorPosition();
        field.setCursorPosition(place == 0 ? static_cast<int>(field.text().size()) : 0);
        field.setCursorPosition(place);
    }
    field.insert(text);
}

} // namespace

std::optional<TextWidget> TextWidget::of(QWidget *widget)
{
    if (auto *const editor = qobject_cast<NodeEditor *>(widget))
        return TextWidget(editor);
    if (auto *const field = qobject_cast<QLineEdit *>(widget))
        return TextWidget(field);
    return std::nullopt;
}

TextWidget::TextWidget(Widget widget)
    : m_widget(widget)
{
}

QWidget &TextWidget::widget() const
{
    return std::visit([](auto *text) -> QWidget & { return *text; }, m_widget);
}

bool TextWidget::canUndo() const
{
    return std::visit(
        Visitor { [](const NodeEditor *editor) { return editor->document()->isUndoAvailable(); },
                  [](const QLineEdit *field) { return field->isUndoAvailable(); } },
        m_widget);
}

bool TextWidget::canRedo() const
{
    return std::visit(
        Visitor { [](const NodeEditor *editor) { return editor->document()->isRedoAvailable(); },
                  [](const QLineEdit *field) { return field->isRedoAvailable(); } },
        m_widget);
}

bool TextWidget::hasSelection() const
{
    return std::visit(
        Visitor { [](const NodeEditor *editor) { return editor->textCursor().hasSelection(); },
                  [](const QLineEdit *field) { return field->hasSelectedText(); } },
        m_widget);
}

bool TextWidget::isEmpty() const
{
    return std::visit(
        Visitor { [](const NodeEditor *editor) { return editor->document()->isEmpty(); },
                  [](const QLineEdit *field) { return field->text().isEmpty(); } },
        m_widget);
}

bool TextWidget::isReadOnly() const
{
    return std::visit([](const auto *text) { return text->isReadOnly(); }, m_widget);
}

void TextWidget::undo() const
{
    std::visit([](auto *text) { text->undo(); }, m_widget);
}

void TextWidget::redo() const
{
    std::visit([](auto *text) { text->redo(); }, m_widget);
}

void TextWidget::cut() const
{
    if (!isReadOnly())
        std::visit([](auto *text) { text->cut(); }, m_widget);
}

void TextWidget::copy() const
{
    std::visit([](auto *text) { text->copy(); }, m_widget);
}

void TextWidget::paste(const Pasteboard &pasteboard) const
{
    if (const auto text = pasteboard.text())
        insert(stringFromUtf8(*text));
}

void TextWidget::selectAll() const
{
    std::visit([](auto *text) { text->selectAll(); }, m_widget);
}

void TextWidget::insert(const QString &text) const
{
    if (!isReadOnly())
        std::visit(Visitor { [&text](NodeEditor *editor) { editor->insert(text); },
                             [&text](QLineEdit *field) { insertIntoField(*field, text); } },
                   m_widget);
}

void TextWidget::placeCursor(const QPoint &place) const
{
    std::visit(Visitor { [&place](NodeEditor *editor) {
                            editor->setTextCursor(editor->cursorForPosition(place));
                        },
                         [](QLineEdit *field) { field->deselect(); } },
               m_widget);
}
