#pragma once

#include <QByteArray>
#include <QtGlobal>

/// Sets the time zone of this process during its lifetime, as POSIX text such as "EST5" or as name.
class TimeZone
{
public:
    explicit TimeZone(const char *zone) { set(zone); }

    TimeZone(const TimeZone &) = delete;
    TimeZone &operator=(const TimeZone &) = delete;

    ~TimeZone() { m_previous.isNull() ? qunsetenv("TZ") : qputenv("TZ", m_previous); }

    void set(const char *zone) { qputenv("TZ", zone); }

private:
    QByteArray m_previous = qgetenv("TZ");
};
