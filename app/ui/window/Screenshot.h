#pragma once

#include <QString>

/// Opens the file at `path` in a window; when it is shown, saves a picture of the window and ends
/// the application with 0. If the file cannot be opened or the picture cannot be saved, it says so
/// on standard error and ends with 1. Call it once, before the event loop starts.
void takeScreenshot(const QString& path, const QString& picturePath);
