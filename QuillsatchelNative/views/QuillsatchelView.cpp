#include "views/QuillsatchelView.h"

#include "library/NodeHit.h"
#include "preferences/WindowPreferences.h"
#include "views/MessageLine.h"
#include "views/NewNodeButton.h"
#include "views/Painting.h"
#include "views/PromptCard.h"
#include "views/SatchelTheme.h"
#include "views/TabStrip.h"
#include "views/TypedText.h"

#include <QKeyEvent>
#include <QPainter>
#include <QResizeEvent>

namespace
{

constexpr int DividerHeight = 1;
constexpr int NewNodePadding = 8;

} // namespace

QuillsatchelView::QuillsatchelView(SatchelStore &store, LauncherStore &launcherStore,
                                   WindowPreferences &windowPreferences, Platform &platform,
                                   int topInset, QWidget *parent)
    : QWidget(parent)
    , m_store(store)
    , m_vocabulary(store, launcherStore)
    , m_dictation(platform, m_vocabulary)
    , m_scheduler(platform.mainQueue, [this] { render(); })
    , m_panelCards(store, launcherStore, windowPreferences, platform, topInset, *this)
    , m_tabStrip(new TabStrip(store, platform.mainQueue, this))
    , m_nodeList(new NodeList(
          platform.mainQueue, [this] { return shownNodes(); },
          [this](PromptCard &card) { wire(card); }, this))
    , m_messageLine(new MessageLine(SatchelTheme::accent, this))
    , m_newNodeButton(new NewNodeButton(this))
{
    setMinimumSize(MinimumSize);
    m_tabStrip->setContentsMargins(0, topInset, 0, 0);
    wireTabStrip();
    wirePanelCards();
    connect(m_newNodeButton, &QAbstractButton::clicked, this, &QuillsatchelView::addNode);
    m_scheduler.observe(store);
    m_scheduler.observe(windowPreferences);
    m_scheduler.observe(m_dictation);
    resize(IdealSize);
    render();
    // Not in `render`, which would miss an error message that is repeated.
    m_messageCancellable = m_dictation.errorMessage().sink(
        [this](const std::optional<QString> &message) { renderMessage(message); });
}

void QuillsatchelView::wireTabStrip()
{
    m_tabStrip->onSelect = [this](const QUuid &id) { m_store.selectTab(id); };
    m_tabStrip->onRename = [this](const QUuid &id, const std::string &name) {
        m_store.renameTab(id, name);
    };
    m_tabStrip->onDelete = [this](const QUuid &id) { m_store.deleteTab(id); };
    m_tabStrip->onAdd = [this] { m_store.addTab(); };
}

void QuillsatchelView::wirePanelCards()
{
    m_panelCards.onCopy = [this](const NodeHit &hit) {
        selectTab(hit.tabID);
        m_nodeList->reveal(hit.blockID);
        m_store.copyBlock(hit.blockID);
    };
    m_panelCards.onGoTo = [this](const NodeHit &hit, const std::optional<TextRange> &match) {
        editNode(hit.tabID, hit.blockID, match.value_or(TextRange()));
    };
}

void QuillsatchelView::wire(PromptCard &card)
{
    card.onText = [this, &card](const std::string &text) {
        m_store.updateBlock(card.blockID(), text);
        if (m_dictation.activeBlockID().get() == card.blockID())
            m_dictation.stop();    // the user is typing
        m_nodeList->revealFocus(); // show where the text goes
    };
    card.onColor = [this, &card](BlockColor color) {
        m_store.setBlockColor(card.blockID(), color);
    };
    card.onCopy = [this, &card] { m_store.copyBlock(card.blockID()); };
    card.onPaste = [this, &card] { m_store.pasteIntoBlock(card.blockID()); };
    card.onLaunch = [this, &card] { m_store.openBlockURL(card.blockID()); };
    card.onDictate = [this, &card] { dictate(card.blockID()); };
    card.onDelete = [this, &card] { m_store.deleteBlock(card.blockID()); };
    card.onReorder = [this, &card](const QUuid &id, int steps) {
        m_store.moveBlock(id, steps);
        if (focusedNode() == card.blockID())
            followFocus();
    };
}

NodeList::Content QuillsatchelView::shownNodes() const
{
    const auto *const tab = m_store.activeTab();
    if (!tab)
        return {};
    return { .id = tab->id,
             .count = tab->blocks.size(),
             .node = [tab](std::size_t row) -> const PromptBlock & { return tab->blocks[row]; },
             .copiedID = m_store.copiedBlockID().get(),
             .dictatedID = m_dictation.activeBlockID().get() };
}

