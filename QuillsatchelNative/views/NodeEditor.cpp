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

/// As a document keeps it: a character for each place of a cursor.
QString withParagraphs(QString text)
{
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\n'), QChar::ParagraphSeparator);
}

/// How many characters the two have in common at their beginnings; none is cut in two.
qsizetype commonPrefix(const QString &a, const QString &b)
{
    const auto [end, ignored] = std::ranges::mismatch(a, b);
    const qsizetype length = end - a.begin();
    return length > 0 && a[length - 1].isHighSurrogate() ? length - 1 : length;
}

/// The same at their ends, where at most `longest` may count.
qsizetype commonSuffix(const QString &a, const QString &b, qsizetype longest)
{
    qsizetype length = 0;
    while (length < longest && a[a.size() - length - 1] == b[b.size() - length - 1])
        ++length;
    return length > 0 && a[a.size() - length].isLowSurrogate() ? length - 1 : length;
}

bool endsWord(QChar character)
{
    return character.isSpace() && character.decompositionTag() != QChar::NoBreak;
}

/// Whether there is a word so long that Qt, which looks for its end at each of its lines, would
/// take much longer to wrap it than all other text.
bool hasEndlessWord(QStringView text)
{
    constexpr qsizetype LongestWord = 10'000;
    while (text.size() > LongestWord) {
        const auto beginning = text.first(LongestWord);
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
    clear(); // or the former text would be wrapped anew
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    const QString shown = stringFromUtf8(text);
    breakEndlessWords(shown);
    setPlainText(shown);
}

void NodeEditor::replaceText(const std::string &text)
{
    if (text == m_text)
        return;
    const QScopedValueRollback replacing(m_isReplacing, true);
    m_text = text;
    // Only what differs: the user's cursor and selection stay where they are in the rest.
    const QString earlier = document()->toRawText();
    const QString later = withParagraphs(stringFromUtf8(text));
    breakEndlessWords(later);
    const auto prefix = commonPrefix(earlier, later);
    const auto suffix =
        commonSuffix(earlier, later, std::min(earlier.size(), later.size()) - prefix);
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.setPosition(static_cast<int>(prefix));
    cursor.setPosition(static_cast<int>(earlier.size() - suffix), QTextCursor::KeepAnchor);
    cursor.insertText(later.mid(prefix, later.size() - prefix - suffix));
    cursor.endEditBlock();
    document()->setModified(false); // else typing that follows would be part of the same step
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
    // `toPlainText` would turn no-break spaces into blanks.
    const QString text = document()->toRawText();
    breakEndlessWords(text);
    m_text = withLineBreaks(text).toStdString();
    onText(m_text);
}

// Until another node is shown, even if such a word goes: it may come back by "Undo".
void NodeEditor::breakEndlessWords(const QString &text)
{
    if (hasEndlessWord(text))
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
    breakEndlessWords(text);
    insertPlainText(text);
}

bool NodeEditor::focusNextPrevChild(bool /*next*/)
{
    return false; // Tab is for typing; Ctrl+Tab comes by as a key
}

void NodeEditor::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::InsertLineSeparator)) {
        // Shift+Return would type a character that other programs do not take for a line's end.
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
    // Past the text edit's own, which would stay. NOLINTNEXTLINE(bugprone-parent-virtual-call)
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
