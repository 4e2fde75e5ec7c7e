#pragma once

#include <filesystem>
#include <optional>

/// The path of the file that opening `path` opens or creates. Follows symbolic links as the kernel
/// does: a relative target starts at the real folder of its link. The folder part of the result has
/// no links. None if a folder is missing or may not be searched, or the links form a cycle.
std::optional<std::filesystem::path> linkTarget(std::filesystem::path path);
