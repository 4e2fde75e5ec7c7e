#include "platform/desktop/RunnerAdaptor.h"

#include "platform/SearchProvider.h"
#include "platform/desktop/PlasmaClipboard.h"

#include <QDBusMetaType>

namespace
{

using namespace Qt::StringLiterals;

constexpr int PossibleMatch = 30; // below a program of exactly that name
constexpr double HighestRelevance = 0.9;
constexpr double RelevanceStep = 0.01; // keeps the order of the results

QString showAction()
{
    return u"show"_s;
}

} // namespace

RunnerAdaptor::RunnerAdaptor(QObject &object, SearchProvider &provider)
    : QDBusAbstractAdaptor(&object)
    , m_provider(provider)
{
    qDBusRegisterMetaType<RunnerAction>();
    qDBusRegisterMetaType<QList<RunnerAction>>();
    qDBusRegisterMetaType<RunnerMatch>();
    qDBusRegisterMetaType<QList<RunnerMatch>>();
}

QList<RunnerAction> RunnerAdaptor::Actions() const
{
    return { { showAction(), tr("Show"), u"go-jump"_s } };
}

QList<RunnerMatch> RunnerAdaptor::Match(const QString &query) const
{
    QList<RunnerMatch> matches;
    double relevance = HighestRelevance;
    for (const auto &result : m_provider.find(query.toStdString())) {
        matches += RunnerMatch { .id = QString::fromStdString(result.id),
                                 .text = result.name,
                                 .iconName = u"example.quillsatchel.Quillsatchel"_s,
                                 .type = PossibleMatch,
                                 .relevance = relevance,
                                 .properties = { { u"subtext"_s, result.description } } };
        relevance -= RelevanceStep;
    }
    return matches;
}

void RunnerAdaptor::Run(const QString &matchId, const QString &actionId)
{
    const std::string id = matchId.toStdString();
    if (actionId.isEmpty())
        copy(id);
    else if (actionId == showAction())
        m_provider.show(id);
}

void RunnerAdaptor::copy(const std::string &id)
{
    m_provider.copy(id);
    if (const auto result = m_provider.result(id))
        PlasmaClipboard::setText(result->text);
}
