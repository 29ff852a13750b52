#pragma once

#include <QApplication>
#include <QTest>

#include "app/ui/TabuletApp.h"

/// The main function of a test that shows widgets: an application with the program's own texts and
/// a style that is the same everywhere.
template <typename Test>
int runUiTest(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    // Windows come and go within a test.
    QApplication::setQuitOnLastWindowClosed(false);
    TabuletApp::setUp(QStringLiteral("test"));
    Test test;
    return QTest::qExec(&test, argc, argv);
}
