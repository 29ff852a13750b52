#pragma once

#include <QString>

/// Opens the file at `path` in a window; when it is shown, saves a screenshot of the window and
/// quits the application with 0. If the file cannot be opened or the screenshot cannot be saved, it
/// says so on standard error and quits with 1. Call it once, before the event loop starts.
void takeScreenshot(const QString& path, const QString& screenshotPath);
