#pragma once

#include <filesystem>
#include <optional>

/// The path that opening `path` leads to, whether a file is there or not. Follows symbolic links as
/// the kernel does: a relative target starts at the real folder of its link. The folder part of
/// the result has no links.
///
/// None if a folder on the way is missing or closed, or the links form a circle.
std::optional<std::filesystem::path> linkTarget(std::filesystem::path path);
