#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <string>

/// Lets the user choose an installed application.
class ApplicationChooser
{
public:
    /// Shows the chooser under `title`, with a confirming button called `prompt`, and returns.
    /// Calls `receive` once, on the main thread, with the path of the chosen application's desktop
    /// entry, or none if the user cancels.
    virtual void begin(const QString &title, const QString &prompt,
                       std::function<void(const std::optional<std::string> &)> receive) = 0;

    virtual ~ApplicationChooser() = default;
};
