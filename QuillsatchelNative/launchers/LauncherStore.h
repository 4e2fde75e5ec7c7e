#pragma once

#include "launchers/FaviconCache.h"
#include "launchers/LauncherIcon.h"
#include "launchers/LauncherSlots.h"
#include "platform/ApplicationChooser.h"
#include "platform/Platform.h"
#include "support/DocumentFile.h"
#include "support/Published.h"

#include <string>
#include <string_view>
#include <vector>

/// The one owner of the five launcher slots while the program runs: it reads `launchers.json` when
/// it is made, fills, empties and opens slots, and writes the file at every change. Main thread
/// only.
///
/// A slot number that there is none of, a file or folder that cannot be written, and an icon that
/// cannot be had end in silence.
class LauncherStore final : public ObservableObject
{
    Q_OBJECT

public:
    /// A filled slot.
    struct ConfiguredItem {
        int slot;
        LauncherItem item;

        bool operator==(const ConfiguredItem &) const = default;
    };

    /// Prepares the folders and loads the slots; writes no file. Stops the process if the machine
    /// has no place for a user's data.
    LauncherStore(ApplicationChooser &applicationChooser, Platform &platform);

    const Published<LauncherSlots> &slots() const { return m_slots; }

    /// The filled slots in ascending order.
    std::vector<ConfiguredItem> configuredItems() const;

    /// What stands for the launcher, `size` points square at `scale` device pixels a point.
    LauncherIcon icon(const LauncherItem &item, double size, double scale = 1) const;

    /// Opens what the slot holds.
    void launch(int slot);

    /// Lets the user choose an application for the slot and returns; the slot is filled once the
    /// user has chosen.
    void chooseApplication(int slot);

    /// Fills the slot with the website that `text` (UTF-8) names, and has its icon fetched. Blanks
    /// around the text do not count, and a text without "://" is taken for an https address. False,
    /// with nothing changed, if it is no http or https address with a host.
    bool setWebsite(std::string_view text, int slot);

    /// Empties the slot.
    void clear(int slot);

private:
    void setApplication(const std::string &path, int slot);
    std::string applicationName(const std::string &path) const;
    void fill(int slot, LauncherItem item);
    void removeCachedIcon(int slot);
    void republish(int slot, const QUuid &id);
    void save();
    bool hasSlot(int slot) const;

    Platform &m_platform;
    ApplicationChooser &m_applicationChooser;
    Published<LauncherSlots> m_slots { this };
    DocumentFile m_file;
    FaviconCache m_favicons;
};
