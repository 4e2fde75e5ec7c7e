#pragma once

#include "platform/FileLocations.h"

/// The freedesktop base directories: `$XDG_DATA_HOME`, by default `~/.local/share`.
class StandardFileLocations final : public FileLocations
{
public:
    QString applicationSupport() const override;
};
