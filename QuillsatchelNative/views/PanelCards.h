#pragma once

#include "library/TextRange.h"
#include "views/LastInput.h"

#include <QPointer>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>

class FindCard;
class LauncherStore;
class OverlayCard;
class QWidget;
class SatchelStore;
class WindowPreferences;
struct NodeHit;
struct Platform;

/// The cards that float over the panel: the about card and the launcher settings, each while its
/// preference is set, or the find card. Opening the find card clears these preferences, and setting
/// one of them closes it.
class PanelCards final
{
public:
    /// The cards cover `panel`, whose top `topInset` points lie under the title bar. All arguments
    /// must outlive this object.
    PanelCards(const SatchelStore &store, LauncherStore &launcherStore,
               WindowPreferences &windowPreferences, Platform &platform, int topInset,
               QWidget &panel);

    /// The user chose a node in the find card, which has closed, to copy it.
    std::function<void(const NodeHit &)> onCopy = [](const NodeHit &) {};
    /// The same, to edit it. `match` is the first match in its text, if there is one.
    std::function<void(const NodeHit &, const std::optional<TextRange> &match)> onGoTo =
        [](const NodeHit &, const std::optional<TextRange> &) {};

    /// Shows and hides the cards as the preferences say. Call when they have changed.
    void render();
    /// Fits the cards to the panel. Call when its size has changed.
    void layOut();

    /// Opens the find card, or puts the focus into its field. Searches for `query`. Without one,
    /// the last query is there for a minute, selected.
    void find(const QString &query);
    /// Closes all cards and clears the preferences of those that have one.
    void close();
    /// Whether a card covers the panel. False for one that is disappearing.
    bool isOpen() const;

private:
    void closeRequestedCards();
    void closeFindCard();
    void openAboutCard();
    void openSettingsCard();
    void openFindCard(const QString &query);
    void appear(OverlayCard &card);
    QString recentQuery() const;

    const SatchelStore &m_store;
    LauncherStore &m_launcherStore;
    WindowPreferences &m_windowPreferences;
    Platform &m_platform;
    int m_topInset;
    QWidget &m_panel;
    LastInput m_lastInput;
    QPointer<OverlayCard> m_aboutCard;
    QPointer<OverlayCard> m_settingsCard;
    QPointer<FindCard> m_findCard;
    QString m_query;                                   // the last one
    std::chrono::system_clock::time_point m_queryTime; // when the find card closed
};
