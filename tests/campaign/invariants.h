#pragma once

#include "campaign/event.h"
#include "campaign/runs.h"

#include <QStringList>

#include <array>
#include <memory>
#include <vector>

namespace campaign {

/// What the executor wrote last to each logical port.
class Outputs {
public:
    void on(const Event& event);
    [[nodiscard]] int value(int port) const { return values_[static_cast<std::size_t>(port)]; }
    /// The same, whatever somebody else did to the port since.
    [[nodiscard]] int written(int port) const { return written_[static_cast<std::size_t>(port)]; }
    /// Whether the simulated source emits.
    [[nodiscard]] bool emitting() const { return emitting_; }
    /// Whether somebody else than the executor has switched a port on, and nobody off again.
    [[nodiscard]] bool byHand(int port) const { return byHand_[static_cast<std::size_t>(port)]; }
    /// Equipment that is on, by name: gas, wire, laser, pull-back, power, frequency, duty cycle.
    [[nodiscard]] QStringList on() const;

private:
    std::array<int, 19> values_{}, written_{};
    std::array<bool, 19> byHand_{};  ///< somebody else switched it on
    bool emitting_ = false;
};

/// How things are when a schedule is over and everything it used was taken down.
struct Ending {
    bool idle = true;
    int depth = 0;
    int pending = 0;
    int boxes = 0;
    int timersMore = 0;     ///< armed timers that were not there before the schedule
    QStringList outputsOn;  ///< controller outputs of the equipment that are not 0
    int resumeLine = 0;     ///< lumo.current.line
    int lineCount = -1;     ///< of the program in which it was written, -1: never
    int objectsMore = 0;    ///< objects of executor, page and screen that were not there before
    bool quit = false;      ///< the application was asked to quit
    qint64 quitTookMs = 0;  ///< from then to the end of its loop
    QString station{};      ///< a row of the stations' page that is not true
};

/// One family of invariants. It hears every event together with how things were before it.
class Rule {
public:
    virtual ~Rule() = default;
    virtual void on(const Event& event, const Outputs& outputs, const Runs& runs) = 0;
    [[nodiscard]] QStringList takeBroken() { return std::exchange(broken_, {}); }

protected:
    void broken(const QString& words) { broken_ << words; }

private:
    QStringList broken_;
};

/// Holds what the safety rules promise against what happened.
class Checker {
public:
    Checker();
    void on(const Event& event);
    void end(const Ending& ending);
    /// The invariants that did not hold, in words, in the order in which they were broken.
    [[nodiscard]] const QStringList& broken() const { return broken_; }

private:
    Outputs outputs_;
    Runs runs_;
    std::vector<std::unique_ptr<Rule>> rules_;
    QStringList broken_;
};

}  // namespace campaign
