#include "support/CopyFile.h"

#include "support/FileDescriptor.h"
#include "support/ReadAll.h"
#include "support/UnfinishedFile.h"

#include <fcntl.h>

bool copyFile(const std::filesystem::path &source, const std::filesystem::path &target)
{
    const FileDescriptor old(open(source.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    UnfinishedFile copy(target);
    return old.isOpen() && copy.isOpen() &&
           readAll(old.number(), [&copy](std::string_view piece) { copy.write(piece); }) &&
           copy.flush() && copy.replaceTarget();
}
