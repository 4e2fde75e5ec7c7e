// Decodes and saves libraries of several sizes, compared with QJsonDocument and with the system
// calls that any safe save needs: write the same bytes to a temporary file, fsync it and rename it.
// Measures what keeping earlier versions adds to a save.

#include "Figure.h"
#include "PairedRuns.h"
#include "SampleLibrary.h"
#include "support/EarlierVersions.h"
#include "support/FileDescriptor.h"
#include "support/ReplaceFile.h"
#include "support/WriteAll.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <string>
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
                   require(replaceFile(saved, write).has_value(), "save");
               },
               [&] { writePlainly(plain, json); }),
           "write, fsync and rename of the same bytes");
}

/// Saves a library again and again, and measures the part of keeping earlier versions.
class KeepingSaves
{
public:
    explicit KeepingSaves(std::size_t nodes)
        : m_library(sampleLibrary(nodes))
        , m_size(nodesText(nodes))
    {
        addAYear();
    }

    /// Compares with saves that keep nothing. Before each save that may keep a version, the clock
    /// advances by `pause`.
    void measure(const char *what, int runs, std::chrono::seconds pause)
    {
        const auto pairs = PairedRuns::measure(
            runs,
            [this, pause] {
                m_now += pause;
                saveAndKeep();
            },
            [this] {
                require(replaceFile(m_folder.filePath(QStringLiteral("plain.json")), m_encode)
                            .has_value(),
                        "save");
            });
        Figure { what,
                 m_size,
                 pairs.firstMilliseconds - pairs.secondMilliseconds,
                 "ms",
                 "the same save without",
                 pairs.ratio - 1 }
            .print();
    }

private:
    /// Adds as many versions as a year leaves.
    void addAYear() const
    {
        using std::chrono::days;
        std::filesystem::create_directory(m_versionsFolder);
        for (int count = 2; count <= 31; ++count)
            addVersion(days(count), false);
        for (int count = 2; count <= 11; ++count)
            addVersion(days(count * 31), false);
        for (int count = 1; count <= 20; ++count)
            addVersion(days(count * 15), true);
    }

    void addVersion(std::chrono::days age, bool isForeign) const
    {
        const auto now = std::chrono::floor<std::chrono::seconds>(m_now);
        const EarlierVersion version { .time =
                                           std::chrono::local_seconds(now.time_since_epoch() - age),
                                       .isForeign = isForeign };
        writePlainly((m_versionsFolder / version.fileName("prompts.json")).c_str(), {});
    }

    void saveAndKeep()
    {
        const auto keep = [this](const std::filesystem::path &file) { m_versions.keep(file); };
        const auto written =
            replaceFile(m_folder.filePath(QStringLiteral("prompts.json")), m_encode, keep);
        require(written.has_value(), "save");
        m_versions.setWritten(*written);
    }

    SatchelDocument m_library;
    std::function<void(const ByteSink &)> m_encode = [this](const ByteSink &sink) {
        SatchelDocument::encode(m_library.activeTabID, m_library.tabs, sink);
    };
    std::string m_size;
    QTemporaryDir m_folder;
    std::chrono::system_clock::time_point m_now =
        std::chrono::sys_days(std::chrono::year(2026) / 1 / 1);
    std::filesystem::path m_versionsFolder =
        m_folder.filePath(QStringLiteral("versions")).toStdString();
    EarlierVersions m_versions { m_versionsFolder, "prompts.json", [this] { return m_now; } };
};

void measureKeeping(std::size_t nodes, int runs)
{
    using namespace std::chrono_literals;
    KeepingSaves saves(nodes);
    saves.measure("keep an earlier version", runs, 10min);
    saves.measure("keep no earlier version", runs, 0s);
}

} // namespace

int main()
{
    measure(10, 41);
    measure(100, 41);
    measure(1'000, 41);
    measure(10'000, 21);
    measure(100'000, 11);
    measureKeeping(1'000, 501);
    measureKeeping(100'000, 41);
    return EXIT_SUCCESS;
}
