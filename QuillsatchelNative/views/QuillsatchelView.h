#pragma once

#include "dictation/DictationController.h"
#include "dictation/LibraryVocabulary.h"
#include "launchers/LauncherStore.h"
#include "library/SatchelStore.h"
#include "support/Cancellable.h"
#include "views/NodeList.h"
#include "views/PanelCards.h"
#include "views/RenderScheduler.h"
#include "views/TextWidget.h"

#include <QWidget>

#include <optional>
#include <string>

class MessageLine;
class NewNodeButton;
class PromptCard;
class QKeyEvent;
class TabStrip;
class WindowPreferences;

/// The whole content of the panel: the tab strip, the nodes of the active tab, the button for a new
/// node, and the cards over them. It connects the callbacks of the views to the models.
class QuillsatchelView final : public QWidget
{
    Q_OBJECT

public:
    /// The view fills the panel; its top `topInset` points lie under the title bar. The models must
    /// outlive the view.
    QuillsatchelView(SatchelStore &store, LauncherStore &launcherStore,
                     WindowPreferences &windowPreferences, Platform &platform, int topInset,
                     QWidget *parent);

    /// The sizes of the panel, in points.
    static constexpr QSize MinimumSize { 390, 420 };
    static constexpr QSize IdealSize { 430, 650 };

    QSize sizeHint() const override { return IdealSize; }

    /// Opens the card that finds nodes in all tabs, or puts the focus into its field, and closes
    /// the other cards. Searches for `query`. Without one, the last query is there for a minute,
    /// selected.
    void find(const QString &query = {});
    /// Closes the cards, selects the tab, scrolls to the node and focuses its text.
    void showNode(QUuid tabID, QUuid blockID);
    /// Handles a key that no widget of the panel has handled: Ctrl+F opens the find card, and so
    /// does typing while no text has the focus. False for any other key.
    bool findByKey(const QKeyEvent &event);

    /// The widgets that Tab visits, in order.
    QList<QWidget *> focusStops() const;
    /// Scrolls to the tab or card with the keyboard focus.
    void revealFocus();

    /// The node whose card has the focus of the window, even while a menu or another window has the
    /// keyboard.
    std::optional<QUuid> focusedNode() const;
    /// The text that has it, in a node or elsewhere in the view.
    std::optional<TextWidget> focusedText() const;

protected:
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void wireTabStrip();
    void wirePanelCards();
    void wire(PromptCard &card);
    NodeList::Content shownNodes() const;
    void dictate(const QUuid &id);
    void takeDictated(const QUuid &id, const std::string &text);
    void endLostDictation();
    void addNode();
    void followFocus();
    void render();
    void renderMessage(const std::optional<QString> &message);
    void layOut();
    void editNode(QUuid tabID, QUuid blockID, const TextRange &range);
    void selectTab(QUuid id);

    SatchelStore &m_store;
    LibraryVocabulary m_vocabulary;
    DictationController m_dictation;
    std::string m_dictatedText; // the text of the dictated node, until the user changes it
    RenderScheduler m_scheduler;
    PanelCards m_panelCards;
    TabStrip *m_tabStrip;
    NodeList *m_nodeList;
    MessageLine *m_messageLine;
    NewNodeButton *m_newNodeButton;
    Cancellable m_messageCancellable;
};
