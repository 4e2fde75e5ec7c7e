#pragma once

#include "support/Cancellable.h"
#include "support/ObservableObject.h"

#include <memory>
#include <utility>

/// Carries the deliveries of one `Published` member; templates cannot have signals of their own.
class PublishedDelivery final : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void delivered();
};

/// One observable member of an `ObservableObject`.
///
/// Every write, also of an equal value, first announces the owner's `objectWillChange`, then
/// stores, then delivers to the sinks, so that a sink which reads the model sees the new state.
/// Whoever wants no repeats removes them. Sinks may subscribe, cancel and write during a delivery.
template <typename Value>
class Published
{
public:
    explicit Published(ObservableObject *owner, Value initial = {})
        : m_owner(owner)
        , m_value(std::move(initial))
    {
    }

    Published(const Published &) = delete;
    Published &operator=(const Published &) = delete;

    /// Good until the next write.
    const Value &get() const { return m_value; }

    void set(Value value)
    {
        edit([&value](Value &stored) { stored = std::move(value); });
    }

    /// Changes the value in place with one announcement. `change` must not look at the model
    /// through other operations: it sees the value half-way.
    template <typename Change>
    void edit(Change &&change)
    {
        Q_EMIT m_owner->objectWillChange();
        std::forward<Change>(change)(m_value);
        Q_EMIT m_delivery.delivered();
    }

    /// Calls `receive` with the current value at once and with every new value after that, until
    /// the returned token goes.
    template <typename Receive>
    Cancellable sink(Receive receive) const
    {
        // One function for all calls: what it remembers of a value, the next one must find.
        const auto shared = std::make_shared<Receive>(std::move(receive));
        Cancellable subscription(QObject::connect(&m_delivery, &PublishedDelivery::delivered,
                                                  [this, shared] { (*shared)(m_value); }));
        (*shared)(m_value);
        return subscription;
    }

private:
    ObservableObject *m_owner;
    Value m_value;
    PublishedDelivery m_delivery;
};
