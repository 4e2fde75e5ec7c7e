#pragma once

#include "library/NodeHit.h"
#include "library/NodeSearch.h"
#include "support/Cancellable.h"

#include <QAbstractListModel>

#include <optional>
#include <unordered_map>

class SatchelStore;

/// The nodes that match a query, best first, one per row. Excerpts are made for the rows that are
/// asked for.
class NodeHitModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    /// In addition to Qt::DisplayRole, which is the excerpt, and Qt::AccessibleDescriptionRole, the
    /// tab's name.
    enum Role {
        hitRole = Qt::UserRole ///< a `NodeHit`, with a text in place of an empty one
    };

    /// The store must outlive the model.
    NodeHitModel(const SatchelStore &store, QObject *parent);

    void search(const QString &query);

    /// Whether the library has changed since the last search. The model is then empty.
    bool isOutdated() const { return m_isOutdated; }

    /// Of an existing row.
    const NodeHit &hit(int row) const;
    /// The first match in the node's text, in UTF-16 code units; none if only the tab's name
    /// matches.
    std::optional<TextRange> firstMatch(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    void forget();

    const SatchelStore &m_store;
    NodeSearch m_search;
    bool m_isOutdated = true;
    mutable std::unordered_map<int, NodeHit> m_hits; // of the rows asked for recently
    Cancellable m_tabsCancellable;
};
