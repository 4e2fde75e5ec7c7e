#pragma once

#include "platform/Application.h"
#include "views/ApplicationSearch.h"

#include <QAbstractListModel>

#include <cstddef>
#include <vector>

/// The applications that match the search, one per row.
class ApplicationListModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    /// In addition to Qt::DisplayRole, which is the name.
    enum Role {
        commentRole = Qt::UserRole, ///< may be empty
        pathRole,                   ///< of the desktop entry, a `std::string`
    };

    explicit ApplicationListModel(QObject *parent);

    /// Replaces all applications and repeats the current search.
    void setApplications(const std::vector<Application> &applications);
    /// Without a word in `typed` every application matches.
    void search(const QString &typed);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    std::vector<Application> m_applications;
    ApplicationSearch m_search;
    QString m_typed;
    std::vector<std::size_t> m_found; // indices into m_applications
};
