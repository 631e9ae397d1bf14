#pragma once

#include "simulator/latency.h"

#include <QObject>

#include <optional>

namespace sim {

/// Sends results when they are due, with the quirks that concern their time and number.
class ResultSender : public QObject {
    Q_OBJECT
public:
    struct Result {
        int id;
        int code;
    };

    /// `delayMs`: how much later than delivered a result is sent.
    ResultSender(int delayMs, QObject* parent);

    void setBunch(bool on) { bunch_ = on; }
    void setDouble(bool on) { double_ = on; }

    /// `last`: no other result follows for now, so that Quirk::Bunch does not hold it back.
    void deliver(const Result& result, bool last);
    void deliverLater(const Result& result, int ms);
    /// Sends a result that is held back.
    void deliverHeld();
    /// Forgets a result that is held back.
    void forgetHeld() { held_.reset(); }
    /// No result is held back or scheduled.
    bool idle() const { return !held_ && scheduled_ == 0 && line_.idle(); }

signals:
    void due(int id, int code);
    /// What was delayed has been sent.
    void caughtUp();

private:
    void sendWithCopy(const Result& result);
    void send(const Result& result);

    DelayLine line_;
    bool bunch_ = false, double_ = false;
    std::optional<Result> held_;
    int scheduled_ = 0;
};

}  // namespace sim
