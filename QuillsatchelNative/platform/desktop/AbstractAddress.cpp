#include "platform/desktop/AbstractAddress.h"

#include <algorithm>
#include <cstddef>

AbstractAddress::AbstractAddress(const std::string &name)
{
    // A leading zero byte makes the name abstract.
    const auto length = std::min(name.size(), sizeof(m_address.sun_path) - 1);
    std::copy_n(name.begin(), length, m_address.sun_path + 1);
    m_length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
}
