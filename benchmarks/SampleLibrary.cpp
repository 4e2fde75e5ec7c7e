#include "SampleLibrary.h"

namespace
{

constexpr std::size_t TextLength = 300;

std::string sampleText(std::size_t number)
{
    std::string text = "Number " + std::to_string(number) +
                       ": read \"the draft\" at https://example.org/drafts/1 and answer\n";
    while (text.size() < TextLength)
        text += "in plain words, keep every name as it is, ";
    text.resize(TextLength);
    return text;
}

} // namespace

SatchelDocument sampleLibrary(std::size_t nodes)
{
    PromptTab tab;
    tab.blocks.reserve(nodes);
    for (std::size_t number = 0; number < nodes; ++number) {
        const auto color = BlockColor::allCases.at(number % BlockColor::allCases.size());
        tab.blocks.push_back({ .text = sampleText(number), .color = color });
    }
    SatchelDocument document { .activeTabID = tab.id, .tabs = {} };
    document.tabs.push_back(std::move(tab));
    return document;
}
