#pragma once

#include "simulator/latency.h"
#include "simulator/motioncommand.h"

#include <QObject>

#include <optional>

class KordService;

namespace sim {

/// Writes results to the command nodes, with the quirks that concern writing.
class ResultWriter : public QObject {
    Q_OBJECT
public:
    struct Result {
        MotionCommand::Kind kind;
        int id;
        int code;
    };

    /// `delayMs`: how much later than delivered a result is written.
    ResultWriter(KordService* service, int delayMs, QObject* parent);

    void setBunch(bool on) { bunch_ = on; }
    void setDouble(bool on) { double_ = on; }
    void setWrongKind(bool on) { wrongKind_ = on; }

    /// `last`: no other result follows for now, so that Quirk::Bunch does not hold it back.
    void deliver(const Result& result, bool last);
    void deliverLater(const Result& result, int ms);
    /// Writes a result that is held back.
    void deliverHeld();
    /// Forgets a result that is held back.
    void forgetHeld() { held_.reset(); }
    /// No result is held back or scheduled.
    bool idle() const { return !held_ && scheduled_ == 0 && line_.idle(); }

signals:
    /// Just before the node is written.
    void result(const QString& command, int id, int code);
    /// What was delayed has been written.
    void caughtUp();

private:
    void writeWithCopy(const Result& result);
    void write(const Result& written);

    KordService* service_;
    DelayLine line_;
    bool bunch_ = false, double_ = false, wrongKind_ = false;
    std::optional<Result> held_;
    int scheduled_ = 0;
};

}  // namespace sim
