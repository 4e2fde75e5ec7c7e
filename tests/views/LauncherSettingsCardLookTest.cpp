#include "fakes/PictureBytes.h"
#include "views/LauncherCardFixture.h"
#include "views/Painting.h"
#include "views/Picture.h"
#include "views/PushButton.h"
#include "views/Symbol.h"
#include "views/SymbolView.h"

#include <QLabel>
#include <gtest/gtest.h>

#include <vector>

namespace
{

constexpr SrgbColor SettingsFill { 0.035, 0.035, 0.045, 0.98 };
constexpr auto Secondary = SrgbColor::white(0.56);

class LauncherSettingsCardLookTest : public LauncherCardFixture
{
protected:
    QRect body() const { return card->cardGeometry(); }

    Picture takePicture(const QColor &background = Qt::black) const
    {
        return Picture(*card, background);
    }

    QColor dimmed() const { return over(SrgbColor::black(0.62), Background); }

    QColor cardFill() const { return over(SettingsFill, Qt::black); }

    QColor editorFill() const { return over(SrgbColor::white(0.055), cardFill()); }

    QList<QLabel *> texts() const { return card->findChildren<QLabel *>(); }

    /// The square of `size` at `left` in the first row of an editor.
    static QRect square(const LauncherSlotEditor &editor, int left, int size)
    {
        const EditorParts shown(const_cast<LauncherSlotEditor &>(editor));
        const int rowBottom = Input::frameIn(editor, shown.chooseButton()).top() - 7;
        return { left, 9 + (rowBottom - 9 - size) / 2, size, size };
    }
};

TEST_F(LauncherSettingsCardLookTest, DimsTheWholePanel)
{
    openCard();
    EXPECT_EQ(card->geometry(), panel.rect());
    const Picture picture = takePicture(Background);
    for (const QPointF position :
         { QPointF(0.3, 0.3), QPointF(429.5, 0.3), QPointF(0.3, 649.5), QPointF(429.5, 649.5) })
        EXPECT_TRUE(isColor(picture.at(position.x(), position.y()), dimmed()));
}

TEST_F(LauncherSettingsCardLookTest, IsCenteredAnd360PointsWide)
{
    for (const QSize size : { QSize(430, 650), QSize(390, 420), QSize(900, 900) }) {
        panel.resize(size);
        openCard();
        EXPECT_EQ(body().width(), 360);
        EXPECT_LE(body().height(), std::min(560, size.height()));
        EXPECT_NEAR(QRectF(body()).center().x(), size.width() / 2.0, 0.5);
        EXPECT_NEAR(QRectF(body()).center().y(), size.height() / 2.0, 0.5);
        delete card;
    }
}

TEST_F(LauncherSettingsCardLookTest, ShrinksOnlyItsListInASmallPanel)
{
    openCard();
    const int listTop = frameOf(list()).top() - body().top();
    const int whole = body().height();
    panel.resize(390, 420);
    card->setGeometry(panel.rect());
    settle();
    EXPECT_EQ(body().height(), 420);
    EXPECT_EQ(frameOf(list()).top() - body().top(), listTop);
    EXPECT_EQ(frameOf(list()).height(), 420 - listTop - 16);
    EXPECT_EQ(list().content()->height(), whole - listTop - 16);
}

TEST_F(LauncherSettingsCardLookTest, StaysInsideThePanelMargins)
{
    panel.resize(390, 420);
    openCard();
    card->setContentsMargins(0, 28, 0, 0);
    card->setGeometry(0, 0, 390, 421);
    settle();
    EXPECT_EQ(body().top(), 28);
    EXPECT_EQ(body().height(), 421 - 28);
}

TEST_F(LauncherSettingsCardLookTest, IsFilledAndStroked)
{
    openCard();
    const Picture picture = takePicture();
    const qreal middle = body().center().y();
    const QColor stroke = over(SrgbColor::white(0.14), cardFill());
    EXPECT_TRUE(isColor(picture.at(body().left() + 8, middle), cardFill(), 1));
    EXPECT_TRUE(isColor(picture.at(body().left() + 0.4, middle), stroke));
    EXPECT_TRUE(isColor(picture.at(body().left() + 1.4, middle), cardFill()));
    EXPECT_TRUE(isColor(picture.at(body().center().x(), body().top() + 0.4), stroke));
    // The card is 98 % opaque.
    const Picture onBackground = takePicture(Background);
    EXPECT_TRUE(
        isColor(onBackground.at(body().left() + 8, middle), over(SettingsFill, dimmed()), 1));
}

TEST_F(LauncherSettingsCardLookTest, HasCornerRadius20)
{
    openCard();
    const Picture picture = takePicture();
    const Picture shape(panel, Qt::black, [this](QPainter &painter) {
        drawBox(painter, body(), 20, SettingsFill, SrgbColor::white(0.14));
    });
    for (const QPoint corner : { body().topLeft(), QPoint(body().left(), body().bottom() - 13),
                                 QPoint(body().right() - 13, body().bottom() - 13) })
        EXPECT_EQ(picture.differenceFrom(shape, QRectF(corner, QSizeF(14, 14))), QRectF());
}

TEST_F(LauncherSettingsCardLookTest, CastsAShadowDownwards)
{
    openCard();
    const Picture picture = takePicture(Qt::white);
    const int dimmedWhite = over(SrgbColor::black(0.62), Qt::white).red();
    const auto darknessAt = [dimmedWhite, &picture](qreal x, qreal y) {
        return dimmedWhite - picture.at(x, y).red();
    };
    const qreal middle = body().center().x();
    EXPECT_GT(darknessAt(middle, body().bottom() + 6), darknessAt(middle, body().top() - 6) + 16);
    EXPECT_GT(darknessAt(middle, body().bottom() + 6), darknessAt(middle, body().bottom() + 26));
    EXPECT_GT(darknessAt(middle, body().bottom() + 30), 2);
    EXPECT_NEAR(darknessAt(body().left() - 10, body().center().y()),
                darknessAt(body().right() + 10, body().center().y()), 3);
    // At the offset edge the shadow has half its strength.
    EXPECT_NEAR(darknessAt(middle, body().bottom() + 1 + 16), dimmedWhite * 0.6 / 2, 3);
    // One standard deviation (half the blur radius) further out it has a sixth.
    EXPECT_NEAR(darknessAt(middle, body().bottom() + 1 + 16 + 15), dimmedWhite * 0.6 * 0.159, 3);
}

TEST_F(LauncherSettingsCardLookTest, PlacesCloseButton8PointsFromTopRightCorner)
{
    openCard();
    const QRect frame = frameOf(closeButton());
    EXPECT_EQ(frame.size(), QSize(28, 28));
    EXPECT_EQ(body().right() - frame.right(), 8);
    EXPECT_EQ(frame.top() - body().top(), 8);
    Input::click(closeButton(), QPoint(1, 1));
    Input::click(closeButton(), QPoint(26, 26));
    EXPECT_EQ(closings, 2);

    parts(0).field().setFocus();
    const Picture picture = takePicture();
    const QRectF ink = picture.inkIn(frame, cardFill());
    EXPECT_NEAR(ink.center().x(), QRectF(frame).center().x(), 0.75);
    EXPECT_NEAR(ink.center().y(), QRectF(frame).center().y(), 0.75);
    EXPECT_NEAR(ink.width(), 8, 1);
    EXPECT_TRUE(
        isColor(picture.strongestInkIn(frame, cardFill()), over(Secondary, cardFill()), 16));
}

TEST_F(LauncherSettingsCardLookTest, ShowsASymbolATitleAndANote)
{
    openCard();
    const auto &symbol = *card->findChild<SymbolView *>();
    const QRect frame = frameOf(symbol);
    EXPECT_EQ(frame.top(), body().top() + 16);
    EXPECT_EQ(frame.size(), QSize(24, 24));
    EXPECT_NEAR(QRectF(frame).center().x(), QRectF(body()).center().x(), 0.5);
    const Picture drawn(symbol, cardFill(), [](QPainter &painter) {
        Symbol::paint(painter, QStringLiteral("square.grid.2x2"), { 0, 0, 24, 24 }, Accent);
    });
    EXPECT_EQ(Picture(const_cast<SymbolView &>(symbol), cardFill()).differenceFrom(drawn),
              QRectF());

    ASSERT_EQ(texts().size(), 2);
    const auto &title = *texts()[0];
    const auto &note = *texts()[1];
    EXPECT_EQ(title.text().toStdString(), "Quick Launchers");
    EXPECT_EQ(title.font().pixelSize(), 16);
    EXPECT_EQ(title.font().weight(), QFont::DemiBold);
    EXPECT_TRUE(isColor(title.palette().color(QPalette::WindowText),
                        Painting::qColor(SrgbColor::white(0.92))));
    EXPECT_EQ(note.text().toStdString(),
              "Add up to five applications or websites to the Quillsatchel menu-bar menu.");
    EXPECT_EQ(note.font().pixelSize(), 10);
    EXPECT_EQ(note.font().weight(), QFont::Normal);
    EXPECT_TRUE(isColor(note.palette().color(QPalette::WindowText), Painting::qColor(Secondary)));
    for (const auto *const text : texts()) {
        EXPECT_EQ(text->alignment(), Qt::AlignCenter);
        EXPECT_GE(frameOf(*text).left(), body().left() + 14);
        EXPECT_LE(frameOf(*text).right(), body().right() - 14);
    }
    EXPECT_EQ(frameOf(title).top() - frame.bottom() - 1, 3);
    EXPECT_EQ(frameOf(note).top() - frameOf(title).bottom() - 1, 3);
    EXPECT_EQ(frameOf(list()).top() - frameOf(note).bottom() - 1, 12);
}

TEST_F(LauncherSettingsCardLookTest, SpacesItsEditorsBy8Points)
{
    openCard();
    int bottom = frameOf(list()).top() - 8 - 1;
    for (int slot = 0; slot < 5; ++slot) {
        const QRect frame = frameOf(editor(slot));
        EXPECT_EQ(frame.left(), body().left() + 14) << slot;
        EXPECT_EQ(frame.right(), body().right() - 14) << slot;
        EXPECT_EQ(frame.top() - bottom - 1, 8) << slot;
        bottom = frame.bottom();
    }
    EXPECT_EQ(bottom, body().bottom() - 16);
}

TEST_F(LauncherSettingsCardLookTest, ShowsTheScrollPosition)
{
    panel.resize(390, 420);
    openCard();
    const QRectF strip(body().right() - 12, frameOf(list()).top(), 11, frameOf(list()).height());
    const QRectF atTop = takePicture().inkIn(strip, cardFill());
    EXPECT_GE(atTop.height(), 60);
    EXPECT_LE(atTop.width(), 6);
    EXPECT_LE(atTop.top(), strip.top() + 3);
    Input::key(panel, Qt::Key_End);
    EXPECT_GE(takePicture().inkIn(strip, cardFill()).bottom(), strip.bottom() - 3);
    panel.resize(430, 650);
    card->setGeometry(panel.rect());
    settle();
    const QRectF wider(body().right() - 12, frameOf(list()).top(), 11, frameOf(list()).height());
    EXPECT_EQ(takePicture().inkIn(wider, cardFill()), QRectF());
}

TEST_F(LauncherSettingsCardLookTest, FillsAndStrokesItsEditors)
{
    openCard();
    const Picture picture = takePicture();
    const QRect frame = frameOf(editor(1));
    const Picture shape(panel, cardFill(), [&frame](QPainter &painter) {
        drawBox(painter, frame, 10, SrgbColor::white(0.055), SrgbColor::white(0.09));
    });
    for (const QRectF &corner : cornersOf(frame, 8))
        EXPECT_EQ(picture.differenceFrom(shape, corner, 2), QRectF());
    EXPECT_TRUE(isColor(picture.at(frame.center().x(), frame.top() + 4), editorFill(), 1));
    EXPECT_TRUE(isColor(picture.at(frame.left() + 0.4, frame.center().y()),
                        over(SrgbColor::white(0.09), editorFill()), 1));
}

TEST_F(LauncherSettingsCardLookTest, LaysOutAnEditorInTwoRows)
{
    store().setWebsite("example.com", 0);
    openCard();
    auto &first = editor(0);
    const auto shown = parts(0);
    const QRect title = Input::frameIn(first, shown.label(0));
    const QRect subtitle = Input::frameIn(first, shown.label(1));
    const QRect clear = Input::frameIn(first, *shown.clearButton());
    const QRect choose = Input::frameIn(first, shown.chooseButton());
    const QRect field = Input::frameIn(first, shown.field());
    const QRect set = Input::frameIn(first, shown.setButton());

    EXPECT_EQ(title.left(), 9 + 17 + 8 + 22 + 8);
    EXPECT_EQ(subtitle.left(), title.left());
    EXPECT_EQ(subtitle.top() - title.bottom() - 1, 1);
    EXPECT_EQ(title.top(), 9);
    EXPECT_EQ(clear.right(), first.width() - 9 - 1);
    EXPECT_EQ(clear.left() - title.right() - 1, 8);
    EXPECT_NEAR(QRectF(clear).center().y(), (title.top() + subtitle.bottom() + 1) / 2.0, 0.5);

    EXPECT_EQ(choose.topLeft(), QPoint(9, subtitle.bottom() + 1 + 7));
    EXPECT_EQ(field.left() - choose.right() - 1, 6);
    EXPECT_EQ(set.left() - field.right() - 1, 6);
    EXPECT_EQ(set.right(), first.width() - 9 - 1);
    for (const QRect &control : { choose, field, set }) {
        EXPECT_EQ(control.height(), PushButton::Height);
        EXPECT_EQ(control.top(), choose.top());
        EXPECT_EQ(control.bottom(), first.height() - 9 - 1);
    }
    // Without the clear button the texts are wider.
    EXPECT_EQ(Input::frameIn(editor(1), parts(1).label(0)).right(), first.width() - 9 - 1);
}

TEST_F(LauncherSettingsCardLookTest, AlignsTheTextsOfFieldAndButtons)
{
    openCard();
    const auto shown = parts(0);
    shown.enter("SURL"); // capitals only, like the tallest letters of "Set URL"
    closeButton().setFocus();
    const Picture picture(editor(0), cardFill());
    const auto inkOf = [&](const QWidget &control) {
        const QRectF inside = QRectF(Input::frameIn(editor(0), control)).adjusted(2, 2, -2, -2);
        return picture.inkIn(inside, picture.at(inside.left(), inside.center().y()));
    };
    const QRectF field = inkOf(shown.field());
    const QRectF button = inkOf(shown.setButton());
    ASSERT_GT(field.height(), 5);
    EXPECT_EQ(field.top(), button.top());
    EXPECT_EQ(field.bottom(), button.bottom());
}

TEST_F(LauncherSettingsCardLookTest, SetsFontAndColorOfEachEditorText)
{
    openCard();
    parts(0).submit("ftp://example.com");
    settle();
    closeButton().setFocus();

    struct Style {
        int size;
        QFont::Weight weight;
        SrgbColor color;
    };

    const std::vector<Style> styles { { 11, QFont::DemiBold, SrgbColor::white(0.92) },
                                      { 9, QFont::Normal, Secondary },
                                      { 9, QFont::Normal, Accent } };
    for (qsizetype index = 0; index < 3; ++index) {
        auto &label = parts(0).label(index);
        const auto &style = styles[static_cast<std::size_t>(index)];
        EXPECT_EQ(label.font().pixelSize(), style.size) << index;
        EXPECT_EQ(label.font().weight(), style.weight) << index;
        const Picture picture(label, editorFill());
        EXPECT_TRUE(isColor(picture.strongestInkIn(picture.rect(), editorFill()),
                            over(style.color, editorFill()), 40))
            << index;
    }
    const QRect message = Input::frameIn(editor(0), parts(0).label(2));
    EXPECT_EQ(message.left(), 9);
    EXPECT_EQ(message.right(), editor(0).width() - 9 - 1);
    EXPECT_EQ(message.top() - Input::frameIn(editor(0), parts(0).field()).bottom() - 1, 7);
    EXPECT_EQ(message.bottom(), editor(0).height() - 9 - 1);
    const Picture picture(parts(0).label(2), Qt::black);
    EXPECT_LE(picture.inkIn(picture.rect(), Qt::black).left(), 2);
}

TEST_F(LauncherSettingsCardLookTest, ElidesNamesAtTheEndAndAddressesInTheMiddle)
{
    const std::string host = "a-very-long-name-of-a-host-that-no-row-has-room-for.example.com";
    store().setWebsite(host + "/a/path", 0);
    openCard();
    const std::vector<std::string> texts { host, "https://" + host + "/a/path" };
    for (qsizetype index = 0; index < 2; ++index) {
        auto &label = parts(0).label(index);
        const auto text = QString::fromStdString(texts[static_cast<std::size_t>(index)]);
        const auto mode = index == 0 ? Qt::ElideRight : Qt::ElideMiddle;
        const Picture expected(label, editorFill(), [&](QPainter &painter) {
            painter.setFont(label.font());
            painter.setPen(Painting::qColor(index == 0 ? SrgbColor::white(0.92) : Secondary));
            painter.drawText(label.rect(), Qt::AlignLeft | Qt::AlignVCenter,
                             label.fontMetrics().elidedText(text, mode, label.width()));
        });
        EXPECT_EQ(Picture(label, editorFill()).differenceFrom(expected), QRectF()) << index;
    }
}

TEST_F(LauncherSettingsCardLookTest, ShowsTheSlotNumberOnACircle)
{
    openCard();
    for (const int slot : { 0, 4 }) {
        auto &shown = editor(slot);
        const QRect badge = square(shown, 9, 17);
        const Picture expected(shown, editorFill(), [&](QPainter &painter) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor::fromRgbF(1, 1, 1, 0.07F));
            painter.drawEllipse(QRectF(badge));
            painter.setFont(Painting::systemFont(10, QFont::Bold));
            painter.setPen(Painting::qColor(Secondary));
            painter.drawText(badge, Qt::AlignCenter, QString::number(slot + 1));
        });
        const Picture picture(shown, cardFill());
        EXPECT_EQ(picture.differenceFrom(expected, badge, 4), QRectF()) << slot;
    }
}

