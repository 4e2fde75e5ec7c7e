#include "views/QuillsatchelView.h"

#include "support/WebAddress.h"
#include "views/AboutCard.h"
#include "views/NewNodeButton.h"
#include "views/NodeList.h"
#include "views/Painting.h"
#include "views/PromptCard.h"
#include "views/SatchelTheme.h"
#include "views/TabStrip.h"

#include <QPainter>
#include <QResizeEvent>

namespace
{

constexpr int DividerHeight = 1;
constexpr int NewNodePadding = 8;

} // namespace

QuillsatchelView::QuillsatchelView(SatchelStore &store, WindowPreferences &windowPreferences,
                                   Platform &platform, int topInset, QWidget *parent)
    : QWidget(parent)
    , m_store(store)
    , m_windowPreferences(windowPreferences)
    , m_platform(platform)
    , m_scheduler(platform.mainQueue, [this] { render(); })
    , m_tabStrip(new TabStrip(store, platform.mainQueue, this))
    , m_nodeList(new NodeList(
          store, platform.mainQueue, [this](PromptCard &card) { wire(card); }, this))
    , m_newNodeButton(new NewNodeButton(this))
{
    setMinimumSize(MinimumSize);
    m_tabStrip->setContentsMargins(0, topInset, 0, 0);
    connect(m_newNodeButton, &QAbstractButton::clicked, this, &QuillsatchelView::addNode);
    m_scheduler.observe(store);
    m_scheduler.observe(windowPreferences);
    resize(IdealSize);
    render();
}

void QuillsatchelView::wire(PromptCard &card)
{
    card.onText = [this, &card](const std::string &text) {
        m_store.updateBlock(card.blockID(), text);
        m_nodeList->revealFocus(); // nobody types blindly into a node scrolled away
    };
    card.onColor = [this, &card](BlockColor color) {
        m_store.setBlockColor(card.blockID(), color);
    };
    card.onCopy = [this, &card] { m_store.copyBlock(card.blockID()); };
    card.onPaste = [this, &card] { m_store.pasteIntoBlock(card.blockID()); };
    card.onLaunch = [this, &card] { m_store.openBlockURL(card.blockID()); };
    card.onDelete = [this, &card] { m_store.deleteBlock(card.blockID()); };
    card.onReorder = [this, &card](const QUuid &id, int steps) {
        m_store.moveBlock(id, steps);
        if (card.isAncestorOf(window()->focusWidget()))
            followFocus();
    };
}

// A node that was moved by keys takes the focus with it, perhaps out of sight.
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
    m_nodeList->render();
    renderAboutCard();
}

void QuillsatchelView::renderAboutCard()
{
    const bool isWanted = m_windowPreferences.showsInfoCard.get();
    if (isWanted == !m_aboutCard.isNull())
        return;
    if (!isWanted) {
        m_aboutCard->disappear();
        m_aboutCard.clear();
        return;
    }
    m_aboutCard = new AboutCard(this);
    m_aboutCard->onClose = [this] { m_windowPreferences.showsInfoCard.set(false); };
    m_aboutCard->onOpenWebsite = [this](const std::string &website) {
        if (const auto address = WebAddress::parse(website))
            m_platform.workspace.open(*address);
    };
    m_aboutCard->appear();
}

void QuillsatchelView::resizeEvent(QResizeEvent * /*event*/)
{
    const int stripHeight = m_tabStrip->sizeHint().height();
    const int listTop = stripHeight + DividerHeight;
    const int buttonTop = height() - NewNodePadding - NewNodeButton::Height;
    m_tabStrip->setGeometry(0, 0, width(), stripHeight);
    m_nodeList->setGeometry(0, listTop, width(), buttonTop - NewNodePadding - listTop);
    m_newNodeButton->setGeometry(NewNodePadding, buttonTop, width() - 2 * NewNodePadding,
                                 NewNodeButton::Height);
    if (m_aboutCard)
        m_aboutCard->setGeometry(rect());
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
