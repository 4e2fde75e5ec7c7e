#include "support/ReadAll.h"

#include <cerrno>
#include <cstddef>
#include <string>
#include <unistd.h>

bool readAll(int file, const ByteSink &sink)
{
    constexpr std::size_t PieceSize = 1024 * 1024;
    std::string piece(PieceSize, '\0');
    for (off_t offset = 0;;) {
        const auto count = pread(file, piece.data(), piece.size(), offset);
        if (count > 0)
            sink(std::string_view(piece).substr(0, static_cast<std::size_t>(count)));
        else if (count == 0 || errno != EINTR)
            return count == 0;
        offset += count > 0 ? count : 0;
    }
}
