#include "views/PanelCards.h"

#include "library/NodeHit.h"
#include "platform/Platform.h"
#include "preferences/WindowPreferences.h"
#include "support/WebAddress.h"
#include "views/AboutCard.h"
#include "views/FindCard.h"
#include "views/LauncherSettingsCard.h"

#include <array>

namespace
{

constexpr int Margin = 8; // minimum space around a card

constexpr std::chrono::minutes QueryLifetime(1);

void closeUnless(bool isWanted, QPointer<OverlayCard> &card)
{
    if (isWanted || !card)
        return;
    card->disappear();
    card.clear();
}

} // namespace

PanelCards::PanelCards(const SatchelStore &store, LauncherStore &launcherStore,
                       WindowPreferences &windowPreferences, Platform &platform, int topInset,
                       QWidget &panel)
    : m_store(store)
    , m_launcherStore(launcherStore)
    , m_windowPreferences(windowPreferences)
    , m_platform(platform)
    , m_topInset(topInset)
    , m_panel(panel)
{
}

void PanelCards::render()
{
    const bool showsAbout = m_windowPreferences.showsInfoCard.get();
    const bool showsSettings = m_windowPreferences.showsSettingsCard.get();
    // A card that disappears returns the focus before another one takes it.
    closeUnless(showsAbout, m_aboutCard);
    closeUnless(showsSettings, m_settingsCard);
    if (showsAbout || showsSettings)
        closeFindCard();
    if (showsAbout && !m_aboutCard)
        openAboutCard();
    if (showsSettings && !m_settingsCard)
        openSettingsCard();
}

void PanelCards::openAboutCard()
{
    auto *const card = new AboutCard(&m_panel);
    card->onClose = [this] { m_windowPreferences.showsInfoCard.set(false); };
    card->onOpenWebsite = [this](const std::string &website) {
        if (const auto address = WebAddress::parse(website))
            m_platform.workspace.open(*address);
    };
    m_aboutCard = card;
    appear(*card);
    if (m_settingsCard) { // it lies above
        m_settingsCard->raise();
        m_settingsCard->setFocus(Qt::PopupFocusReason);
    }
}

void PanelCards::openSettingsCard()
{
    m_settingsCard = new LauncherSettingsCard(m_launcherStore, m_platform.mainQueue, &m_panel);
    m_settingsCard->onClose = [this] { m_windowPreferences.showsSettingsCard.set(false); };
    appear(*m_settingsCard);
}

void PanelCards::openFindCard(const QString &query)
{
    m_findCard = new FindCard(m_store, m_platform.mainQueue, query, &m_panel);
    m_findCard->onClose = [this] { closeFindCard(); };
    m_findCard->onCopy = [this](const NodeHit &hit) {
        closeFindCard();
        onCopy(hit);
    };
    m_findCard->onGoTo = [this](const NodeHit &hit, const std::optional<TextRange> &match) {
        closeFindCard();
        onGoTo(hit, match);
    };
    appear(*m_findCard);
}

void PanelCards::appear(OverlayCard &card)
{
    card.setContentsMargins(Margin, m_topInset + Margin, Margin, Margin);
    card.appear(m_lastInput.focusReason());
}

void PanelCards::find(const QString &query)
{
    closeRequestedCards();
    if (!m_findCard)
        openFindCard(query.isEmpty() ? recentQuery() : query);
    else if (!query.isEmpty())
        m_findCard->setQuery(query);
    if (query.isEmpty())
        m_findCard->selectQuery();
}

QString PanelCards::recentQuery() const
{
    const auto age = m_platform.wallClock.now() - m_queryTime;
    const bool isRecent = age >= age.zero() && age < QueryLifetime;
    return isRecent ? m_query : QString();
}

void PanelCards::close()
{
    closeRequestedCards();
    closeFindCard();
}

void PanelCards::closeRequestedCards()
{
    for (auto *const flag :
         { &m_windowPreferences.showsInfoCard, &m_windowPreferences.showsSettingsCard }) {
        if (flag->get())
            flag->set(false);
    }
    render();
}

// Keeps the query for a while.
void PanelCards::closeFindCard()
{
    if (!m_findCard)
        return;
    m_query = m_findCard->query();
    m_queryTime = m_platform.wallClock.now();
    m_findCard->disappear();
    m_findCard.clear();
}

bool PanelCards::isOpen() const
{
    return m_aboutCard || m_settingsCard || m_findCard;
}

void PanelCards::layOut()
{
    for (OverlayCard *const card : std::array<OverlayCard *, 3> {
             m_aboutCard.data(), m_settingsCard.data(), m_findCard.data() }) {
        if (card)
            card->setGeometry(m_panel.rect());
    }
}
