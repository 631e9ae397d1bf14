#include "app/quitsignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>

namespace app {

namespace {

struct Handled {
    int number;
    struct sigaction before;
};

Handled handled[] = {{SIGTERM, {}}, {SIGINT, {}}, {SIGHUP, {}}};

/// The pipe that the signal handler writes to.
volatile std::sig_atomic_t writeEnd = -1;

extern "C" void onQuitSignal(int) {
    const int before = errno;
    const char byte = 0;
    if (write(writeEnd, &byte, 1) < 0) {
        errno = before;  // the pipe is full: an earlier signal is pending
    }
}

/// Signals that are ignored (nohup) stay ignored.
void takeSignals() {
    struct sigaction action = {};
    action.sa_handler = onQuitSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (Handled& signal : handled) {
        sigaction(signal.number, nullptr, &signal.before);
        if (signal.before.sa_handler != SIG_IGN) {
            sigaction(signal.number, &action, nullptr);
        }
    }
}

void giveBackSignals() {
    for (const Handled& signal : handled) {
        sigaction(signal.number, &signal.before, nullptr);
    }
}

}  // namespace

QuitSignals::QuitSignals() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    readEnd_ = ends[0];
    writeEnd = ends[1];
    auto* notifier = new QSocketNotifier(readEnd_, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &QuitSignals::onSignal);
    takeSignals();
}

QuitSignals::~QuitSignals() {
    if (readEnd_ < 0) {
        return;
    }
    giveBackSignals();
    close(writeEnd);
    close(readEnd_);
    writeEnd = -1;
}

void QuitSignals::onSignal() {
    char bytes[16];
    while (read(readEnd_, bytes, sizeof bytes) > 0) {
    }
    QCoreApplication::quit();
}

}  // namespace app
