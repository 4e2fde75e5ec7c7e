#include "views/QuillsatchelView.h"

#include "support/WebAddress.h"
#include "views/AboutCard.h"
#include "views/FindCard.h"
#include "views/LauncherSettingsCard.h"
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

#include <utility>

namespace
{

constexpr int DividerHeight = 1;
constexpr int NewNodePadding = 8;
constexpr int CardMargin = 8; // minimum space around an overlay card

constexpr std::chrono::minutes QueryLifetime(1);

void hideUnless(bool isWanted, QPointer<OverlayCard> &card)
{
    if (isWanted || !card)
        return;
    card->disappear();
    card.clear();
}

/// Shows a card made by `make`, below the top `topInset` points. True if it was not shown yet. The
/// card takes the focus with `reason`.
template <typename Make>
bool showIf(bool isWanted, QPointer<OverlayCard> &card, int topInset, Qt::FocusReason reason,
            Make &&make)
{
    if (!isWanted || card)
        return false;
    card = std::forward<Make>(make)();
    card->setContentsMargins(CardMargin, topInset + CardMargin, CardMargin, CardMargin);
    card->appear(reason);
    return true;
}

} // namespace

QuillsatchelView::QuillsatchelView(SatchelStore &store, LauncherStore &launcherStore,
                                   WindowPreferences &windowPreferences, Platform &platform,
                                   int topInset, QWidget *parent)
    : QWidget(parent)
    , m_store(store)
    , m_launcherStore(launcherStore)
    , m_windowPreferences(windowPreferences)
    , m_platform(platform)
    , m_topInset(topInset)
    , m_vocabulary(store, launcherStore)
    , m_dictation(platform, m_vocabulary)
    , m_scheduler(platform.mainQueue, [this] { render(); })
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
    renderCards();
}

void QuillsatchelView::renderMessage(const std::optional<QString> &message)
{
    m_messageLine->render(message.value_or(QString()));
    layOut();
}

void QuillsatchelView::renderCards()
{
    const bool showsAbout = m_windowPreferences.showsInfoCard.get();
    const bool showsSettings = m_windowPreferences.showsSettingsCard.get();
    if (showsAbout || showsSettings)
        endFinding();
    // A card that disappears returns the focus before another one takes it.
    hideUnless(showsAbout, m_aboutCard);
    hideUnless(showsSettings, m_settingsCard);
    hideUnless(m_isFinding, m_findCard);
    const auto reason = m_lastInput.focusReason();
    const bool isAboutNew =
        showIf(showsAbout, m_aboutCard, m_topInset, reason, [this] { return makeAboutCard(); });
    const bool isSettingsNew = showIf(showsSettings, m_settingsCard, m_topInset, reason,
                                      [this] { return makeSettingsCard(); });
    showIf(m_isFinding, m_findCard, m_topInset, reason, [this] { return makeFindCard(); });
    if (isAboutNew && m_settingsCard && !isSettingsNew) { // the settings card lies above
        m_settingsCard->raise();
        m_settingsCard->setFocus(Qt::PopupFocusReason);
    }
}

bool QuillsatchelView::findByKey(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::Find)) {
        find();
        return true;
    }
    const bool isCovered = m_aboutCard || m_settingsCard || m_findCard;
    if (isCovered || focusedText() || !isTypedText(event))
        return false;
    find(event.text());
    return true;
}

void QuillsatchelView::find(const QString &query)
{
    const auto age = m_platform.wallClock.now() - m_queryTime;
    const bool isRecent = age >= age.zero() && age < QueryLifetime;
    if (!query.isEmpty() || !isRecent)
        m_query = query;
    hideOtherCards();
    const bool wasFinding = std::exchange(m_isFinding, true);
    renderCards();
    auto *const card = qobject_cast<FindCard *>(m_findCard.data());
    if (query.isEmpty())
        card->selectQuery();
    else if (wasFinding)
        card->setQuery(query);
}

void QuillsatchelView::hideOtherCards()
{
    for (auto *const flag :
         { &m_windowPreferences.showsInfoCard, &m_windowPreferences.showsSettingsCard }) {
        if (flag->get())
            flag->set(false);
    }
}

/// Keeps the query for a while.
void QuillsatchelView::endFinding()
{
    if (!std::exchange(m_isFinding, false))
        return;
    m_query = qobject_cast<FindCard *>(m_findCard.data())->query();
    m_queryTime = m_platform.wallClock.now();
}

void QuillsatchelView::closeFind()
{
    endFinding();
    renderCards();
}

void QuillsatchelView::copyFound(const NodeHit &hit)
{
    closeFind();
    selectTab(hit.tabID);
    m_nodeList->reveal(hit.blockID);
    m_store.copyBlock(hit.blockID);
}

void QuillsatchelView::goToFound(const NodeHit &hit, const std::optional<TextRange> &match)
{
    closeFind();
    selectTab(hit.tabID);
    m_nodeList->edit(hit.blockID, match.value_or(TextRange()));
}

void QuillsatchelView::showNode(QUuid tabID, QUuid blockID)
{
    hideOtherCards();
    closeFind();
    selectTab(tabID);
    m_nodeList->edit(blockID, {});
}

void QuillsatchelView::selectTab(QUuid id)
{
    const auto *const tab = m_store.activeTab();
    if (!tab || tab->id != id)
        m_store.selectTab(id);
    m_nodeList->render();
}

AboutCard *QuillsatchelView::makeAboutCard()
{
    auto *const card = new AboutCard(this);
    card->onClose = [this] { m_windowPreferences.showsInfoCard.set(false); };
    card->onOpenWebsite = [this](const std::string &website) {
        if (const auto address = WebAddress::parse(website))
            m_platform.workspace.open(*address);
    };
    return card;
}

LauncherSettingsCard *QuillsatchelView::makeSettingsCard()
{
    auto *const card = new LauncherSettingsCard(m_launcherStore, m_platform.mainQueue, this);
    card->onClose = [this] { m_windowPreferences.showsSettingsCard.set(false); };
    return card;
}

FindCard *QuillsatchelView::makeFindCard()
{
    auto *const card = new FindCard(m_store, m_platform.mainQueue, m_query, this);
    card->onClose = [this] { closeFind(); };
    card->onCopy = [this](const NodeHit &hit) { copyFound(hit); };
    card->onGoTo = [this](const NodeHit &hit, const std::optional<TextRange> &match) {
        goToFound(hit, match);
    };
    return card;
}

void QuillsatchelView::hideEvent(QHideEvent * /*event*/)
{
    m_dictation.stop();
}

void QuillsatchelView::resizeEvent(QResizeEvent * /*event*/)
{
    layOut();
    for (auto *const card : { m_aboutCard.data(), m_settingsCard.data(), m_findCard.data() }) {
        if (card)
            card->setGeometry(rect());
    }
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
