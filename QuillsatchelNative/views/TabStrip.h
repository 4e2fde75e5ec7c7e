#pragma once

#include "library/SatchelStore.h"
#include "views/RenderScheduler.h"

#include <QWidget>

#include <cstddef>
#include <optional>
#include <vector>

class QScrollArea;
class SymbolButton;
class TabChip;

/// The bar with one chip a tab in a row that scrolls, and the button that adds a tab. It keeps
/// only which chip is being renamed; everything else is the store's.
///
/// Renaming ends when the focus leaves the field, on a press outside the field, and when a tab is
/// added. Meanwhile the row does not scroll the chip out of sight.
class TabStrip final : public QWidget
{
    Q_OBJECT

public:
    TabStrip(SatchelStore &store, MainQueue &mainQueue, QWidget *parent);

    /// The strip's height without its contents margins, in points.
    static constexpr int Height = 38;

    void render();

    /// What Tab visits here, in its order.
    QList<QWidget *> focusStops() const;
    /// Scrolls the chip with the keyboard focus into sight, if there is one.
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
    void keepFocus(std::size_t place, bool isAnotherActive, Qt::FocusReason reason);
    TabChip *chipOf(const std::optional<QUuid> &id) const;
    TabChip *activeChip() const;
    TabChip *focusedChip() const;

    void beginEditing(const QUuid &id);
    void focusField(const QUuid &id);
    void followFocus();
    void endEditing();
    void addTab();

    SatchelStore &m_store;
    MainQueue &m_mainQueue;
    RenderScheduler m_scheduler;
    QScrollArea *m_scrollArea;
    QWidget *m_row;
    SymbolButton *m_newTabButton;
    std::vector<TabChip *> m_chips; // in the order of the tabs
    std::optional<QUuid> m_editingTabID;
    std::optional<QUuid> m_focusedTabID; // once the field of the edited tab has the focus
    std::optional<QUuid> m_revealedTabID;
};
