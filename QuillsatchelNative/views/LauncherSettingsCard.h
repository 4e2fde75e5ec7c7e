#pragma once

#include "views/OverlayCard.h"
#include "views/RenderScheduler.h"

#include <vector>

class LauncherSlotEditor;
class LauncherStore;
class QBoxLayout;
class ScrollView;

/// Where the user sets up the quick launchers: an editor a slot, which scroll where there is no
/// room for them all.
class LauncherSettingsCard final : public OverlayCard
{
    Q_OBJECT

public:
    /// The store and the queue outlive the card.
    LauncherSettingsCard(LauncherStore &store, MainQueue &mainQueue, QWidget *parent);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addHeader(QBoxLayout &layout);
    void addEditors(LauncherStore &store, QBoxLayout &layout);
    void render();

    RenderScheduler m_scheduler;
    ScrollView *m_list = nullptr;
    std::vector<LauncherSlotEditor *> m_editors;
};
