#pragma once

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QRect>
#include <QString>
#include <QWidget>

#include <string>
#include <vector>

/// An object of the accessibility tree.
struct AccessibleObject {
    QAccessibleInterface *accessible;
    std::string path; ///< roles and names from the root to the object

    std::string name() const { return text(QAccessible::Name); }

    std::string description() const { return text(QAccessible::Description); }

    QAccessible::Role role() const { return accessible->role(); }

    /// In screen coordinates.
    QRect frame() const { return accessible->rect(); }

    /// Null for the rows of a list.
    QWidget *widget() const { return qobject_cast<QWidget *>(accessible->object()); }

    /// Whether the object takes focus or offers a value or an action.
    bool isInteractive() const
    {
        auto *const actions = accessible->actionInterface();
        return accessible->state().focusable || accessible->valueInterface() ||
               (actions && !actions->actionNames().isEmpty());
    }

    bool isFullyVisible() const
    {
        const auto *const shown = widget();
        return shown && shown->visibleRegion().boundingRect() == shown->rect();
    }

    /// Whether the object is a hidden part of a partly visible parent.
    bool isScrolledOut() const
    {
        const auto *const part = widget();
        return part && part->visibleRegion().isEmpty() &&
               part->parentWidget()->visibleRegion().boundingRect() != part->parentWidget()->rect();
    }

private:
    std::string text(QAccessible::Text which) const
    {
        return accessible->text(which).toStdString();
    }
};

namespace AccessibleTree
{

inline void collect(QAccessibleInterface &parent, const std::string &path,
                    std::vector<AccessibleObject> &found)
{
    for (int index = 0; index < parent.childCount(); ++index) {
        auto *const child = parent.child(index);
        if (!child || child->state().invisible || child->state().offscreen)
            continue;
        const AccessibleObject object { child,
                                        path + " / " + std::to_string(child->role()) + " \"" +
                                            child->text(QAccessible::Name).toStdString() + '"' };
        if (object.isScrolledOut())
            continue;
        found.push_back(object);
        collect(*child, object.path, found);
    }
}

/// The descendants that are neither hidden nor scrolled away, in tree order.
inline std::vector<AccessibleObject> visibleObjects(QWidget &widget)
{
    std::vector<AccessibleObject> found;
    collect(*QAccessible::queryAccessibleInterface(&widget), {}, found);
    return found;
}

} // namespace AccessibleTree
