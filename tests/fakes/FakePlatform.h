#pragma once

#include "fakes/FakeDesktopSearch.h"
#include "fakes/FakeFileLocations.h"
#include "fakes/FakeHttpClient.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeSpeech.h"
#include "fakes/FakeStatusBar.h"
#include "fakes/FakeWallClock.h"
#include "fakes/FakeWindowSystem.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"
#include "platform/Platform.h"

#include <QTemporaryDir>

/// A machine made of fakes. Its files are in a temporary folder.
class FakePlatform
{
public:
    FakePlatform()
    {
        fileLocations.folder = directory.path();
        fileLocations.stateFolder = directory.filePath(QStringLiteral("state"));
    }

    QTemporaryDir directory;
    ManualMainQueue mainQueue;
    FakeWallClock wallClock;
    FakePasteboard pasteboard;
    FakeWorkspace workspace;
    FakeFileLocations fileLocations;
    FakeWindowSystem windowSystem;
    FakeStatusBar statusBar;
    FakeDesktopSearch desktopSearch;
    FakeHttpClient httpClient;
    FakeSpeech speech;
    Platform platform { mainQueue,    wallClock, pasteboard,    workspace,  fileLocations,
                        windowSystem, statusBar, desktopSearch, httpClient, speech };
};
