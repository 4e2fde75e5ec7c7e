#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

/// File access that does not use the code under test.
namespace TestFiles
{

/// Creates parent folders too.
inline void write(const std::filesystem::path &path, std::string_view bytes)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Empty if there is no such file.
inline std::string read(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator(file), {} };
}

/// The number of entries in a folder, temporary files included.
inline std::ptrdiff_t count(const std::filesystem::path &folder)
{
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

inline void setMode(const std::filesystem::path &path, unsigned mode)
{
    std::filesystem::permissions(path, std::filesystem::perms(mode));
}

inline unsigned mode(const std::filesystem::path &path)
{
    return static_cast<unsigned>(std::filesystem::status(path).permissions());
}

} // namespace TestFiles
