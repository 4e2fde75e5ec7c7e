#include "platform/desktop/DesktopScale.h"

#include "platform/VirtualDisplay.h"

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace
{

using namespace std::string_literals;

/// A display with a settings daemon that scales windows by two.
class DesktopScaleTest : public testing::Test
{
protected:
    DesktopScaleTest()
    {
        qunsetenv("QT_QPA_PLATFORM");
        qunsetenv("QT_SCALE_FACTOR");
        const auto window = xcb_generate_id(m_connection);
        xcb_create_window(m_connection, 0, window, root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        const auto settings = "\0\0\0\0\1\0\0\0\1\0\0\0\0\0\x17\0Gdk/WindowScalingFactor\0"
                              "\1\0\0\0\2\0\0\0"s;
        const auto name = atom("_XSETTINGS_SETTINGS");
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, name, name, 8,
                            static_cast<std::uint32_t>(settings.size()), settings.data());
        xcb_set_selection_owner(m_connection, window, atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
        atom("_XSETTINGS_S0"); // the server has done all of it once it answers
    }

    ~DesktopScaleTest() override
    {
        qunsetenv("QT_SCALE_FACTOR");
        xcb_disconnect(m_connection);
    }

    static std::string factor() { return qgetenv("QT_SCALE_FACTOR").toStdString(); }

private:
    xcb_window_t root() const
    {
        return xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    }

    xcb_atom_t atom(std::string_view name)
    {
        auto *const reply = xcb_intern_atom_reply(
            m_connection,
            xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr);
        const auto atom = reply->atom;
        std::free(reply); // NOLINT(*-no-malloc)
        return atom;
    }

    VirtualDisplay m_display;
    xcb_connection_t *m_connection = xcb_connect(nullptr, nullptr);
};

TEST_F(DesktopScaleTest, GivesQtTheScaleOfTheDesktopAndTakesItBack)
{
    DesktopScale::prepare();
    EXPECT_EQ(factor(), "2");
    DesktopScale::clear();
    EXPECT_FALSE(qEnvironmentVariableIsSet("QT_SCALE_FACTOR"));
}

TEST_F(DesktopScaleTest, LeavesAnEnvironmentThatHasAScale)
{
    qputenv("QT_SCALE_FACTOR", "1.5");
    DesktopScale::prepare();
    EXPECT_EQ(factor(), "1.5");
    DesktopScale::clear();
    EXPECT_EQ(factor(), "1.5");
}

TEST_F(DesktopScaleTest, DoesNothingOnOtherWindowSystems)
{
    qputenv("QT_QPA_PLATFORM", "wayland");
    DesktopScale::prepare();
    EXPECT_EQ(factor(), "");
    qunsetenv("QT_QPA_PLATFORM");
}

TEST(DesktopScaleFactorTest, MultipliesWithTheWindowScale)
{
    EXPECT_EQ(DesktopScale::factorFor({ .windowScale = 1 }), 1);
    EXPECT_EQ(DesktopScale::factorFor({ .windowScale = 2 }), 2);
    EXPECT_EQ(DesktopScale::factorFor({ .windowScale = 2, .resolution = 120 }), 2);
    EXPECT_EQ(DesktopScale::factorFor({ .windowScale = 1000 }), 1);
}

TEST(DesktopScaleFactorTest, CountsTheScaleOnceIfTheResolutionIncludesIt)
{
    EXPECT_EQ(DesktopScale::factorFor({ 2, 192, 96 }), 1);
    EXPECT_EQ(DesktopScale::factorFor({ 2, 240, 120 }), 1);
    EXPECT_EQ(DesktopScale::factorFor({ .windowScale = 2, .resolution = 192 }), 1);
    EXPECT_EQ(DesktopScale::factorFor({ 2, 96, 96 }), 2);
}

} // namespace
