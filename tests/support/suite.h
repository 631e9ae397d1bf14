#pragma once

#include <QObject>
#include <QTest>

namespace test {

/// What is done before the application object is made: which clock the test runs on.
void onVirtualTime();
void onWallClock();

/// A test class of this program, under the name of its file: test_resume.cpp is "resume". The program
/// runs the one that its first argument names, in a process, a home and an empty folder of its own; what
/// else stands on the command line is for QtTest.
struct Registered {
    Registered(const char* file, void (*prepare)(), QObject* (*make)());
};

}  // namespace test

/// Behind a test class, one in a file: makes it known to the program.
#define LUMO_TEST_ON(TestClass, prepare)                                   \
    static const test::Registered registered##TestClass(__FILE__, prepare, \
                                                        []() -> QObject* { return new TestClass; });
#define LUMO_TEST(TestClass) LUMO_TEST_ON(TestClass, test::onVirtualTime)