TEST_F(LauncherSettingsCardLookTest, ShowsASymbolWithoutAnIcon)
{
    store().setWebsite("example.com", 0);
    fillWithApplication(1);
    openCard();
    const std::vector<QString> symbols { QStringLiteral("globe"), QStringLiteral("app"),
                                         QStringLiteral("plus.square.dashed") };
    for (int slot = 0; slot < 3; ++slot) {
        auto &shown = editor(slot);
        const QRect frame = square(shown, 9 + 17 + 8, 22);
        const Picture expected(shown, editorFill(), [&](QPainter &painter) {
            Symbol::paint(painter, symbols[static_cast<std::size_t>(slot)], frame, Secondary);
        });
        EXPECT_EQ(Picture(shown, cardFill()).differenceFrom(expected, frame, 4), QRectF()) << slot;
    }
}

TEST_F(LauncherSettingsCardLookTest, FillsTheFrameWithTheIcon)
{
    machine.workspace.icon = PictureBytes::filled(256, 256, Qt::green);
    fillWithApplication(0);
    openCard();
    auto &shown = editor(0);
    const Picture picture(shown, cardFill());
    const QRect frame = square(shown, 9 + 17 + 8, 22);
    const QRectF around = QRectF(frame).adjusted(-6, -6, 6, 6);
    for (const QPointF inside : { QPointF(frame.left() + 0.3, frame.top() + 0.3),
                                  QPointF(frame.right() + 0.7, frame.bottom() + 0.7) })
        EXPECT_TRUE(isColor(picture.at(inside.x(), inside.y()), Qt::green));
    EXPECT_EQ(picture.inkIn(around, editorFill()), QRectF(frame));
}

