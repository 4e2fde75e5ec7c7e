#pragma once

#include "library/NodeHit.h"
#include "library/TextRange.h"
#include "views/OverlayCard.h"
#include "views/RenderScheduler.h"

#include <QString>

#include <functional>
#include <optional>

class ChoiceList;
class MessageLine;
class NodeHitModel;
class QBoxLayout;
class QModelIndex;
class SatchelStore;
class SearchField;

/// The card that finds nodes in all tabs while the user types. The arrow keys and the page keys
/// move the selection while the field keeps the focus. The card changes nothing itself.
class FindCard final : public OverlayCard
{
    Q_OBJECT

public:
    /// Searches for `query`, which may be empty. The store and the queue must outlive the card.
    FindCard(const SatchelStore &store, MainQueue &mainQueue, const QString &query,
             QWidget *parent);

    /// Return, or a click: the user wants to copy the node.
    std::function<void(const NodeHit &)> onCopy = [](const NodeHit &) {};
    /// Ctrl+Return, or Ctrl+click: the user wants to edit the node. `match` is the first match in
    /// its text, if there is one.
    std::function<void(const NodeHit &, const std::optional<TextRange> &match)> onGoTo =
        [](const NodeHit &, const std::optional<TextRange> &) {};

    QString query() const;
    /// Replaces the query and searches.
    void setQuery(const QString &query);
    /// Selects the query, so that typing replaces it, and focuses the field.
    void selectQuery();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;
    QWidget &firstFocus() const override;
    void finishAppearing() override;

private:
    void addField(QBoxLayout &layout, const QString &query);
    void addList(QBoxLayout &layout);
    void search();
    void render();
    void renderCount();
    void select(int row);
    void commitPreedit();
    void chooseSelected(Qt::KeyboardModifiers modifiers);
    void choose(const QModelIndex &index, Qt::KeyboardModifiers modifiers);

    RenderScheduler m_scheduler;
    NodeHitModel *m_model;
    SearchField *m_field = nullptr;
    ChoiceList *m_list = nullptr;
    MessageLine *m_countLine = nullptr;
    int m_row = 0;     // selected, also while the model is outdated and empty
    QString m_preedit; // not yet committed by the input method
};
