#pragma once

#include "platform/Application.h"
#include "views/ApplicationSearch.h"

#include <QAbstractListModel>

#include <cstddef>
#include <vector>

/// The applications that fit what is searched for, a row each.
class ApplicationListModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    /// Beside the name, which is what Qt's views display.
    enum Role {
        CommentRole = Qt::UserRole, ///< perhaps empty
        PathRole,                   ///< of the desktop entry, a `std::string`
    };

    explicit ApplicationListModel(QObject *parent);

    /// Takes the place of all that was there; searches them for what is searched for already.
    void setApplications(const std::vector<Application> &applications);
    /// Every application fits where `typed` has no word.
    void search(const QString &typed);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    std::vector<Application> m_applications;
    ApplicationSearch m_search;
    QString m_typed;
    std::vector<std::size_t> m_found; // places in m_applications
};
