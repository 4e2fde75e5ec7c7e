// write_sample_library NODES FOLDER: writes a library with NODES nodes for a program that is
// started with XDG_DATA_HOME=FOLDER.

#include "SampleLibrary.h"
#include "support/ReplaceFile.h"

#include <QDir>

#include <cstdio>
#include <cstdlib>

int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::fputs("usage: write_sample_library NODES FOLDER\n", stderr);
        return EXIT_FAILURE;
    }
    const auto nodes = std::strtoul(argv[1], nullptr, 10);
    const QDir folder(QString::fromLocal8Bit(argv[2]) + QStringLiteral("/Quillsatchel"));
    const bool isWritten =
        folder.mkpath(QStringLiteral(".")) &&
        replaceFile(folder.filePath(QStringLiteral("prompts.json")),
                    [nodes](const ByteSink &sink) { sink(sampleLibrary(nodes).encode()); });
    return isWritten ? EXIT_SUCCESS : EXIT_FAILURE;
}
