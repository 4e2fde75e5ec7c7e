#pragma once

#include "platform/FileLocations.h"
#include "platform/HttpClient.h"
#include "platform/MainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/Speech.h"
#include "platform/StatusBar.h"
#include "platform/WallClock.h"
#include "platform/WindowSystem.h"
#include "platform/Workspace.h"

/// All that the program needs of the machine it runs on. Whoever is given a platform may keep it:
/// what it refers to outlives every model and view.
struct Platform {
    MainQueue &mainQueue;
    WallClock &wallClock;
    Pasteboard &pasteboard;
    Workspace &workspace;
    FileLocations &fileLocations;
    WindowSystem &windowSystem;
    StatusBar &statusBar;
    HttpClient &httpClient;
    Speech &speech;
};
