#pragma once

class WebAddress;

/// The desktop around the program: what it opens for us.
class Workspace
{
public:
    virtual ~Workspace() = default;

    /// Opens the address with the user's browser. Failure is silent.
    virtual void open(const WebAddress &address) = 0;
};
