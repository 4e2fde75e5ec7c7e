#pragma once

#include "support/SrgbColor.h"
#include "views/Shadow.h"

#include <QFont>
#include <QPixmap>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <vector>

class QBoxLayout;
class QVariantAnimation;
class SymbolButton;

/// A modal card on a dimmed backdrop that covers the panel. It takes the focus, keeps it while it
/// is open, closes on Escape or a click on the backdrop, and restores the earlier focus. It appears
/// and disappears with a short fade and a slight zoom.
///
/// The card is as high as its content, if that fits within the overlay's contents margins.
class OverlayCard : public QWidget
{
    Q_OBJECT

public:
    /// Lengths in points, opacities from 0 to 1.
    struct Look {
        int maximumWidth;
        int maximumHeight = QWIDGETSIZE_MAX;
        int closePadding = 8; ///< around the close button
        double backdropOpacity;
        double fillOpacity;
        Shadow shadow;
    };

    /// `name` is the accessible name of the dialog.
    OverlayCard(const QString &name, const Look &look, QWidget *parent);

    /// The user asks to close the card.
    std::function<void()> onClose = [] {};

    /// Shows the card over its parent and moves the focus into it. The reason decides whether a
    /// focus ring is shown.
    void appear(Qt::FocusReason reason = Qt::OtherFocusReason);
    /// Hides the card, which deletes itself afterwards.
    void disappear();

    /// The frame of the card without the backdrop, in the overlay's coordinates.
    QRect cardGeometry() const { return m_card->geometry(); }

protected:
    /// The parent of the content, which subclasses give a layout.
    QWidget *card() const { return m_card; }

    /// Adds centred text with word wrap.
    static void addText(QBoxLayout &layout, const QString &text, const QFont &font,
                        const SrgbColor &color = SrgbColor::white(0.92));

    /// The widget that gets the focus when the card has faded in: by default the close button.
    virtual QWidget &firstFocus() const;
    /// Called when the card has faded in.
    virtual void finishAppearing();

    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void animate(qreal from, qreal to, std::function<void()> done);
    void placeCard();
    void rememberFocus();
    QWidget *earlierFocus() const;
    QPixmap picture() const;
    const QPixmap &shadow();

    Look m_look;
    QWidget *m_card;
    SymbolButton *m_closeButton;
    QPointer<QVariantAnimation> m_animation;       // while the card appears or disappears
    std::vector<QPointer<QWidget>> m_earlierFocus; // the focus widget, then its ancestors
    QPixmap m_picture;                             // of the card, during an animation
    QPixmap m_shadow;                              // recreated when the size or the scale changes
    Qt::FocusReason m_focusReason = Qt::OtherFocusReason;
    qreal m_visibility = 1; // from 0 to 1, also the opacity
    bool m_isBackdropPressed = false;
};
