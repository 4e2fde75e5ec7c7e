#include "platform/desktop/LaunchArguments.h"

#include <QtGlobal>

#include <array>

LaunchArguments::LaunchArguments(int count, char **values)
    : m_values(values, values + count)
{
    static std::array<char, 10> option { "-platform" };
    static std::array<char, 12> choice { "xcb;wayland" };
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && count > 0)
        m_values.insert(m_values.begin() + 1, { option.data(), choice.data() });
    m_count = static_cast<int>(m_values.size());
    m_values.push_back(nullptr);
}
