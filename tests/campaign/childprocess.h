#pragma once

#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTimer>

namespace campaign {

/// Seeds one after another.
struct Range {
    quint64 first = 1;
    int count = 0;
};

/// Says in a worker's own process which schedule begins and what came of it, in lines that ChildProcess
/// reads.
void announceBegin(quint64 seed);
void announceEnd(quint64 seed, const QStringList& broken, const QJsonObject& statistics);

/// Schedules in a process of their own, so that one that crashes or hangs can be named.
///
/// A schedule that the process does not survive ends with the words "the process …"; so does
/// one that takes longer than the limit, after which the process is killed. Belongs to the process that
/// watches, which must not be on virtual time.
class ChildProcess : public QObject {
    Q_OBJECT
public:
    /// This program with these arguments, each schedule limited to so many ms of the wall clock.
    ChildProcess(const QStringList& arguments, int limitMs, QObject* parent = nullptr);
    ~ChildProcess() override;

    void start();
    /// Starts and returns when the process is over; needs no event loop.
    void runToEnd();

    /// Hands a line to the process, which is started where it does not run, and returns what its next
    /// schedule broke: empty for nothing. Needs no event loop. A process that does not survive it is
    /// started anew for the next line.
    QStringList ask(const QString& line);

    /// Schedules that have ended.
    [[nodiscard]] int ended() const { return ended_; }
    /// How the process ended when that was after its last schedule and not as it should; else empty.
    [[nodiscard]] const QString& lastWords() const { return lastWords_; }
    /// What it wrote to the standard error.
    [[nodiscard]] const QByteArray& errors() const { return errors_; }

signals:
    void scheduleOver(quint64 seed, const QStringList& broken, const QJsonObject& statistics);
    void over();

private:
    void read();
    void readLine(const QByteArray& line);
    void onEnd();
    void kill();
    [[nodiscard]] QString howItEnded() const;

    QProcess process_;
    QTimer limit_;
    QByteArray errors_;
    QString lastWords_;
    quint64 seed_ = 0;
    bool underWay_ = false;
    bool hung_ = false;
    int ended_ = 0;
    int limitMs_;
};

}  // namespace campaign
