#pragma once

#include "platform/SearchProvider.h"

#include <QUuid>

#include <functional>

class SatchelStore;

/// Finds nodes for the desktop's search. Queries change nothing and keep nothing in memory.
class NodeSearchProvider final : public SearchProvider
{
    Q_OBJECT

public:
    /// `store` must outlive the provider.
    explicit NodeSearchProvider(SatchelStore &store);

    /// The user wants to see a node, which exists.
    std::function<void(QUuid tabID, QUuid blockID)> onShow = [](QUuid, QUuid) {};
    /// The user wants to search in the panel.
    std::function<void(const QString &query)> onShowAll = [](const QString &) {};

    /// At most ten nodes. None for less than three characters besides white space, because most
    /// nodes would match, and none for more than 1,024 bytes.
    std::vector<SearchResult> find(std::string_view query) const override;

    std::optional<SearchResult> result(std::string_view id) const override;

    /// As a node's "Copy" does.
    void copy(std::string_view id) override;

    void show(std::string_view id) override;
    void showAll(std::string_view query) override;

private:
    std::optional<SearchResult> result(QUuid tabID, QUuid blockID) const;

    SatchelStore &m_store;
};
