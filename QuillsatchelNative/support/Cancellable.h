#pragma once

#include <QObject>

#include <utility>

/// A subscription that ends with this token. An owner that keeps its tokens as members is therefore
/// never called after its destruction. Movable, not copyable.
class [[nodiscard]] Cancellable
{
public:
    Cancellable() = default;

    explicit Cancellable(QMetaObject::Connection connection)
        : m_connection(std::move(connection))
    {
    }

    Cancellable(Cancellable &&other) noexcept
        : m_connection(std::exchange(other.m_connection, {}))
    {
    }

    Cancellable &operator=(Cancellable &&other) noexcept
    {
        if (this != &other) {
            cancel();
            m_connection = std::exchange(other.m_connection, {});
        }
        return *this;
    }

    Cancellable(const Cancellable &) = delete;
    Cancellable &operator=(const Cancellable &) = delete;

    ~Cancellable() { cancel(); }

    /// Ends the subscription now. Safe at any time, also during a delivery and more than once.
    void cancel() { QObject::disconnect(std::exchange(m_connection, {})); }

private:
    QMetaObject::Connection m_connection;
};
