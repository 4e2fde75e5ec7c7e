#pragma once

#include "support/Cancellable.h"
#include "support/ObservableObject.h"

#include <memory>
#include <utility>

/// The signal of a `Published` member. Templates cannot declare signals.
class PublishedDelivery final : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void delivered();
};

/// One observable member of an `ObservableObject`.
///
/// Every write, also of an equal value, emits the owner's `objectWillChange`, stores the value, and
/// then delivers it to the sinks, so that a sink that reads the model sees the new state.
/// Subscribers filter out equal values themselves. Sinks may subscribe, cancel and write during a
/// delivery.
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

    /// Valid until the next write.
    const Value &get() const { return m_value; }

    void set(Value value)
    {
        edit([&value](Value &stored) { stored = std::move(value); });
    }

    /// Changes the value in place with one announcement. `change` must not call other operations of
    /// the model, because the value is incomplete meanwhile.
    template <typename Change>
    void edit(Change &&change)
    {
        Q_EMIT m_owner->objectWillChange();
        std::forward<Change>(change)(m_value);
        Q_EMIT m_delivery.delivered();
    }

    /// Calls `receive` immediately with the current value, and with every new value until the
    /// returned token is destroyed.
    template <typename Receive>
    Cancellable sink(Receive receive) const
    {
        // Shared, so that state that `receive` keeps between calls is not copied.
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
