#include "views/ElidedLabel.h"

#include "views/Input.h"
#include "views/Painting.h"
#include "views/Picture.h"

#include <QFontMetrics>
#include <gtest/gtest.h>

#include <optional>

namespace
{

constexpr int Width = 80;

class ElidedLabelTest : public testing::Test
{
protected:
    ElidedLabel &show(Qt::TextElideMode mode, const QString &text)
    {
        label.emplace(mode, font, SrgbColor::white(), nullptr);
        label->setText(text);
        label->resize(Width, label->sizeHint().height());
        return *label;
    }

    /// The label with this text, not elided.
    Picture pictureOf(const QString &text) const
    {
        return { *label, Qt::black, [&](QPainter &painter) {
                    painter.setFont(font);
                    painter.setPen(Qt::white);
                    painter.drawText(label->rect(), Qt::AlignLeft | Qt::AlignVCenter, text);
                } };
    }

    bool shows(const QString &text)
    {
        return Picture(*label).differenceFrom(pictureOf(text)) == QRectF();
    }

    QFont font = Painting::systemFont(11);
    std::optional<ElidedLabel> label;
};

TEST_F(ElidedLabelTest, ShowsAShortTextUnchanged)
{
    for (const auto mode : { Qt::ElideRight, Qt::ElideMiddle }) {
        show(mode, QStringLiteral("short"));
        EXPECT_TRUE(shows(QStringLiteral("short")));
    }
}

TEST_F(ElidedLabelTest, ElidesByItsMode)
{
    const auto text = QStringLiteral("the beginning, the middle and the end");
    const QFontMetrics metrics(font);
    for (const auto mode : { Qt::ElideRight, Qt::ElideMiddle }) {
        show(mode, text);
        EXPECT_TRUE(shows(metrics.elidedText(text, mode, Width)));
        const QRectF ink = Picture(*label).inkIn(label->rect(), Qt::black);
        EXPECT_LE(ink.left(), 2);
        EXPECT_LE(ink.right(), Width);
    }
}

TEST_F(ElidedLabelTest, ShowsMoreWhenItGrows)
{
    const auto text = QStringLiteral("the beginning, the middle and the end");
    show(Qt::ElideRight, text).resize(400, label->sizeHint().height());
    EXPECT_TRUE(shows(text));
}

TEST_F(ElidedLabelTest, ShowsMarkupAsPlainText)
{
    for (const auto *const text : { "a &b", "<b>b</b>" }) {
        show(Qt::ElideRight, QString::fromUtf8(text));
        EXPECT_TRUE(shows(QString::fromUtf8(text))) << text;
    }
}

TEST_F(ElidedLabelTest, ExposesTheFullTextAsAccessibleName)
{
    const auto text = QStringLiteral("the beginning, the middle and the end");
    show(Qt::ElideMiddle, text);
    EXPECT_EQ(Input::accessibleName(*label), text.toStdString());
    EXPECT_EQ(Input::role(*label), QAccessible::StaticText);
}

} // namespace
