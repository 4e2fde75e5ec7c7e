#pragma once

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QRect>
#include <QString>
#include <QWidget>

#include <string>
#include <vector>

/// An object as assistive programs know it.
struct AccessibleObject {
    QAccessibleInterface *accessible;
    std::string path; ///< role and name of it and of all that it is in

    std::string name() const { return text(QAccessible::Name); }

    std::string description() const { return text(QAccessible::Description); }

    QAccessible::Role role() const { return accessible->role(); }

    /// On the screen.
    QRect place() const { return accessible->rect(); }

    /// Null for rows of a list.
    QWidget *widget() const { return qobject_cast<QWidget *>(accessible->object()); }

    /// Whether the user can do something with it.
    bool isInteractive() const
    {
        auto *const actions = accessible->actionInterface();
        return accessible->state().focusable || accessible->valueInterface() ||
               (actions && !actions->actionNames().isEmpty());
    }

    /// Whether nothing of it is scrolled away or covered.
    bool isWholeInSight() const
    {
        const auto *const seen = widget();
        return seen && seen->visibleRegion().boundingRect() == seen->rect();
    }

    /// Whether it is the part out of sight of something that is partly in sight.
    bool isCutOff() const
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

/// What assistive programs find below a widget.
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
        if (object.isCutOff())
            continue;
        found.push_back(object);
        collect(*child, object.path, found);
    }
}

/// All that is not said to be hidden or out of sight, in the order of the tree.
inline std::vector<AccessibleObject> noticeable(QWidget &widget)
{
    std::vector<AccessibleObject> found;
    collect(*QAccessible::queryAccessibleInterface(&widget), {}, found);
    return found;
}

} // namespace AccessibleTree
