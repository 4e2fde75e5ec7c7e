#pragma once

#include <QDBusAbstractAdaptor>
#include <QList>
#include <QStringList>
#include <QVariantMap>

class SearchProvider;

/// Answers the search of GNOME Shell. The shell itself puts the text of the chosen result on the
/// clipboard, because programs without the focus cannot do so on Wayland.
class ShellSearchAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Shell.SearchProvider2")

public:
    /// Adds the interface to `object`, which owns the adaptor. `provider` must outlive it.
    ShellSearchAdaptor(QObject &object, SearchProvider &provider);

    /// The ids of the results for these words.
    Q_SLOT QStringList GetInitialResultSet(const QStringList &terms) const;

    /// As `GetInitialResultSet`, after the user has typed more.
    Q_SLOT QStringList GetSubsearchResultSet(const QStringList &previousResults,
                                             const QStringList &terms) const;

    /// How to show the results. Leaves out unknown ids, and all after the tenth.
    Q_SLOT QList<QVariantMap> GetResultMetas(const QStringList &identifiers) const;

    /// Copies a result.
    Q_SLOT void ActivateResult(const QString &identifier, const QStringList &terms, uint timestamp);

    /// Opens the panel with the results.
    Q_SLOT void LaunchSearch(const QStringList &terms, uint timestamp);

private:
    SearchProvider &m_provider;
};
