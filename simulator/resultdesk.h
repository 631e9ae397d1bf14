#pragma once

#include "simulator/motioncommand.h"

#include <QObject>

#include <optional>

class KordService;

namespace sim {

/// Writes results to the command nodes, and misbehaves in doing so where it is told to.
class ResultDesk : public QObject {
    Q_OBJECT
public:
    struct Result {
        MotionCommand::Kind kind;
        int id;
        int code;
    };

    ResultDesk(KordService* service, QObject* parent);

    void setBunch(bool on) { bunch_ = on; }
    void setDouble(bool on) { double_ = on; }
    void setWrongKind(bool on) { wrongKind_ = on; }

    /// `last`: no other one will follow for now.
    void deliver(const Result& result, bool last);
    void deliverLater(const Result& result, int ms);
    /// Delivers a result that is held back for a companion that will not come.
    void deliverHeld();
    /// Forgets a result that is held back for its companion.
    void forgetHeld() { held_.reset(); }
    /// Nothing is held back or on its way.
    bool idle() const { return !held_ && onTheirWay_ == 0; }

signals:
    /// Just before the node is written.
    void result(const QString& command, int id, int code);

private:
    void writeWithCopy(const Result& result);
    void write(const Result& written);

    KordService* service_;
    bool bunch_ = false, double_ = false, wrongKind_ = false;
    std::optional<Result> held_;
    int onTheirWay_ = 0;
};

}  // namespace sim
