#pragma once

#include "library/PromptTab.h"
#include "views/PlainButton.h"

#include <QPointer>

#include <functional>
#include <string>

class PopupMenu;
class QAction;
class QLineEdit;

/// A tab of the strip: a label, or a text field while the tab is being renamed. It reports what the
/// user does and changes nothing itself.
class TabChip final : public PlainButton
{
    Q_OBJECT

public:
    explicit TabChip(QWidget *parent);

    /// The user clicked the chip or pressed it by keyboard.
    std::function<void()> onSelect = [] {};
    /// The user double-clicked the chip, pressed F2 or chose "Rename Tab".
    std::function<void()> onRename = [] {};
    /// The user chose "Delete Tab".
    std::function<void()> onDelete = [] {};
    /// The user typed another name.
    std::function<void(const std::string &)> onName = [](const std::string &) {};

    /// Shows the tab as a label or, while it is edited, as a field.
    void render(const PromptTab &tab, bool isActive, bool isEditing, bool canDelete);

    const QUuid &tabID() const { return m_tabID; }

    /// Focuses the field and selects its text. False without a field.
    bool focusField();
    /// Whether the field is the focus widget of its window, even of an inactive one.
    bool isFieldFocused() const;
    /// Whether `widget` is the field or a part of it.
    bool isInField(const QWidget &widget) const;

    QSize sizeHint() const override;
    /// The width in points of the text frame for a tab of this name.
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
    void openFieldMenu(const QContextMenuEvent &event);
    void makeMenu();

    QUuid m_tabID;
    std::string m_name;
    QAction *m_renaming;
    QAction *m_deletion;
    PopupMenu *m_menu = nullptr; // created when first used
    QPointer<QLineEdit> m_field;
    bool m_isComposing = false; // text in the field with an input method
};
