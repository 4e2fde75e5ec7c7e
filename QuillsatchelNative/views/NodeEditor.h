#pragma once

#include <QPlainTextEdit>

#include <functional>
#include <string>

/// The text editor of a card: plain text, no frame, no ground of its own. Tab types a tab,
/// Ctrl+Tab leaves. The wheel is the list's unless the focused editor has more text than it
/// shows.
///
/// A line ends with LF in what the user pastes and in the whole text of a node once the user edits
/// it: CR LF, CR and U+2029 become LF, since a document has only one kind of line end. A node that
/// is only shown keeps its text as it is. U+2028 is a character like others.
class NodeEditor final : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit NodeEditor(QWidget *parent);

    /// The user changed the text; receives the whole of it, valid UTF-8.
    std::function<void(const std::string &)> onText = [](const std::string &) {};

    /// Shows another node's text, with an undo history of its own.
    void showText(const std::string &text);
    /// Replaces the text as one step that can be undone. Nothing happens if the text is the one
    /// shown, so a late redraw never disturbs the typing.
    void replaceText(const std::string &text);

    /// Inserts as the user does, in place of the selection.
    void insert(const QString &text);

protected:
    QMimeData *createMimeDataFromSelection() const override;
    void insertFromMimeData(const QMimeData *source) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void reportText();
    void breakEndlessWords(const QString &text);

    std::string m_text; // what the model holds of what is shown
    bool m_isReplacing = false;
};
