#pragma once

#include <QString>

#include <memory>

class MainQueue;

/// A shared object that is loaded when first used, because it needs large libraries and not every
/// run needs it. It exports one function, `make`, which creates an object of its interface.
class Module
{
public:
    /// The type of `make`. The caller owns the result.
    template <typename Interface>
    using Make = Interface *(*)(MainQueue &mainQueue);

    /// Loads the module `name`, such as "network", and creates its object; null if `file` finds
    /// none. A loaded module is never unloaded.
    template <typename Interface>
    static std::unique_ptr<Interface> make(const char *name, MainQueue &mainQueue)
    {
        const auto function = reinterpret_cast<Make<Interface>>(findMake(name));
        return std::unique_ptr<Interface>(function ? function(mainQueue) : nullptr);
    }

    /// The path of the module `name` for a program in `programFolder`: the installed one, or in a
    /// build folder that build's own. Empty if the file is missing, or if users other than this
    /// one, root and the program's owner can write it or its folder.
    static QString file(const QString &programFolder, const char *name);

private:
    using AnyFunction = void (*)();

    static AnyFunction findMake(const char *name);
};
