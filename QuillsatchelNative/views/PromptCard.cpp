#include "views/PromptCard.h"

#include "support/WebAddress.h"
#include "support/Whitespace.h"
#include "views/AccessibleRole.h"
#include "views/ActionButton.h"
#include "views/ColorMenu.h"
#include "views/DragHandle.h"
#include "views/NodeEditor.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/SymbolButton.h"

#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{

using namespace Qt::StringLiterals;

constexpr int Padding = 10;
constexpr int Spacing = 8;
constexpr int HeaderHeight = 24;
constexpr int HeaderButtonWidth = 20;
constexpr int HeaderSymbolSize = 14;
constexpr int EditorHeight = 82;
constexpr int EditorPadding = 2;
constexpr int ActionSpacing = 6;
constexpr int Radius = 9;

constexpr int EditorTop = Padding + HeaderHeight + Spacing;
constexpr int ActionsTop = EditorTop + EditorHeight + Spacing;

bool isWebAddress(const std::string &text)
{
    const auto address = trimmed(text);
    // Examines a long text only if it starts like an address.
    if (address.empty() || (address.front() | 0x20) != 'h' || containsWhitespace(address))
        return false;
    const auto parsed = WebAddress::parse(address);
    return parsed && parsed->isHttp();
}

} // namespace

PromptCard::PromptCard(QWidget *parent)
    : QWidget(parent)
    , m_handle(new DragHandle(this))
    , m_colorButton(
          new SymbolButton(u"paintpalette"_s, HeaderSymbolSize, SatchelTheme::secondary, this))
    , m_deleteButton(new SymbolButton(u"trash"_s, HeaderSymbolSize, SatchelTheme::secondary, this))
    , m_editor(new NodeEditor(this))
    , m_pasteButton(new ActionButton([this] { onPaste(); }, this))
    , m_dictateButton(new ActionButton([this] { onDictate(); }, this))
    , m_launchButton(new ActionButton([this] { onLaunch(); }, this))
    , m_copyButton(new ActionButton([this] { onCopy(); }, this))
{
    setAccessibleRole(*this, QAccessible::Grouping);
    m_colorButton->setLabel(tr("Node color"));
    m_deleteButton->setLabel(tr("Delete node"));
    m_pasteButton->setToolTip(tr("Replace the text by the clipboard's"));
    m_dictateButton->setToolTip(tr("Speak into this node"));
    m_launchButton->setToolTip(tr("Open the address in the browser"));
    m_copyButton->setToolTip(tr("Copy the text"));
    m_editor->onText = [this](const std::string &text) { onText(text); };
    connect(m_colorButton, &QAbstractButton::clicked, this, &PromptCard::showColorMenu);
    connect(m_deleteButton, &QAbstractButton::clicked, this, [this] { onDelete(); });
    connectHandle();
    renderColor(m_color);
    renderActions();
}

void PromptCard::connectHandle()
{
    m_handle->onTranslation = [this](qreal translation) {
        m_dragTranslation = translation;
        update();
    };
    m_handle->onDrop = [this](qreal translation) {
        if (const int steps = reorderSteps(translation))
            onReorder(blockID(), steps);
    };
    m_handle->onStep = [this](int step) { onReorder(blockID(), step); };
}

void PromptCard::render(const PromptBlock &block, bool isCopied, bool isDictating)
{
    renderText(block);
    m_isEmpty = block.text.empty();
    m_isCopied = isCopied;
    m_isDictating = isDictating;
    renderActions();
    if (block.color != m_color)
        renderColor(block.color);
}

void PromptCard::renderColor(BlockColor color)
{
    m_color = color;
    m_colorButton->setAccessibleDescription(QString::fromStdString(color.title()));
    update();
}

void PromptCard::renderText(const PromptBlock &block)
{
    m_isURL = isWebAddress(block.text);
    if (block.id == m_blockID) {
        m_editor->replaceText(block.text);
        return;
    }
    closeMenus();
    m_blockID = block.id;
    m_editor->showText(block.text);
}

void PromptCard::renderActions()
{
    m_pasteButton->render(tr("Paste"), u"doc.on.clipboard"_s, false);
    m_dictateButton->render(m_isDictating ? tr("Stop") : tr("Dictate"),
                            m_isDictating ? u"waveform"_s : u"mic"_s, m_isDictating);
    m_launchButton->render(tr("Launch"), u"arrow.up.right.square"_s, false);
    m_copyButton->render(m_isCopied ? tr("Copied") : tr("Copy"),
                         m_isCopied ? u"checkmark"_s : u"doc.on.doc"_s, m_isCopied);
    m_pasteButton->setVisible(m_isEmpty);
    m_launchButton->setVisible(m_isURL);
    m_copyButton->setVisible(!m_isEmpty);
    layOutActions();
}

void PromptCard::layOutActions()
{
    int left = Padding;
    for (auto *const button : { m_pasteButton, m_dictateButton, m_launchButton }) {
        if (button->isHidden())
            continue;
        button->move(left, ActionsTop);
        left += button->width() + ActionSpacing;
    }
    m_copyButton->move(width() - Padding - m_copyButton->width(), ActionsTop);
}

void PromptCard::resizeEvent(QResizeEvent * /*event*/)
{
    const int right = width() - Padding;
    const QSize headerButton(HeaderButtonWidth, HeaderHeight);
    m_handle->move(Padding, Padding);
    m_deleteButton->setGeometry({ { right - HeaderButtonWidth, Padding }, headerButton });
    m_colorButton->setGeometry(
        { { right - 2 * HeaderButtonWidth - Spacing, Padding }, headerButton });
    m_editor->setGeometry(Padding + EditorPadding, EditorTop,
                          width() - 2 * (Padding + EditorPadding), EditorHeight);
    layOutActions();
}

void PromptCard::moveEvent(QMoveEvent * /*event*/)
{
    m_handle->followCard();
}

void PromptCard::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    const auto tint = m_color.swiftUIColor();
    Painting::fillRoundedRect(painter, rect(), Radius,
                              tint ? tint->withOpacity(0.09) : SatchelTheme::raised);
    if (m_dragTranslation != 0) {
        Painting::strokeRoundedRect(painter, rect(), Radius, SatchelTheme::accent, 2);
        return;
    }
    Painting::strokeRoundedRect(painter, rect(), Radius,
                                tint ? tint->withOpacity(0.45) : SatchelTheme::border);
}

void PromptCard::showColorMenu()
{
    auto *const menu = new ColorMenu(m_color, this);
    menu->onColor = [this](BlockColor color) { onColor(color); };
    menu->open(m_colorButton->mapToGlobal(QPoint(0, m_colorButton->height())));
}

// Open menus of the card and its editor would act on the new node.
void PromptCard::closeMenus()
{
    for (auto *const menu : findChildren<QMenu *>())
        menu->close();
}

void PromptCard::hideEvent(QHideEvent * /*event*/)
{
    closeMenus();
}

void PromptCard::focusEditor()
{
    m_editor->setFocus(Qt::OtherFocusReason);
}

void PromptCard::select(const TextRange &range)
{
    m_editor->select(range);
}

int PromptCard::cardHeight()
{
    return ActionsTop + ActionButton::buttonHeight() + Padding;
}

int PromptCard::reorderSteps(qreal translation)
{
    constexpr qreal MinimumDrag = 24;
    constexpr qreal PointsPerPlace = 120;
    const qreal distance = std::abs(translation);
    if (distance < MinimumDrag)
        return 0;
    const int steps = std::max(1, static_cast<int>(distance / PointsPerPlace));
    return translation > 0 ? steps : -steps;
}
