#pragma once

#include <filesystem>

/// Copies the regular file `source` to `target` in one step, for its owner only (0600), and waits
/// until the bytes are on the disk. Replaces a file named `target`. False, with nothing changed, if
/// that fails.
bool copyFile(const std::filesystem::path &source, const std::filesystem::path &target);
