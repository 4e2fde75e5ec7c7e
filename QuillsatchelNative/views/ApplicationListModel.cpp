#include "views/ApplicationListModel.h"

#include "support/SingleLine.h"

ApplicationListModel::ApplicationListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

void ApplicationListModel::setApplications(const std::vector<Application> &applications)
{
    beginResetModel();
    m_applications = applications;
    m_search = ApplicationSearch(m_applications);
    m_found = m_search.find(m_typed);
    endResetModel();
}

void ApplicationListModel::search(const QString &typed)
{
    beginResetModel();
    m_typed = typed;
    m_found = m_search.find(m_typed);
    endResetModel();
}

int ApplicationListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_found.size());
}

QVariant ApplicationListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto &application = m_applications[m_found[static_cast<std::size_t>(index.row())]];
    switch (role) {
    case Qt::DisplayRole:
        return SingleLine::beginning(application.name);
    case Qt::AccessibleDescriptionRole:
    case commentRole:
        return SingleLine::beginning(application.comment);
    case pathRole:
        return QVariant::fromValue(application.path);
    default:
        return {};
    }
}
