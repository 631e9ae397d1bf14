#pragma once

#include <QObject>
#include <QTest>

namespace test {

/// Functions called before the application object is made; they choose the clock of the test.
void onVirtualTime();
void onWallClock();

/// Registers a test class under the name of its file: test_resume.cpp is "resume". The program runs the class
/// named by its first argument, with a temporary home and an empty working directory. QtTest gets the other
/// arguments.
struct Registered {
    Registered(const char* file, void (*prepare)(), QObject* (*make)());
};

}  // namespace test

/// Put it after the test class of a file to register the class.
#define LUMO_TEST_ON(TestClass, prepare)                                   \
    static const test::Registered registered##TestClass(__FILE__, prepare, \
                                                        []() -> QObject* { return new TestClass; });
#define LUMO_TEST(TestClass) LUMO_TEST_ON(TestClass, test::onVirtualTime)
