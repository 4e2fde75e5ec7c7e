#pragma once

#include <QString>

#include <memory>

class MainQueue;

/// Parts of the program that pull in large libraries and that not every run needs are modules:
/// files of their own, opened when they are first used. A module exports one function, `make`,
/// which gives a new object of its interface.
class Module
{
public:
    /// What a module's `make` is; the caller owns what it gives.
    template <typename Interface>
    using Make = Interface *(*)(MainQueue &mainQueue);

    /// An object of the module `name`, such as "network"; null if `file` finds none. A module once
    /// opened stays open.
    template <typename Interface>
    static std::unique_ptr<Interface> make(const char *name, MainQueue &mainQueue)
    {
        const auto function = reinterpret_cast<Make<Interface>>(findMake(name));
        return std::unique_ptr<Interface>(function ? function(mainQueue) : nullptr);
    }

    /// The file of the module `name` for a program in `programFolder`: the installed one, or in a
    /// build folder that build's own. Empty where it is missing, as in an incomplete installation,
    /// and where users other than this one, root and the program's owner can write the file or its
    /// folder.
    static QString file(const QString &programFolder, const char *name);

private:
    using AnyFunction = void (*)();

    static AnyFunction findMake(const char *name);
};
