#include "views/LinkButton.h"
#include "views/PanelContentFixture.h"
#include "views/Picture.h"

#include <QLabel>
#include <gtest/gtest.h>

namespace
{

constexpr SrgbColor CardFill { 0.035, 0.035, 0.045, 0.97 };

class AboutCardTest : public PanelContentFixture
{
protected:
    AboutCardTest()
    {
        openView(Texts { "a" });
        preferences.showsInfoCard.set(true);
        settle();
        EXPECT_TRUE(QTest::qWaitFor([this] { return closeButton() != nullptr; }));
    }

    QAbstractButton *closeButton() const
    {
        auto *const button = Input::button(*aboutCard(), "Close");
        return button && button->isVisible() ? button : nullptr;
    }

    QRect card() const { return aboutCard()->cardGeometry(); }

    QLabel *label(const QString &text) const
    {
        for (auto *const candidate : aboutCard()->findChildren<QLabel *>()) {
            if (candidate->text() == text)
                return candidate;
        }
        return nullptr;
    }

    QRect frameOf(const QWidget &widget) const { return Input::frameIn(*aboutCard(), widget); }

    static QColor dimmed(const QColor &background)
    {
        return over(SrgbColor::black(0.58), background);
    }
};

TEST_F(AboutCardTest, DimsTheWholePanel)
{
    EXPECT_EQ(aboutCard()->geometry(), view->rect());
    const Picture picture(*aboutCard(), Background);
    for (const QPointF position :
         { QPointF(0.3, 0.3), QPointF(429.5, 0.3), QPointF(0.3, 649.5), QPointF(429.5, 649.5) })
        EXPECT_TRUE(isColor(picture.at(position.x(), position.y()), dimmed(Background)));
}

TEST_F(AboutCardTest, IsCenteredAnd320PointsWide)
{
    EXPECT_EQ(card().width(), 320);
    EXPECT_NEAR(QRectF(card()).center().x(), 215, 0.5);
    EXPECT_NEAR(QRectF(card()).center().y(), 325, 0.5);
    view->resize(600, 420);
    settle();
    EXPECT_EQ(aboutCard()->geometry(), view->rect());
    EXPECT_EQ(card().width(), 320);
    EXPECT_NEAR(QRectF(card()).center().x(), 300, 0.5);
    EXPECT_LE(card().height(), 420);
}

TEST_F(AboutCardTest, IsFilledAndStroked)
{
    // On black the shadow is invisible.
    const Picture picture(*aboutCard(), Qt::black);
    const QColor fill = over(CardFill, Qt::black);
    const QPointF inside(card().left() + 10, card().center().y());
    EXPECT_TRUE(isColor(picture.at(inside.x(), inside.y()), fill));
    const QColor stroke = over(SrgbColor::white(0.14), fill);
    EXPECT_TRUE(isColor(picture.at(card().left() + 0.4, inside.y()), stroke));
    EXPECT_TRUE(isColor(picture.at(card().left() + 1.4, inside.y()), fill));
    EXPECT_TRUE(isColor(picture.at(card().center().x(), card().top() + 0.4), stroke));
}

TEST_F(AboutCardTest, HasCornerRadius20)
{
    const Picture picture(*aboutCard(), Qt::black);
    const Picture shape(*view, Qt::black, [this](QPainter &painter) {
        drawBox(painter, card(), 20, CardFill, SrgbColor::white(0.14));
    });
    for (const QPoint corner : { card().topLeft(), QPoint(card().left(), card().bottom() - 21),
                                 QPoint(card().right() - 21, card().bottom() - 21) })
        EXPECT_EQ(picture.differenceFrom(shape, QRectF(corner, QSizeF(22, 22))), QRectF());
}

TEST_F(AboutCardTest, CastsAShadowDownwards)
{
    const Picture picture(*aboutCard(), Qt::white);
    const auto darknessAt = [this, &picture](qreal x, qreal y) {
        return dimmed(Qt::white).red() - picture.at(x, y).red();
    };
    const qreal middle = card().center().x();
    EXPECT_GT(darknessAt(middle, card().bottom() + 6), darknessAt(middle, card().top() - 6) + 8);
    EXPECT_GT(darknessAt(middle, card().bottom() + 6), darknessAt(middle, card().bottom() + 24));
    EXPECT_GT(darknessAt(middle, card().bottom() + 24), 0);
    EXPECT_NEAR(darknessAt(middle, card().bottom() + 14 + 58), 0, 2);
    EXPECT_NEAR(darknessAt(card().left() - 10, card().center().y()),
                darknessAt(card().right() + 10, card().center().y()), 3);
}

TEST_F(AboutCardTest, PlacesCloseButton8PointsFromTopRightCorner)
{
    const QRect frame = frameOf(*closeButton());
    EXPECT_EQ(card().right() - frame.right(), 8);
    EXPECT_EQ(frame.top() - card().top(), 8);
    EXPECT_EQ(closeButton()->toolTip().toStdString(), "Close");
}

TEST_F(AboutCardTest, ShowsTheAuthorsMessage)
{
    for (const auto *const text :
         { "I built Quillsatchel because I was tired of hunting through old chats, notes, and "
           "documents for the same blocks of text I use all the time.",
           "Hopefully it makes your workflow a little faster too.", "Thanks for trying it." }) {
        const auto *const paragraph = label(QString::fromUtf8(text));
        ASSERT_TRUE(paragraph) << text;
        EXPECT_EQ(paragraph->font().pixelSize(), 11);
        EXPECT_EQ(paragraph->font().weight(), QFont::Normal);
        EXPECT_GE(frameOf(*paragraph).left(), card().left() + 22);
        EXPECT_LE(frameOf(*paragraph).right(), card().right() - 22);
        const QColor text92 = paragraph->palette().color(QPalette::WindowText);
        EXPECT_TRUE(isColor(text92, QColor::fromRgbF(1, 1, 1, 0.92F)));
    }
}

TEST_F(AboutCardTest, StacksItsContent)
{
    const auto links = aboutCard()->findChildren<LinkButton *>();
    ASSERT_EQ(links.size(), 2);
    EXPECT_EQ(links[0]->size(), QSize(205, 112));
    EXPECT_EQ(frameOf(*links[0]).top(), card().top() + 18);
    EXPECT_NEAR(QRectF(frameOf(*links[0])).center().x(), QRectF(card()).center().x(), 1);
    EXPECT_EQ(frameOf(*links[1]).bottom(), card().bottom() - 18);

    const auto labels = aboutCard()->findChildren<QLabel *>();
    ASSERT_EQ(labels.size(), 6);
    int bottom = frameOf(*links[0]).bottom();
    for (int index = 0; index < 6; ++index) {
        const int gap = index == 5 ? 2 : 10;
        EXPECT_EQ(frameOf(*labels[index]).top() - bottom - 1, gap) << index;
        bottom = frameOf(*labels[index]).bottom();
    }
    EXPECT_EQ(frameOf(*links[1]).top() - bottom - 1, 2);
}

TEST_F(AboutCardTest, SetsTheFontOfEachText)
{
    struct Style {
        int size;
        QFont::Weight weight;
    };

    const std::vector<Style> styles { { 13, QFont::DemiBold }, { 11, QFont::Normal },
                                      { 11, QFont::Normal },   { 11, QFont::Normal },
                                      { 11, QFont::DemiBold }, { 10, QFont::Normal } };
    const auto labels = aboutCard()->findChildren<QLabel *>();
    ASSERT_EQ(labels.size(), 6);
    for (qsizetype index = 0; index < 6; ++index) {
        const auto &style = styles[static_cast<std::size_t>(index)];
        EXPECT_EQ(labels[index]->font().pixelSize(), style.size) << index;
        EXPECT_EQ(labels[index]->font().weight(), style.weight) << index;
    }
    EXPECT_TRUE(isColor(labels[5]->palette().color(QPalette::WindowText),
                        QColor::fromRgbF(1, 1, 1, 0.56F)));
}

TEST_F(AboutCardTest, BothLinksOpenTheWebsite)
{
    for (auto *const link : aboutCard()->findChildren<LinkButton *>()) {
        machine.workspace.opened.clear();
        Input::click(*link);
        ASSERT_EQ(machine.workspace.opened.size(), 1U);
        const auto &address = machine.workspace.opened.front();
        EXPECT_TRUE(address.starts_with("https://")) << address;
        EXPECT_NE(link->toolTip().toStdString().find(address), std::string::npos);
        EXPECT_EQ(Input::role(*link), QAccessible::Link);
    }
    EXPECT_TRUE(preferences.showsInfoCard.get());
}

TEST_F(AboutCardTest, ShowsTheAddressInTheAccentColor)
{
    auto &link = *aboutCard()->findChildren<LinkButton *>()[1];
    Input::click(link);
    EXPECT_EQ(link.text().toStdString(), machine.workspace.opened.front());
    EXPECT_EQ(Input::accessibleName(link), machine.workspace.opened.front());
    const Picture picture(link, Qt::black);
    EXPECT_TRUE(isReddish(picture.strongestInkIn(picture.rect(), Qt::black)));
}

} // namespace
