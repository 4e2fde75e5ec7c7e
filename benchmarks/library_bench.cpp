// Decodes and saves libraries of several sizes, compared with QJsonDocument and with the system
// calls that any safe save needs: write the same bytes to a temporary file, fsync it and rename it.

#include "Figure.h"
#include "PairedRuns.h"
#include "SampleLibrary.h"
#include "support/FileDescriptor.h"
#include "support/ReplaceFile.h"
#include "support/WriteAll.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace
{

void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "library_bench: %s\n", what);
    std::exit(EXIT_FAILURE);
}

/// Decodes the same records with Qt's JSON classes.
SatchelDocument decodeWithQt(const QByteArray &json)
{
    const QJsonObject root = QJsonDocument::fromJson(json).object();
    SatchelDocument document;
    document.activeTabID = QUuid::fromString(root[u"activeTabID"].toString());
    for (const auto &tabValue : root[u"tabs"].toArray()) {
        const QJsonObject tabObject = tabValue.toObject();
        PromptTab tab { .id = QUuid::fromString(tabObject[u"id"].toString()),
                        .name = tabObject[u"name"].toString().toStdString(),
                        .blocks = {} };
        for (const auto &blockValue : tabObject[u"blocks"].toArray()) {
            const QJsonObject block = blockValue.toObject();
            const auto color = BlockColor::fromRawValue(block[u"color"].toString().toStdString());
            tab.blocks.push_back({ .id = QUuid::fromString(block[u"id"].toString()),
                                   .text = block[u"text"].toString().toStdString(),
                                   .color = color.value_or(BlockColor::none) });
        }
        document.tabs.push_back(std::move(tab));
    }
    return document;
}

void writePlainly(const QByteArray &path, const std::string &bytes)
{
    const QByteArray temporary = path + ".new";
    const FileDescriptor file(
        open(temporary.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    require(file.isOpen(), "cannot open the file for the plain write");
    require(writeAll(file.number(), bytes), "the plain write failed");
    require(fsync(file.number()) == 0, "the flush failed");
    require(std::rename(temporary.constData(), path.constData()) == 0, "the renaming failed");
}

void report(const char *what, std::size_t nodes, const PairedRuns &runs, const char *reference)
{
    Figure { what, nodesText(nodes), runs.firstMilliseconds, "ms", reference, runs.ratio }.print();
}

void measure(std::size_t nodes, int runs)
{
    const SatchelDocument library = sampleLibrary(nodes);
    const std::string json = library.encode();
    const QByteArray bytes(json.data(), static_cast<qsizetype>(json.size()));
    require(SatchelDocument::decode(bytes) == library && decodeWithQt(bytes) == library,
            "the two decoders do not agree");
    report("decode a library", nodes,
           PairedRuns::measure(
               runs, [&bytes] { require(SatchelDocument::decode(bytes).has_value(), "decode"); },
               [&bytes] { require(!decodeWithQt(bytes).tabs.empty(), "decode with Qt"); }),
           "the same records through QJsonDocument");

    const QTemporaryDir folder;
    const QString saved = folder.filePath(QStringLiteral("saved.json"));
    const QByteArray plain = folder.filePath(QStringLiteral("plain.json")).toLocal8Bit();
    report("save a library", nodes,
           PairedRuns::measure(
               runs,
               [&] {
                   const auto write = [&library](const ByteSink &sink) {
                       SatchelDocument::encode(library.activeTabID, library.tabs, sink);
                   };
                   require(replaceFile(saved, write), "save");
               },
               [&] { writePlainly(plain, json); }),
           "write, fsync and rename of the same bytes");
}

} // namespace

int main()
{
    measure(10, 41);
    measure(100, 41);
    measure(1'000, 41);
    measure(10'000, 21);
    measure(100'000, 11);
    return EXIT_SUCCESS;
}
