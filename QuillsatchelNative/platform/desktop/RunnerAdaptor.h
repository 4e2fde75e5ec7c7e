#pragma once

#include "platform/desktop/RunnerAction.h"
#include "platform/desktop/RunnerMatch.h"

#include <QDBusAbstractAdaptor>
#include <QList>

class SearchProvider;

/// Answers the search of Plasma, KRunner.
class RunnerAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.krunner1")

public:
    /// Adds the interface to `object`, which owns the adaptor. `provider` must outlive it.
    RunnerAdaptor(QObject &object, SearchProvider &provider);

    /// What results can do besides being copied.
    Q_SLOT QList<RunnerAction> Actions() const;

    Q_SLOT QList<RunnerMatch> Match(const QString &query) const;

    /// Copies a result, or shows it in the panel. Ignores unknown actions.
    Q_SLOT void Run(const QString &matchId, const QString &actionId);

    /// The user has closed the search. Does nothing, because nothing is kept, but without it Qt
    /// would log every call.
    Q_SLOT void Teardown() const {}

private:
    void copy(const std::string &id);

    SearchProvider &m_provider;
};
