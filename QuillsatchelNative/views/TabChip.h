#pragma once

#include "library/PromptTab.h"
#include "views/PlainButton.h"

#include <QPointer>

#include <functional>
#include <string>

class PopupMenu;
class QAction;
class QLineEdit;

/// One tab of the strip: a label to click, or, while it is being renamed, a field to type into.
/// It reports what the user does and changes nothing itself.
class TabChip final : public PlainButton
{
    Q_OBJECT

public:
    explicit TabChip(QWidget *parent);

    /// A single click, or its equivalent on the keyboard.
    std::function<void()> onSelect = [] {};
    /// A double click, F2 or the menu's "Rename Tab".
    std::function<void()> onRename = [] {};
    /// The menu's "Delete Tab".
    std::function<void()> onDelete = [] {};
    /// Another name was typed.
    std::function<void(const std::string &)> onName = [](const std::string &) {};

    /// Shows the tab as a label or, while it is edited, as a field.
    void render(const PromptTab &tab, bool isActive, bool isEditing, bool canDelete);

    const QUuid &tabID() const { return m_tabID; }

    /// Gives the field the focus and selects its text. False if there is no field.
    bool focusField();
    /// Whether the field has the focus, or gets it back with its window.
    bool isFieldFocused() const;
    /// Whether a press on `widget` is a press on the field.
    bool isInField(const QWidget &widget) const;

    QSize sizeHint() const override;
    /// The width of the text's frame, in points, for a tab of this name.
    static int textWidth(const std::string &name);

protected:
    void nextCheckState() override;
    void paintContent(QPainter &painter) override;
    qreal focusRadius() const override;
    void resizeEvent(QResizeEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void renderName();
    void renderActive(bool isActive);
    void renderField(bool isEditing);
    void makeField();
    void removeField();
    void placeField();
    void makeMenu();

    QUuid m_tabID;
    std::string m_name;
    QAction *m_renaming;
    QAction *m_deletion;
    PopupMenu *m_menu = nullptr; // from its first use on
    QPointer<QLineEdit> m_field;
    bool m_isComposing = false; // in the field, with an input method
};
