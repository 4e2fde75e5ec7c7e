#pragma once

#include "platform/Application.h"

#include <QString>

#include <cstddef>
#include <vector>

/// Finds applications by the words that people type. Case and accents make no difference.
class ApplicationSearch final
{
public:
    ApplicationSearch() = default;
    explicit ApplicationSearch(const std::vector<Application> &applications);

    /// The places of the applications in whose name, comment or keywords every word is found. First
    /// come those whose name begins with what was typed, then those in whose name each word begins
    /// a word, then the rest, all in the order in which they were given. No words find them all.
    std::vector<std::size_t> find(const QString &typed) const;

private:
    /// An application's texts, made alike.
    struct Entry {
        QString name;
        QString everything;
    };

    std::vector<Entry> m_entries;
};
