#pragma once

#include "library/TextRange.h"

#include <QPlainTextEdit>

#include <functional>
#include <string>

/// The plain-text editor of a card, with a transparent background. Tab types a tab character,
/// Ctrl+Tab moves the focus. The wheel scrolls the list, unless the editor has the focus and more
/// text than fits.
///
/// QTextDocument has only one kind of line break, so CR LF, CR and U+2029 become LF in what the
/// user pastes, and in the whole text once the user edits it. A text that is only shown stays as it
/// is. U+2028 is kept like any other character.
class NodeEditor final : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit NodeEditor(QWidget *parent);

    /// The user changed the text. Receives the whole text as valid UTF-8.
    std::function<void(const std::string &)> onText = [](const std::string &) {};

    /// Shows the text of another node with an empty undo history.
    void showText(const std::string &text);
    /// Replaces the text as one undo step. Does nothing if this text is shown already, so a late
    /// render never disturbs typing.
    void replaceText(const std::string &text);

    /// Selects a part of the model's text, and scrolls to it.
    void select(const TextRange &range);

    /// Replaces the selection like a paste by the user.
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
    void wrapOverlongWords(const QString &text);

    std::string m_text; // the model's version of the text shown
    bool m_isReplacing = false;
};
