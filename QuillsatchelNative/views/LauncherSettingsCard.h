#pragma once

#include "views/OverlayCard.h"
#include "views/RenderScheduler.h"

#include <vector>

class LauncherSlotEditor;
class LauncherStore;
class QBoxLayout;
class ScrollView;

/// The card in which the user sets up the quick launchers: a scrolling list with one editor per
/// slot.
class LauncherSettingsCard final : public OverlayCard
{
    Q_OBJECT

public:
    /// The store and the queue must outlive the card.
    LauncherSettingsCard(LauncherStore &store, MainQueue &mainQueue, QWidget *parent);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addHeader(QBoxLayout &layout);
    void addEditors(QBoxLayout &layout);
    LauncherSlotEditor *makeEditor(int slot);
    void render();

    LauncherStore &m_store;
    RenderScheduler m_scheduler;
    ScrollView *m_list = nullptr;
    std::vector<LauncherSlotEditor *> m_editors;
};
