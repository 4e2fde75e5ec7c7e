#pragma once

#include "platform/SearchResult.h"

#include <QObject>

#include <optional>
#include <string_view>
#include <vector>

/// What the program tells the desktop's search. Ids and queries come from other programs and may be
/// anything that is UTF-8; unknown ids are ignored. Main thread only.
class SearchProvider : public QObject
{
    Q_OBJECT

public:
    /// The results for what the user has typed into the desktop's search, best first.
    virtual std::vector<SearchResult> find(std::string_view query) const = 0;

    /// None if there is no such result, or no longer.
    virtual std::optional<SearchResult> result(std::string_view id) const = 0;

    /// The user has chosen the result. Shows nothing.
    virtual void copy(std::string_view id) = 0;

    /// The user wants to see the result in the program.
    virtual void show(std::string_view id) = 0;

    /// The user wants to see all results in the program.
    virtual void showAll(std::string_view query) = 0;
};
