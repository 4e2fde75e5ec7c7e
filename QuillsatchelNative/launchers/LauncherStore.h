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

/// Owns the five launcher slots while the program runs. The constructor reads `launchers.json`;
/// every change is written immediately. Main thread only.
///
/// Invalid slot numbers, write errors and failed icon downloads are ignored silently.
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
    /// has no folder for user data.
    LauncherStore(ApplicationChooser &applicationChooser, Platform &platform);

    const Published<LauncherSlots> &slots() const { return m_slots; }

    /// The filled slots in ascending order.
    std::vector<ConfiguredItem> configuredItems() const;

    /// The launcher's icon, `size` points square at `scale` pixels per point.
    LauncherIcon icon(const LauncherItem &item, double size, double scale = 1) const;

    /// Opens the slot's application or website.
    void launch(int slot);

    /// Shows the application chooser and returns. The slot is filled when the user has chosen.
    void chooseApplication(int slot);

    /// Fills the slot with the website at the address `text` (UTF-8) and downloads its icon.
    /// Trims the text and adds "https://" to one without "://". False, with nothing changed, unless
    /// the result is an http or https address with a host.
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
