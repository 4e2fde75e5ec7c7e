#include "app/PanelFixture.h"
#include "launchers/ExampleLaunchers.h"
#include "views/LauncherSettingsCard.h"
#include "views/Picture.h"

#include <QFont>
#include <gtest/gtest.h>

#include <vector>

namespace
{

/// A desktop with a large font. The panel follows only the desktop's scale: larger text alone would
/// not fit.
class LargeTextTest : public PanelFixture
{
protected:
    void TearDown() override
    {
        delegate.reset();
        QApplication::setFont(m_font);
        PanelFixture::TearDown();
    }

    static void doubleTheFont()
    {
        QFont font = QApplication::font();
        font.setPointSizeF(2 * font.pointSizeF());
        QApplication::setFont(font);
    }

    /// Pictures of a new program: tabs with nodes, the about card, the launcher settings.
    std::vector<Picture> pictures()
    {
        TestFiles::write(folder / "launchers.json", ExampleLaunchers::json);
        machine.workspace.icon = QImage(22, 22, QImage::Format_ARGB32_Premultiplied);
        machine.workspace.icon.fill(Qt::green);
        start({ tabOf("One", { "", "https://example.com" }), tabOf("Two") });
        std::vector<Picture> taken { Picture(panel()) };
        delegate->showAbout();
        takeOnceOpen<AboutCard>(taken);
        delegate->showSettings();
        takeOnceOpen<LauncherSettingsCard>(taken);
        delegate.reset();
        settle();
        return taken;
    }

private:
    template <typename Card>
    void takeOnceOpen(std::vector<Picture> &taken)
    {
        settle();
        auto *const card = panel().findChild<Card *>();
        ASSERT_TRUE(card);
        ASSERT_TRUE(QTest::qWaitFor([card] { return Input::button(*card, "Close")->hasFocus(); }));
        // The other card may still be fading out.
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return panel().findChildren<OverlayCard *>().size() == 1; }));
        taken.emplace_back(panel());
    }

    QFont m_font = QApplication::font();
};

TEST_F(LargeTextTest, KeepsThePanelUnchanged)
{
    const auto usual = pictures();
    doubleTheFont();
    const auto large = pictures();
    ASSERT_EQ(usual.size(), 3U);
    ASSERT_EQ(large.size(), 3U);
    for (std::size_t index = 0; index < usual.size(); ++index)
        EXPECT_EQ(large[index].differenceFrom(usual[index]), QRectF()) << index;
}

TEST_F(LargeTextTest, EnlargesMenus)
{
    const int usual = QFontMetrics(QMenu().font()).height();
    doubleTheFont();
    EXPECT_GE(QFontMetrics(QMenu().font()).height(), 2 * usual - 2);
}

} // namespace
