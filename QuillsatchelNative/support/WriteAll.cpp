#include "support/WriteAll.h"

#include <cerrno>
#include <cstddef>
#include <unistd.h>

bool writeAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto written = write(file, bytes.data(), bytes.size());
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (written == 0 || errno != EINTR)
            return false;
    }
    return true;
}
