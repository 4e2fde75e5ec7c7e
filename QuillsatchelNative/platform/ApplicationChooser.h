#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <string>

/// Lets the user choose one of the applications on this machine, without holding up the program.
class ApplicationChooser
{
public:
    /// Shows the chooser under `title`, its confirming button called `prompt`, and returns.
    /// `receive` gets the path of the chosen application's desktop entry, or none if the user
    /// thinks better of it; on the main thread, once.
    virtual void begin(const QString &title, const QString &prompt,
                       std::function<void(const std::optional<std::string> &)> receive) = 0;

    virtual ~ApplicationChooser() = default;
};
