#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <QTest>

/// A program that holds all test classes of a room. Its first argument names the class to run, so
/// that each runs in a process of its own; the others are for Qt Test, or for the class.
namespace TestProgram {

/// Runs a class with the program's arguments but for its name.
using Run = int (*)(int argc, char** argv);

/// Makes a class known under its name.
void add(const QMetaObject& testClass, Run run);

/// Runs a class that needs no more than an event loop.
template <typename Test>
int runWithoutWindows(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

}  // namespace TestProgram

/// Makes a test class known to the program that it is linked into: one constant in its file.
template <typename Test, TestProgram::Run run = TestProgram::runWithoutWindows<Test>>
class RegisteredTest {
public:
    RegisteredTest() { TestProgram::add(Test::staticMetaObject, run); }
};
