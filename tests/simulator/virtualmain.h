#pragma once

#include "simulator/virtualtime.h"

#include <QApplication>
#include <QTest>

/// The main function of a test whose timers run on virtual time.
#define VIRTUAL_TIME_MAIN(TestClass)            \
    int main(int argc, char** argv) {           \
        sim::VirtualTime::install();            \
        QApplication application(argc, argv);   \
        TestClass test;                         \
        return QTest::qExec(&test, argc, argv); \
    }
