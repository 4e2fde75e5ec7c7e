#pragma once

#include <QObject>

/// A model that tells its observers of every change before the change happens. What it publishes
/// are its `Published` members; whoever only needs to redraw listens to `objectWillChange`.
class ObservableObject : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// A published member is about to change; its old value is still readable.
    void objectWillChange();
};