TEST_F(LauncherSettingsCardLookTest, ShowsIconsAtDevicePixelResolution)
{
    // Stripes of one device pixel disappear if the icon is scaled.
    const int side = 22 * static_cast<int>(panel.devicePixelRatio());
    QImage stripes(side, side, QImage::Format_ARGB32);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            stripes.setPixelColor(x, y, x % 2 ? Qt::white : Qt::black);
    }
    machine.workspace.icon = stripes;
    fillWithApplication(0);
    openCard();
    auto &shown = editor(0);
    const Picture picture(shown, cardFill());
    const QRect frame = square(shown, 9 + 17 + 8, 22);
    for (int x = 0; x < side; ++x) {
        const qreal left = frame.left() + (x + 0.5) / picture.scale();
        EXPECT_TRUE(isColor(picture.at(left, frame.center().y()), x % 2 ? Qt::white : Qt::black));
    }
}

TEST_F(LauncherSettingsCardLookTest, ShowsTheClearButtonInTheSecondaryColor)
{
    store().setWebsite("example.com", 0);
    openCard();
    auto &clear = *parts(0).clearButton();
    const Picture picture(clear, editorFill());
    const QRectF ink = picture.inkIn(picture.rect(), editorFill());
    EXPECT_NEAR(ink.width(), 15, 1);
    EXPECT_NEAR(ink.center().x(), clear.width() / 2.0, 0.75);
    EXPECT_TRUE(isColor(picture.strongestInkIn(picture.rect(), editorFill()),
                        over(Secondary, editorFill()), 4));
}

} // namespace
