#pragma once

#include "support/text.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>

#include <arpa/inet.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <csignal>
#include <functional>

namespace test {

constexpr int patienceMs = 30000;

/// Waits by the wall clock; `step` is called meanwhile.
inline bool waitUntil(const std::function<bool()>& done, const std::function<void()>& step) {
    QElapsedTimer passed;
    passed.start();
    while (!done() && passed.elapsed() < patienceMs) {
        step();
        ::usleep(5000);
    }
    return done();
}

/// A process that ends with the test, whatever becomes of that.
class Process : public QProcess {
public:
    ~Process() override { finish(SIGKILL); }
    void signal(int number) const { ::kill(pid_t(processId()), number); }
    /// The exit code; -1 after a crash and while it runs on.
    int finish(int number = 0) {
        if (number != 0 && state() != NotRunning) {
            signal(number);
        }
        return waitForFinished(patienceMs) && exitStatus() == NormalExit ? exitCode() : -1;
    }

protected:
    void setupChildProcess() override { ::prctl(PR_SET_PDEATHSIG, SIGKILL); }
};

/// A port of 127.0.0.1 at which nobody listens; a socket of its own, to be tried and closed.
inline int freePort() {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    ::bind(socket, reinterpret_cast<sockaddr*>(&place), size);
    ::getsockname(socket, reinterpret_cast<sockaddr*>(&place), &size);
    ::close(socket);
    return ntohs(place.sin_port);
}

inline bool answers(int port) {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    place.sin_port = htons(quint16(port));
    const bool isThere = ::connect(socket, reinterpret_cast<sockaddr*>(&place), sizeof place) == 0;
    ::close(socket);
    return isThere;
}

/// mosquitto at a free port of 127.0.0.1. It forgets everything when it ends.
class Broker {
public:
    static QString program() {
        return QStandardPaths::findExecutable("mosquitto", {"/usr/sbin", "/usr/bin", "/usr/local/sbin"});
    }
    int port() const { return port_; }
    Process* process() const { return process_.get(); }
    /// `more`: lines of its configuration.
    bool start(const QByteArray& more = "allow_anonymous true\n") {
        const QString file = QDir::current().absoluteFilePath(QString("broker-%1.conf").arg(port_));
        writeFile(file, "user root\nlistener " + QByteArray::number(port_) + " 127.0.0.1\n" + more);
        process_ = std::make_unique<Process>();
        process_->setStandardErrorFile(QProcess::nullDevice());
        process_->start(program(), {"-c", file});
        return waitUntil([this] { return answers(port_); }, [] {});
    }
    void end() { process_.reset(); }

private:
    const int port_ = freePort();
    std::unique_ptr<Process> process_;
};

/// What a broker passes on of a cell, as it comes: mosquitto_sub.
class Subscriber {
public:
    explicit Subscriber(int port, const QStringList& more = {}) {
        process_.start(
            "mosquitto_sub",
            QStringList{"-h", "127.0.0.1", "-p", QString::number(port), "-t", "lumo/#", "-v"} + more);
    }
    /// The documents of a topic below "lumo/cell-3/", as far as they have come.
    QList<QByteArray> all(const QByteArray& topic) {
        process_.waitForReadyRead(1);
        while (process_.canReadLine()) {
            const QByteArray line = process_.readLine().trimmed();
            const int space = line.indexOf(' ');
            came_[line.left(space)] << line.mid(space + 1);
        }
        return came_.value("lumo/cell-3/" + topic);
    }
    QByteArray last(const QByteArray& topic) {
        return all(topic).isEmpty() ? QByteArray() : came_["lumo/cell-3/" + topic].last();
    }
    QJsonObject document(const QByteArray& topic) { return QJsonDocument::fromJson(last(topic)).object(); }
    /// Waits until a document of a topic has a text in it.
    bool sees(
        const QByteArray& topic, const QByteArray& text, const std::function<void()>& step = [] {}) {
        const auto is = [&] {
            const QList<QByteArray> came = all(topic);
            return std::any_of(came.begin(), came.end(),
                               [&](const QByteArray& one) { return one.contains(text); });
        };
        return waitUntil(is, step);
    }

private:
    Process process_;
    QHash<QByteArray, QList<QByteArray>> came_;
};

}  // namespace test
