#include "views/NodeEditor.h"

#include "support/Utf8.h"
#include "views/EmojiHighlighter.h"
#include "views/EmojiRanges.h"
#include "views/OverlayScrollBar.h"
#include "views/Painting.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>

#include <algorithm>

namespace
{

constexpr int SpacesPerTab = 4;

QString withLineBreaks(QString text)
{
    return text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

/// The text as a document stores it, with one character per cursor position.
QString withParagraphs(QString text)
{
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\n'), QChar::ParagraphSeparator);
}

/// The length of the common prefix; never splits a surrogate pair.
qsizetype commonPrefix(const QString &a, const QString &b)
{
    const auto [end, ignored] = std::ranges::mismatch(a, b);
    const qsizetype length = end - a.begin();
    return length > 0 && a[length - 1].isHighSurrogate() ? length - 1 : length;
}

/// The length of the common suffix, at most `maximum`; never splits a surrogate pair.
qsizetype commonSuffix(const QString &a, const QString &b, qsizetype maximum)
{
    qsizetype length = 0;
    while (length < maximum && a[a.size() - length - 1] == b[b.size() - length - 1])
        ++length;
    return length > 0 && a[a.size() - length].isLowSurrogate() ? length - 1 : length;
}

bool endsWord(QChar character)
{
    return character.isSpace() && character.decompositionTag() != QChar::NoBreak;
}

/// Whether a word is so long that wrapping it takes too much time: Qt searches for the end of the
/// word again at each of its lines.
bool hasOverlongWord(QStringView text)
{
    constexpr qsizetype MaximumWordLength = 10'000;
    while (text.size() > MaximumWordLength) {
        const auto beginning = text.first(MaximumWordLength);
        const auto end = std::find_if(beginning.rbegin(), beginning.rend(), endsWord);
        if (end == beginning.rend())
            return true;
        text = text.sliced(beginning.rend() - end);
    }
    return false;
}

} // namespace

NodeEditor::NodeEditor(QWidget *parent)
    : QPlainTextEdit(parent)
{
    setFont(Painting::systemFont(13));
    if (EmojiRanges::areNeeded(font()))
        new EmojiHighlighter(font(), document());
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Node text"));
    setVerticalScrollBar(new OverlayScrollBar(Qt::Vertical, this));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabStopDistance(SpacesPerTab * fontMetrics().horizontalAdvance(QLatin1Char(' ')));
    viewport()->setAutoFillBackground(false);
    connect(this, &QPlainTextEdit::textChanged, this, &NodeEditor::reportText);
}

void NodeEditor::showText(const std::string &text)
{
    const QScopedValueRollback replacing(m_isReplacing, true);
    m_text = text;
    clear(); // otherwise setWordWrapMode would wrap the old text again
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    const QString shown = stringFromUtf8(text);
    wrapOverlongWords(shown);
    setPlainText(shown);
}

void NodeEditor::replaceText(const std::string &text)
{
    if (text == m_text)
        return;
    const QScopedValueRollback replacing(m_isReplacing, true);
    m_text = text;
    // Replaces only what differs, so that the cursor and the selection keep their places.
    const QString oldText = document()->toRawText();
    const QString newText = withParagraphs(stringFromUtf8(text));
    wrapOverlongWords(newText);
    const auto prefix = commonPrefix(oldText, newText);
    const auto suffix =
        commonSuffix(oldText, newText, std::min(oldText.size(), newText.size()) - prefix);
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.setPosition(static_cast<int>(prefix));
    cursor.setPosition(static_cast<int>(oldText.size() - suffix), QTextCursor::KeepAnchor);
    cursor.insertText(newText.mid(prefix, newText.size() - prefix - suffix));
    cursor.endEditBlock();
    document()->setModified(false); // otherwise typing that follows would join this undo step
}

// CR LF is one character in the document.
void NodeEditor::select(const TextRange &range)
{
    const QString text = stringFromUtf8(m_text);
    const auto position = [&text](qsizetype offset) {
        return static_cast<int>(offset - text.first(offset).count(QStringLiteral("\r\n")));
    };
    QTextCursor cursor(document());
    cursor.setPosition(position(range.start));
    cursor.setPosition(position(range.start + range.length), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void NodeEditor::insert(const QString &text)
{
    QMimeData source;
    source.setText(text);
    insertFromMimeData(&source);
    ensureCursorVisible();
}

void NodeEditor::reportText()
{
    if (m_isReplacing)
        return;
    // Not `toPlainText`, which turns no-break spaces into spaces.
    const QString text = document()->toRawText();
    wrapOverlongWords(text);
    m_text = withLineBreaks(text).toStdString();
    onText(m_text);
}

// Stays until another node is shown, because Undo may restore a word that was deleted.
void NodeEditor::wrapOverlongWords(const QString &text)
{
    if (hasOverlongWord(text))
        setWordWrapMode(QTextOption::WrapAnywhere);
}

QMimeData *NodeEditor::createMimeDataFromSelection() const
{
    auto *const text = new QMimeData;
    text->setText(withLineBreaks(textCursor().selectedText()));
    return text;
}

void NodeEditor::insertFromMimeData(const QMimeData *source)
{
    if (!source->hasText())
        return;
    const QString text = source->text();
    wrapOverlongWords(text);
    insertPlainText(text);
}

bool NodeEditor::focusNextPrevChild(bool /*next*/)
{
    return false; // Tab types; keyPressEvent handles Ctrl+Tab
}

void NodeEditor::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::InsertLineSeparator)) {
        // Shift+Return would type U+2028, which other programs do not treat as a line break.
        textCursor().insertText(QStringLiteral("\n"));
        ensureCursorVisible();
        return;
    }
    const bool isTab = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    if (!isTab || !event->modifiers().testFlag(Qt::ControlModifier)) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    const bool isBackwards =
        event->key() == Qt::Key_Backtab || event->modifiers().testFlag(Qt::ShiftModifier);
    // Bypasses the overrides, which keep the focus here.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QWidget::focusNextPrevChild(!isBackwards);
}

void NodeEditor::wheelEvent(QWheelEvent *event)
{
    if (!hasFocus() || verticalScrollBar()->maximum() == 0) {
        event->ignore();
        return;
    }
    QPlainTextEdit::wheelEvent(event);
    event->accept();
}

void NodeEditor::focusInEvent(QFocusEvent *event)
{
    QPlainTextEdit::focusInEvent(event);
    viewport()->update();
}

void NodeEditor::focusOutEvent(QFocusEvent *event)
{
    QPlainTextEdit::focusOutEvent(event);
    viewport()->update();
}

void NodeEditor::paintEvent(QPaintEvent *event)
{
    QPlainTextEdit::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(viewport());
    Painting::strokeRoundedRect(painter, viewport()->rect(), 5, SrgbColor::white(0.4));
}
