#include "support/LinkTarget.h"

#include <system_error>

std::optional<std::filesystem::path> linkTarget(std::filesystem::path path)
{
    constexpr int MaximumLinks = 40; // the kernel's limit
    for (int links = 0; links <= MaximumLinks; ++links) {
        std::error_code error;
        const auto folder = std::filesystem::canonical("." / path.parent_path(), error);
        if (error)
            return std::nullopt;
        path = folder / path.filename();
        const auto target = std::filesystem::read_symlink(path, error);
        if (error) // not a link
            return path;
        path = folder / target;
    }
    return std::nullopt;
}
