#pragma once

#include <QPointer>
#include <QWidget>

class OverlayScrollBar;

/// Scrolls content of any height by the wheel, by keys and by an indicator that lies over the
/// content. A row that gets the keyboard focus is scrolled into view.
class ScrollView final : public QWidget
{
    Q_OBJECT

public:
    explicit ScrollView(QWidget *parent);
    ~ScrollView() override;

    /// The parent of the rows; give it a layout.
    QWidget *content() const { return m_content; }

    /// Scrolls to a child of the content and keeps it visible when sizes change, until the user
    /// scrolls.
    void reveal(QWidget &row);
    /// Handles a `Qt::Key`. False if it is not a scroll key.
    bool scroll(int key);

    /// As high as the content.
    QSize sizeHint() const override;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void revealFocus(QWidget *focus);
    void layOut();
    void placeContent();
    void revealRow();

    QWidget *m_content;
    OverlayScrollBar *m_scrollBar;
    QPointer<QWidget> m_row; // kept visible
};
