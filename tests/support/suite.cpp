#include "support/suite.h"

#include "simulator/time/virtualtime.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <map>
#include <memory>

// Null unless the program is built with LeakSanitizer.
extern "C" {
[[gnu::weak]] void __lsan_disable();
[[gnu::weak]] void __lsan_enable();
}

namespace {

struct Entry {
    void (*prepare)();
    QObject* (*make)();
};

std::map<QString, Entry>& entries() {
    static std::map<QString, Entry> all;
    return all;
}

/// Qt's offscreen platform never deletes its screen, so its first allocations are not counted as leaks.
std::unique_ptr<QApplication> makeApplication(int& argc, char** argv) {
    if (__lsan_disable) {
        __lsan_disable();
    }
    auto application = std::make_unique<QApplication>(argc, argv);
    if (__lsan_enable) {
        __lsan_enable();
    }
    return application;
}

}  // namespace

namespace test {

void onVirtualTime() {
    sim::VirtualTime::install();
}

void onWallClock() {}

Registered::Registered(const char* file, void (*prepare)(), QObject* (*make)()) {
    entries()[QFileInfo(QString::fromUtf8(file)).baseName().mid(int(qstrlen("test_")))] = {prepare, make};
}

}  // namespace test

int main(int argc, char** argv) {
    const auto found = argc > 1 ? entries().find(QString::fromLocal8Bit(argv[1])) : entries().end();
    if (found == entries().end()) {
        std::fputs("usage: CLASS [arguments of QtTest]; the classes are\n", stderr);
        for (const auto& entry : entries()) {
            std::fprintf(stderr, "  %s\n", qPrintable(entry.first));
        }
        return 2;
    }
    argv[1] = argv[0];  // QtTest gets the arguments after the class name

    // A temporary home and working directory, because file dialogs, the panel and programs write there.
    const QTemporaryDir home;
    const QString work = home.filePath(QStringLiteral("work"));
    if (!QDir().mkdir(work) || !QDir::setCurrent(work)) {
        return 2;
    }
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.filePath(QStringLiteral("config"))));

    found->second.prepare();
    int arguments = argc - 1;
    const auto application = makeApplication(arguments, argv + 1);
    const std::unique_ptr<QObject> test(found->second.make());
    return QTest::qExec(test.get(), arguments, argv + 1);
}
