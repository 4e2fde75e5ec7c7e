#include "views/ApplicationListModel.h"

namespace
{

/// As much of a text as any row could show, on one line.
QString singleLine(const std::string &text)
{
    constexpr std::size_t MoreThanFits = 1024;
    return QString::fromStdString(text.substr(0, MoreThanFits)).simplified();
}

} // namespace

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
        return singleLine(application.name);
    case Qt::AccessibleDescriptionRole:
    case CommentRole:
        return singleLine(application.comment);
    case PathRole:
        return QVariant::fromValue(application.path);
    default:
        return {};
    }
}
