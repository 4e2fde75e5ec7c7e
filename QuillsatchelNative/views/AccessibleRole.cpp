#include "views/AccessibleRole.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QVariant>

namespace
{

constexpr const char *RoleProperty = "accessibleRole";

class RoleInterface final : public QAccessibleWidget
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (const auto *const pressable = button()) {
            state.selectable = pressable->isCheckable();
            state.selected = pressable->isChecked();
        }
        return state;
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (button())
            names.prepend(pressAction());
        return names;
    }

    void doAction(const QString &name) override
    {
        if (button() && name == pressAction())
            button()->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    QAbstractButton *button() const { return qobject_cast<QAbstractButton *>(object()); }
};

QAccessibleInterface *makeInterface(const QString & /*className*/, QObject *object)
{
    auto *const widget = qobject_cast<QWidget *>(object);
    const QVariant role = widget ? widget->property(RoleProperty) : QVariant();
    if (!role.isValid())
        return nullptr;
    return new RoleInterface(widget, static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void setAccessibleRole(QWidget &widget, QAccessible::Role role)
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    Q_UNUSED(isInstalled)
    widget.setProperty(RoleProperty, static_cast<int>(role));
}
