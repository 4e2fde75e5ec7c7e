// Searches libraries of several sizes, compared with `grep -ic` in the same file: a new query, one
// more letter, and a query in texts with accents and in another script.

#include "Figure.h"
#include "PairedRuns.h"
#include "SampleLibrary.h"
#include "library/NodeSearch.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <string>
#include <string_view>
#include <utility>

namespace
{

void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "find_bench: %s\n", what);
    std::exit(EXIT_FAILURE);
}

constexpr std::size_t TextLength = 300;

/// As `sampleLibrary`, with each text replaced by one of the same length in characters: words with
/// accents, or words of another script.
SatchelDocument libraryOf(std::size_t nodes, std::string_view words)
{
    SatchelDocument library = sampleLibrary(nodes);
    std::size_t number = 0;
    for (auto &block : library.tabs.front().blocks) {
        QString text = QString::number(number++) + u' ';
        while (text.size() < static_cast<qsizetype>(TextLength))
            text += QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size()));
        block.text = text.left(TextLength).toStdString();
    }
    return library;
}

std::size_t grepCount(const std::string &path, const std::string &word)
{
    const std::string command = "LC_ALL=C.UTF-8 grep -ic -- '" + word + "' '" + path + "'";
    FILE *const output = popen(command.c_str(), "r");
    require(output != nullptr, "cannot run grep");
    std::size_t count = 0;
    require(std::fscanf(output, "%zu", &count) == 1, "grep printed no number");
    pclose(output);
    return count;
}

/// A saved library and a search in it.
class Library
{
public:
    explicit Library(SatchelDocument document)
        : m_document(std::move(document))
        , m_path(m_folder.filePath(QStringLiteral("prompts.json")).toStdString())
    {
        std::ofstream(m_path, std::ios::binary) << m_document.encode();
    }

    /// A search from the beginning.
    std::size_t findAnew(std::string_view query)
    {
        m_search.forget();
        return find(query);
    }

    std::size_t find(std::string_view query)
    {
        m_search.find(query, 0);
        return m_search.hitCount();
    }

    const std::string &path() const { return m_path; }

    std::size_t nodeCount() const { return m_document.tabs.front().blocks.size(); }

private:
    QTemporaryDir m_folder;
    SatchelDocument m_document;
    std::string m_path;
    NodeSearch m_search { m_document.tabs };
};

int runsFor(std::size_t nodes)
{
    return nodes < 10'000 ? 41 : 15;
}

/// Returns the milliseconds of the search.
double compareWithGrep(const std::string &what, Library &library, const std::string &word)
{
    const std::size_t hits = library.findAnew(word);
    require(hits == grepCount(library.path(), word), "the search and grep do not agree");
    const auto runs = PairedRuns::measure(
        runsFor(library.nodeCount()), [&] { require(library.findAnew(word) == hits, "find"); },
        [&] { grepCount(library.path(), word); });
    Figure { what, nodesText(library.nodeCount()), runs.firstMilliseconds,
             "ms", "`grep -ic` in the same file",  runs.ratio }
        .print();
    return runs.firstMilliseconds;
}

/// Each pair searches for the beginning of a word and then for the whole word.
void measureNextLetter(Library &library)
{
    require(library.findAnew("47") > 0 || library.nodeCount() < 100, "nothing to narrow");
    const auto runs = PairedRuns::measure(
        runsFor(library.nodeCount()), [&] { library.find("471"); },
        [&] { library.findAnew("47"); });
    Figure { "find: one more letter", nodesText(library.nodeCount()),
             runs.firstMilliseconds,  "ms",
             "the query without it",  runs.ratio }
        .print();
}

std::size_t allocatedBytes()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// If every node is found, which needs most.
void measureMemory(std::size_t nodes)
{
    const SatchelDocument document = sampleLibrary(nodes);
    const std::size_t before = allocatedBytes();
    NodeSearch search(document.tabs);
    search.find("e", 0);
    require(search.hitCount() == nodes, "a node was not found");
    const auto bytes = static_cast<double>(allocatedBytes() - before + sizeof(search));
    Figure { "find: memory while open",
             nodesText(nodes),
             bytes / 1024,
             "KiB",
             "the size of prompts.json",
             bytes / static_cast<double>(document.encode().size()) }
        .print();
}

void measure(std::size_t nodes)
{
    Library library(sampleLibrary(nodes));
    const double slowest =
        std::max({ compareWithGrep("find: a word in every node", library, "words"),
                   compareWithGrep("find: a word in no node", library, "wordless"),
                   compareWithGrep("find: a letter in every node", library, "h") });
    Figure { "find: the slowest of these", nodesText(nodes), slowest, "ms", "" }.print();
    measureNextLetter(library);
    measureMemory(nodes);
}

void measureScripts(std::size_t nodes)
{
    Library accented(libraryOf(nodes, "réponds à l’élève en mots très simples, "));
    compareWithGrep("find: a word with accents in every node", accented, "élève");
    Library cyrillic(libraryOf(nodes, "ответь простыми словами, "));
    compareWithGrep("find: a Cyrillic word in every node", cyrillic, "словами");
    compareWithGrep("find: a Cyrillic word in no node", cyrillic, "словарь");
    compareWithGrep("find: a Cyrillic letter in every node", cyrillic, "о");
    Library japanese(libraryOf(nodes, "日本語のテキストを簡単な言葉で答えて、"));
    compareWithGrep("find: a Japanese word in every node", japanese, "言葉");
    compareWithGrep("find: a Japanese word in no node", japanese, "言語");
}

} // namespace

int main()
{
    for (const std::size_t nodes : { 10, 100, 1'000, 10'000, 100'000 })
        measure(nodes);
    for (const std::size_t nodes : { 10'000, 100'000 })
        measureScripts(nodes);
    return EXIT_SUCCESS;
}
