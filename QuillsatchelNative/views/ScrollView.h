#pragma once

#include <QPointer>
#include <QWidget>

class OverlayScrollBar;

/// Shows content of any height through a window on it. It scrolls by wheel, by its indicator, which
/// lies over the content, and by keys; what gets the keyboard focus is brought into sight.
class ScrollView final : public QWidget
{
    Q_OBJECT

public:
    explicit ScrollView(QWidget *parent);
    ~ScrollView() override;

    /// What scrolls: give it a layout. Its rows come into sight whole.
    QWidget *content() const { return m_content; }

    /// Brings a child of the content into sight, and keeps it there when sizes change until the
    /// user scrolls.
    void reveal(QWidget &row);
    /// Scrolls as the key (`Qt::Key`) says. False if it is none for that.
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
    QPointer<QWidget> m_row; // to be kept in sight
};
