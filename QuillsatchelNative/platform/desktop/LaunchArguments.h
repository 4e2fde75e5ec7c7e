#pragma once

#include <vector>

/// The program's arguments with a choice of window system put before the user's own, unless the
/// environment has one: X11 wherever it is there, be it XWayland, because Wayland lets no program
/// stay above the others or on all desktops. An argument, because what is put into the environment
/// would reach every program that we open. Must outlive the application object.
class LaunchArguments
{
public:
    LaunchArguments(int count, char **values);

    int &count() { return m_count; }

    char **values() { return m_values.data(); }

private:
    std::vector<char *> m_values; // ends with a null pointer
    int m_count;
};
