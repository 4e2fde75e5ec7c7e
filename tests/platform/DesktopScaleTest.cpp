#include "platform/desktop/DesktopScale.h"

#include "platform/VirtualDisplay.h"
#include "platform/desktop/X11Connection.h"

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <cstdint>
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
        const auto window = xcb_generate_id(m_connection.get());
        xcb_create_window(m_connection.get(), 0, window, X11Connection::root(m_connection.get()), 0,
                          0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0,
                          nullptr);
        const auto settings = "\0\0\0\0\1\0\0\0\1\0\0\0\0\0\x17\0Gdk/WindowScalingFactor\0"
                              "\1\0\0\0\2\0\0\0"s;
        const auto name = atom("_XSETTINGS_SETTINGS");
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, window, name, name, 8,
                            static_cast<std::uint32_t>(settings.size()), settings.data());
        xcb_set_selection_owner(m_connection.get(), window, atom("_XSETTINGS_S0"),
                                XCB_CURRENT_TIME);
        atom("_XSETTINGS_S0"); // a round trip, so that the server has handled all requests
    }

    ~DesktopScaleTest() override { qunsetenv("QT_SCALE_FACTOR"); }

    static std::string factor() { return qgetenv("QT_SCALE_FACTOR").toStdString(); }

private:
    xcb_atom_t atom(std::string_view name) { return X11Connection::atom(m_connection.get(), name); }

    VirtualDisplay m_display;
    X11Connection::OwnConnection m_connection = X11Connection::connectSeparately();
};

TEST_F(DesktopScaleTest, PassesTheWindowScaleToQtAndClearsIt)
{
    DesktopScale::prepare();
    EXPECT_EQ(factor(), "2");
    DesktopScale::clear();
    EXPECT_FALSE(qEnvironmentVariableIsSet("QT_SCALE_FACTOR"));
}

TEST_F(DesktopScaleTest, KeepsAScaleThatTheEnvironmentSets)
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

TEST(DesktopScaleFactorTest, UsesTheWindowScaleIfItIsValid)
{
    EXPECT_EQ(DesktopScale::factorFor({ .windowScale = 1 }), 1);
    EXPECT_EQ(DesktopScale::factorFor({ .windowScale = 2 }), 2);
    EXPECT_EQ(DesktopScale::factorFor({ .windowScale = 2, .resolution = 120 }), 2);
    EXPECT_EQ(DesktopScale::factorFor({ .windowScale = 1000 }), 1);
}

TEST(DesktopScaleFactorTest, AppliesNoScaleThatTheResolutionIncludes)
{
    EXPECT_EQ(DesktopScale::factorFor({ 2, 192, 96 }), 1);
    EXPECT_EQ(DesktopScale::factorFor({ 2, 240, 120 }), 1);
    EXPECT_EQ(DesktopScale::factorFor({ .windowScale = 2, .resolution = 192 }), 1);
    EXPECT_EQ(DesktopScale::factorFor({ 2, 96, 96 }), 2);
}

} // namespace
