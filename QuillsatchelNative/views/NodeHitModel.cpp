#include "views/NodeHitModel.h"

#include "library/SatchelStore.h"
#include "support/SingleLine.h"

namespace
{

constexpr std::size_t MaximumCachedHits = 64; // some screenfuls

} // namespace

NodeHitModel::NodeHitModel(const SatchelStore &store, QObject *parent)
    : QAbstractListModel(parent)
    , m_store(store)
    , m_search(store.tabs().get())
    , m_tabsCancellable(store.tabs().sink([this](const auto &) { forget(); }))
{
}

void NodeHitModel::forget()
{
    beginResetModel();
    m_search.forget();
    m_hits.clear();
    m_isOutdated = true;
    endResetModel();
}

void NodeHitModel::search(const QString &query)
{
    beginResetModel();
    m_search.find(query.toStdString(), m_store.activeTabIndex());
    m_hits.clear();
    m_isOutdated = false;
    endResetModel();
}

const NodeHit &NodeHitModel::hit(int row) const
{
    if (const auto found = m_hits.find(row); found != m_hits.end())
        return found->second;
    if (m_hits.size() >= MaximumCachedHits)
        m_hits.clear();
    NodeHit hit = m_search.hit(static_cast<std::size_t>(row));
    if (SingleLine::looksEmpty(hit.text.text))
        hit.text = { tr("Empty node") };
    if (SingleLine::looksEmpty(hit.tabName.text))
        hit.tabName = { tr("Untitled") };
    return m_hits.emplace(row, std::move(hit)).first->second;
}

std::optional<TextRange> NodeHitModel::firstMatch(int row) const
{
    return m_search.firstMatch(static_cast<std::size_t>(row));
}

int NodeHitModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_search.hitCount());
}

QVariant NodeHitModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return hit(index.row()).text.text;
    case Qt::AccessibleDescriptionRole:
        return hit(index.row()).tabName.text;
    case hitRole:
        return QVariant::fromValue(hit(index.row()));
    default:
        return {};
    }
}
