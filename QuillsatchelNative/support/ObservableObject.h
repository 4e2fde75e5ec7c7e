#pragma once

#include <QObject>

/// A model that announces every change before it happens. Observers that need values subscribe to
/// its `Published` members; those that only redraw connect to `objectWillChange`.
class ObservableObject : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// A published member is about to change and still has its old value.
    void objectWillChange();
};