void QuillsatchelView::dictate(const QUuid &id)
{
    const auto *const block = m_store.activeBlock(id);
    if (!block)
        return;
    const std::string text = block->text;
    m_dictation.toggle(id, text,
                       [this, id](const std::string &dictated) { takeDictated(id, dictated); });
    m_dictatedText = text; // after toggle, which commits the text of an earlier dictation
}

void QuillsatchelView::takeDictated(const QUuid &id, const std::string &text)
{
    const auto *const block = m_store.activeBlock(id);
    if (!block || block->text != m_dictatedText)
        return; // dictation never replaces what the user entered
    m_dictatedText = text;
    m_store.updateBlock(id, text);
    m_nodeList->render(); // immediately, so that the user's next edit starts from this text
}

// Stops dictation if its node was deleted, is in another tab or was edited by the user. A hidden
// panel never records.
void QuillsatchelView::endLostDictation()
{
    const auto id = m_dictation.activeBlockID().get();
    if (!id)
        return;
    const auto *const block = m_store.activeBlock(*id);
    if (!block || block->text != m_dictatedText || !isVisible())
        m_dictation.stop();
}

// Scrolls to a node that keys have moved, which keeps the focus and may now be out of view.
void QuillsatchelView::followFocus()
{
    m_nodeList->render();
    m_nodeList->revealFocus();
}

void QuillsatchelView::addNode()
{
    const auto *const tab = m_store.activeTab();
    if (!tab)
        return;
    m_store.addBlock();
    m_nodeList->render();
    m_nodeList->editLastNode();
}

void QuillsatchelView::render()
{
    endLostDictation();
    m_nodeList->render();
    m_panelCards.render();
}

void QuillsatchelView::renderMessage(const std::optional<QString> &message)
{
    m_messageLine->render(message.value_or(QString()));
    layOut();
}

bool QuillsatchelView::findByKey(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::Find)) {
        find();
        return true;
    }
    if (m_panelCards.isOpen() || focusedText() || !isTypedText(event))
        return false;
    find(event.text());
    return true;
}

void QuillsatchelView::find(const QString &query)
{
    m_panelCards.find(query);
}

void QuillsatchelView::showNode(QUuid tabID, QUuid blockID)
{
    m_panelCards.close();
    editNode(tabID, blockID, {});
}

void QuillsatchelView::editNode(QUuid tabID, QUuid blockID, const TextRange &range)
{
    selectTab(tabID);
    m_nodeList->edit(blockID, range);
}

void QuillsatchelView::selectTab(QUuid id)
{
    const auto *const tab = m_store.activeTab();
    if (!tab || tab->id != id)
        m_store.selectTab(id);
    m_nodeList->render();
}

void QuillsatchelView::hideEvent(QHideEvent * /*event*/)
{
    m_dictation.stop();
}

void QuillsatchelView::resizeEvent(QResizeEvent * /*event*/)
{
    layOut();
    m_panelCards.layOut();
}

void QuillsatchelView::layOut()
{
    const int stripHeight = m_tabStrip->sizeHint().height();
    const int listTop = stripHeight + DividerHeight;
    const int buttonTop = height() - NewNodePadding - NewNodeButton::Height;
    m_tabStrip->setGeometry(0, 0, width(), stripHeight);
    const int messageHeight = m_messageLine->isHidden() ? 0 : m_messageLine->sizeHint().height();
    const int messageTop = buttonTop - NewNodePadding - messageHeight;
    m_nodeList->setGeometry(0, listTop, width(), messageTop - listTop);
    m_messageLine->setGeometry(0, messageTop, width(), messageHeight);
    m_newNodeButton->setGeometry(NewNodePadding, buttonTop, width() - 2 * NewNodePadding,
                                 NewNodeButton::Height);
}

void QuillsatchelView::paintEvent(QPaintEvent *event)
{
    const QRect divider(0, m_tabStrip->geometry().bottom() + 1, width(), DividerHeight);
    if (!event->rect().intersects(divider))
        return;
    QPainter painter(this);
    painter.fillRect(divider, Painting::qColor(SatchelTheme::border));
}

QList<QWidget *> QuillsatchelView::focusStops() const
{
    return m_tabStrip->focusStops() + m_nodeList->focusStops() +
           QList<QWidget *> { m_newNodeButton };
}

void QuillsatchelView::revealFocus()
{
    m_tabStrip->revealFocus();
    m_nodeList->revealFocus();
}

std::optional<QUuid> QuillsatchelView::focusedNode() const
{
    return m_nodeList->focusedNode();
}

std::optional<TextWidget> QuillsatchelView::focusedText() const
{
    return TextWidget::of(window()->focusWidget());
}
