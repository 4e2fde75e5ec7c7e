#include "views/AccessibleRole.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QAction>
#include <QVariant>

#include <algorithm>

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
        state.modal = role() == QAccessible::Dialog;
        state.offscreen = !state.invisible && widget()->visibleRegion().isEmpty();
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
        for (const auto *const action : actions()) {
            if (action->isEnabled())
                names.append(action->text());
        }
        return names;
    }

    void doAction(const QString &name) override
    {
        if (button() && name == pressAction()) {
            button()->click();
            return;
        }
        const auto own = actions();
        const auto named = std::ranges::find(own, name, &QAction::text);
        if (named != own.end())
            (*named)->trigger();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    QAbstractButton *button() const { return qobject_cast<QAbstractButton *>(object()); }

    /// None for a window: its actions belong to its menus, which are separate accessible objects.
    QList<QAction *> actions() const
    {
        return widget()->isWindow() ? QList<QAction *>() : widget()->actions();
    }
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
