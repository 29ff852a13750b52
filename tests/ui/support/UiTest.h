#pragma once

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "app/ui/app/TabuletApp.h"
#include "tests/support/TestProgram.h"

/// Runs a test that shows widgets: with an application, the program's own texts and a style that is
/// the same everywhere.
template <typename Test>
int runUiTest(int argc, char** argv) {
    // What is kept for a crash in one run is not to be offered in the next.
    const QTemporaryDir state;
    qputenv("XDG_STATE_HOME", QFile::encodeName(state.path()));
    const QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    // Windows come and go within a test.
    QApplication::setQuitOnLastWindowClosed(false);
    TabuletApp::setUp(QStringLiteral("test"));
    Test test;
    return QTest::qExec(&test, argc, argv);
}

/// Makes a test class that shows widgets known to its program.
template <typename Test>
using RegisteredUiTest = RegisteredTest<Test, runUiTest<Test>>;
