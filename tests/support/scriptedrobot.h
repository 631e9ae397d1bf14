#pragma once

#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "mendo/moduleobject.h"

#include <QHash>
#include <QJsonValue>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVector>

namespace test {

/// A robot controller for tests. Every queued motion takes a fixed time and ends with a code from a list. It
/// keeps the registers that the package reads, and logs every call as "<ms> <what>", with the ms since the
/// last mark().
class ScriptedRobot : public QObject {
public:
    explicit ScriptedRobot(QObject* parent = nullptr);

    /// Back to power on, mode auto, idle, at the origin, 500 ms a motion, all results 0, empty log.
    void reset();
    void mark();
    /// Register writes as "<ms> LASER 1" (the equipment's name), writes of several registers in brackets,
    /// motions as "<ms> move.l speed zone", other calls by name.
    QStringList log() const { return log_; }
    /// When `what` was first logged; -1 for never.
    qint64 firstTime(const QString& what) const;
    /// When the equipment was last switched off; -1 for never.
    qint64 offSince(const QString& name) const { return offSince_.value(name, -1); }
    void note(const QString& what) { log_ << QString("%1 %2").arg(nowMs()).arg(what); }
    qint64 nowMs() const { return mendo::Clock::current().elapsedMs() - markMs_; }

    int motionMs = 500;
    int zoneLeadMs = 0;          ///< the tool reaches the target this long before the result
    QVector<int> codes;          ///< results in the order of queueing; missing ones are 0
    bool answersInside = false;  ///< write results inside the motion command
    QVector<double> speeds;      ///< "traj.speed" of every motion, m/s

    /// An output by the equipment's name.
    double output(const QString& name) const { return outputs_.value(name); }
    void standAt(const QVector<double>& trans);
    static void setPower(const char* power) { m("kord.r.power")->setValue(nullptr, power); }
    static void setMode(const char* mode) { m("kord.r.mode")->setValue(nullptr, mode); }
    /// Writes a result to a command's node.
    static void answer(const char* command, int code) {
        kordservice()->commandNode(command)->setValue(nullptr, code);
    }

private:
    struct Motion {
        QString command;
        QVector<double> target;
        QJsonValue rot;  ///< not an array: unchanged
        int number;
    };

    void onIssued(const KordCall& call);
    void onMotion(const KordCall& call);
    void onWrite(const KordCall& call);
    QString describeWrite(const mendo::ModuleObject* record);
    void beginNext();
    void arrive();
    void finish();
    void setState(const char* state) { m("kord.r.state")->setValue(this, state); }

    QStringList log_;
    QVector<Motion> queue_;
    QHash<QString, double> outputs_;
    QHash<QString, qint64> offSince_;
    QTimer motion_, zone_;
    qint64 markMs_ = 0;
    int queued_ = 0;
    bool running_ = false;
};

}  // namespace test
