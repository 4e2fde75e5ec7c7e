#include "platform/desktop/ShellSearchAdaptor.h"

#include "platform/SearchProvider.h"
#include "platform/desktop/BusText.h"

#include <QDBusMetaType>

namespace
{

using namespace Qt::StringLiterals;

constexpr qsizetype MaximumMetas = 10; // limits the size of the answer

std::string query(const QStringList &terms)
{
    return terms.join(u' ').toStdString();
}

QVariantMap meta(const SearchResult &result)
{
    QVariantMap meta { { u"id"_s, QString::fromStdString(result.id) },
                       { u"name"_s, result.name },
                       { u"description"_s, result.description } };
    if (const auto text = BusText::make(result.text))
        meta.insert(u"clipboardText"_s, *text);
    return meta;
}

} // namespace

ShellSearchAdaptor::ShellSearchAdaptor(QObject &object, SearchProvider &provider)
    : QDBusAbstractAdaptor(&object)
    , m_provider(provider)
{
    qDBusRegisterMetaType<QList<QVariantMap>>();
}

QStringList ShellSearchAdaptor::GetInitialResultSet(const QStringList &terms) const
{
    QStringList ids;
    for (const auto &result : m_provider.find(query(terms)))
        ids += QString::fromStdString(result.id);
    return ids;
}

QStringList ShellSearchAdaptor::GetSubsearchResultSet(const QStringList & /*previousResults*/,
                                                      const QStringList &terms) const
{
    return GetInitialResultSet(terms);
}

QList<QVariantMap> ShellSearchAdaptor::GetResultMetas(const QStringList &identifiers) const
{
    QList<QVariantMap> metas;
    for (const auto &id : identifiers.first(qMin(identifiers.size(), MaximumMetas))) {
        if (const auto result = m_provider.result(id.toStdString()))
            metas += meta(*result);
    }
    return metas;
}

void ShellSearchAdaptor::ActivateResult(const QString &identifier, const QStringList & /*terms*/,
                                        uint /*timestamp*/)
{
    m_provider.copy(identifier.toStdString());
}

void ShellSearchAdaptor::LaunchSearch(const QStringList &terms, uint /*timestamp*/)
{
    m_provider.showAll(query(terms));
}
