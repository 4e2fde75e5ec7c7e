#pragma once

#include "platform/DesktopSearch.h"
#include "platform/FileLocations.h"
#include "platform/HttpClient.h"
#include "platform/MainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/Speech.h"
#include "platform/StatusBar.h"
#include "platform/WallClock.h"
#include "platform/WindowSystem.h"
#include "platform/Workspace.h"

/// Everything the program needs from the machine. Models and views may keep the reference they are
/// given, because the platform outlives them.
struct Platform {
    MainQueue &mainQueue;
    WallClock &wallClock;
    Pasteboard &pasteboard;
    Workspace &workspace;
    FileLocations &fileLocations;
    WindowSystem &windowSystem;
    StatusBar &statusBar;
    DesktopSearch &desktopSearch;
    HttpClient &httpClient;
    Speech &speech;
};
