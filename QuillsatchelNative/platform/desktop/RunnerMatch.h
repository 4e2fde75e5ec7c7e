#pragma once

#include <QDBusArgument>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

/// A result for Plasma's KRunner, in the order of its D-Bus structure (sssida{sv}).
struct RunnerMatch {
    QString id;
    QString text;
    QString iconName;
    int type;         ///< in which group it is shown: 100 for exact matches, 30 for possible ones
    double relevance; ///< from 0 to 1, orders the matches of one type
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const RunnerMatch &match);
const QDBusArgument &operator>>(const QDBusArgument &argument, RunnerMatch &match);

Q_DECLARE_METATYPE(RunnerMatch)
