#pragma once

struct Platform;

/// The desktop that this program runs on. Created by the first call, on the main thread, and owned
/// by the application object.
Platform &desktopPlatform();
