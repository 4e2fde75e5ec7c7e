#pragma once

#include "platform/Application.h"

#include <QString>

#include <cstddef>
#include <vector>

/// Finds applications by words. Ignores case and accents.
class ApplicationSearch final
{
public:
    ApplicationSearch() = default;
    explicit ApplicationSearch(const std::vector<Application> &applications);

    /// The indices of the applications whose name, comment and keywords contain every word of
    /// `typed`; all applications if it has none. Names that start with `typed` come first, then
    /// names in which every word starts a word, then the rest. Equal ranks keep their order.
    std::vector<std::size_t> find(const QString &typed) const;

private:
    /// The normalized texts of an application.
    struct Entry {
        QString name;
        QString allTexts; ///< name, comment and keywords, one per line
    };

    std::vector<Entry> m_entries;
};
