#pragma once

#include "library/SatchelStore.h"
#include "views/RenderScheduler.h"

#include <QWidget>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QScrollArea;
class SymbolButton;
class TabChip;

/// A scrolling row with one chip per tab, and the button that adds a tab. The strip's only state is
/// which chip is being renamed; it reads everything else from the store and reports what the user
/// does through its callbacks.
///
/// Renaming ends when the focus leaves the field, on a press outside the field, and when a tab is
/// added. Until then the row keeps the chip visible.
class TabStrip final : public QWidget
{
    Q_OBJECT

public:
    /// The store must outlive the strip.
    TabStrip(const SatchelStore &store, MainQueue &mainQueue, QWidget *parent);

    /// The user selected the tab, perhaps the active one.
    std::function<void(const QUuid &)> onSelect = [](const QUuid &) {};
    /// The user typed another name; called for every change of the field.
    std::function<void(const QUuid &, const std::string &)> onRename = [](const QUuid &,
                                                                          const std::string &) {};
    std::function<void(const QUuid &)> onDelete = [](const QUuid &) {};
    /// The user pressed the button for a new tab.
    std::function<void()> onAdd = [] {};

    /// The height in points without the contents margins.
    static constexpr int Height = 38;

    void render();

    /// The widgets that Tab visits, in order.
    QList<QWidget *> focusStops() const;
    /// Scrolls to the chip with the keyboard focus, if there is one.
    void revealFocus();

    QSize sizeHint() const override;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void makeRow();
    void renderChips();
    TabChip *takeChip(const QUuid &id, std::vector<TabChip *> &spare);
    TabChip *makeChip();
    void removeChip(TabChip *chip);
    void layOutChips();
    bool revealActiveChip();
    void revealEditedChip();
    void keepFocus(std::size_t index, bool isAnotherActive, Qt::FocusReason reason);
    TabChip *chipOf(const std::optional<QUuid> &id) const;
    TabChip *activeChip() const;
    TabChip *focusedChip() const;

    void beginEditing(const QUuid &id);
    void focusField(const QUuid &id);
    void followFocus();
    void endEditing();

    const SatchelStore &m_store;
    MainQueue &m_mainQueue;
    RenderScheduler m_scheduler;
    QScrollArea *m_scrollArea;
    QWidget *m_row;
    SymbolButton *m_newTabButton;
    std::vector<TabChip *> m_chips; // in the order of the tabs
    std::optional<QUuid> m_editingTabID;
    std::optional<QUuid> m_focusedTabID; // the edited tab, once its field has the focus
    std::optional<QUuid> m_revealedTabID;
};
