#pragma once

#include <QDBusArgument>
#include <QMetaType>
#include <QString>

/// What a result of Plasma's KRunner can do besides its default, in the order of its D-Bus
/// structure (sss).
struct RunnerAction {
    QString id;
    QString title;
    QString iconName;
};

QDBusArgument &operator<<(QDBusArgument &argument, const RunnerAction &action);
const QDBusArgument &operator>>(const QDBusArgument &argument, RunnerAction &action);

Q_DECLARE_METATYPE(RunnerAction)
