#pragma once

#include "platform/FileLocations.h"

class SingleInstance;

/// The freedesktop base directories: `$XDG_DATA_HOME` and `$XDG_STATE_HOME`, by default
/// `~/.local/share` and `~/.local/state`.
class StandardFileLocations final : public FileLocations
{
public:
    /// `instance` decides whether this process may write, and must outlive this object. Null allows
    /// writing always.
    explicit StandardFileLocations(SingleInstance *instance = nullptr)
        : m_instance(instance)
    {
    }

    QString applicationSupport() const override;
    QString applicationState() const override;
    bool mayWrite() override;

private:
    SingleInstance *m_instance;
};
