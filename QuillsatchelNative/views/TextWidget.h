#pragma once

#include <optional>
#include <variant>

class NodeEditor;
class Pasteboard;
class QLineEdit;
class QPoint;
class QString;
class QWidget;

/// A handle of a widget with text that the user can edit or at least select: a node's editor or a
/// field. It does not own the widget.
class TextWidget
{
public:
    /// None if `widget`, which may be null, is of neither type.
    static std::optional<TextWidget> of(QWidget *widget);

    QWidget &widget() const;

    bool canUndo() const;
    bool canRedo() const;
    bool hasSelection() const;
    bool isEmpty() const;
    bool isReadOnly() const;

    void undo() const;
    void redo() const;
    /// Does nothing to a read-only text.
    void cut() const;
    void copy() const;
    /// Asks for the text once and inserts it. Qt's own `paste` may wait five seconds.
    void paste(const Pasteboard &pasteboard) const;
    void selectAll() const;

    /// Replaces the selection. Does nothing to a read-only text.
    void insert(const QString &text) const;
    /// Moves the cursor to `place` and clears the selection. In a field only the latter: a press
    /// has moved its cursor already.
    void placeCursor(const QPoint &place) const;

private:
    using Widget = std::variant<NodeEditor *, QLineEdit *>;

    explicit TextWidget(Widget widget);

    Widget m_widget;
};
