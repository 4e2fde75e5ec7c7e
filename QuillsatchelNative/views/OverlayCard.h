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

/// A card that floats over the whole panel on a dimmed ground, as a dialog: it takes the keyboard
/// focus, keeps it while it is open, closes on Escape or a click beside the card, and gives the
/// focus back. It comes and goes with a short fade and a slight change of size.
///
/// The card is as high as its content asks for, as far as there is room; its place is within the
/// overlay's contents margins.
class OverlayCard : public QWidget
{
    Q_OBJECT

public:
    /// Lengths in points, opacities from 0 to 1.
    struct Look {
        int widest;
        int tallest = QWIDGETSIZE_MAX;
        double backdropOpacity;
        double fillOpacity;
        Shadow shadow;
    };

    /// `name` is the dialog's name for those who hear it.
    OverlayCard(const QString &name, const Look &look, QWidget *parent);

    /// The user asks to close the card.
    std::function<void()> onClose = [] {};

    /// Shows the card over its parent and moves the focus into it, for this reason: it decides
    /// whether the button with the focus shows it.
    void appear(Qt::FocusReason reason = Qt::OtherFocusReason);
    /// Lets the card go; it deletes itself once it is gone.
    void disappear();

    /// The part that is not backdrop, in the overlay's coordinates.
    QRect cardGeometry() const { return m_card->geometry(); }

protected:
    /// The card, for subclasses to lay their content out on.
    QWidget *card() const { return m_card; }

    /// Adds centred text, broken into lines where it must be.
    static void addText(QBoxLayout &layout, const QString &text, const QFont &font,
                        const SrgbColor &color = SrgbColor::white(0.92));

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
    void finishAppearing();
    void rememberFocus();
    QWidget *earlierFocus() const;
    QPixmap picture() const;
    const QPixmap &shadow();

    Look m_look;
    QWidget *m_card;
    SymbolButton *m_closeButton;
    QPointer<QVariantAnimation> m_animation;       // while the card comes or goes
    std::vector<QPointer<QWidget>> m_earlierFocus; // the widget, then those it lies in
    QPixmap m_picture;                             // of the card, while it comes or goes
    QPixmap m_shadow;                              // made anew when the card's size changes
    Qt::FocusReason m_focusReason = Qt::OtherFocusReason;
    qreal m_presence = 1;
    bool m_isPressedBeside = false;
};
