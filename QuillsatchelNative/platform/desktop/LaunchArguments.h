#pragma once

#include <vector>

/// The program's arguments, with a choice of window system before the user's own, which override
/// it. Prefers X11, including XWayland, because Wayland lets no program stay above others or on all
/// desktops. Adds nothing if the environment makes the choice. Uses an argument because launched
/// programs would inherit an environment variable. Must outlive the application object.
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
