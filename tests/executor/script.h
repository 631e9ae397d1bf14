#pragma once

#include "support/executorbench.h"
#include "support/suite.h"

#include <map>

namespace test {

/// Plays runs that are written in words.
class Script : public QObject {
public:
    Script();

    /// Does one thing after the other: "set decrease_time 600; 1000 pause; run; wait 50; run 1". With a
    /// number in front it happens that long after the next run began, with "when LASER 0:" once the robot's
    /// log says so, with "when lumo.execute.state:" once that node is written, with "when 7th:" at the
    /// seventh call or announcement; the verbs stand in the constructor. Returns the log of the last run, one
    /// line for each millisecond, where "over" tells the resume line and whether the weld is open. Last come
    /// what must not be at the end and boxes.
    QStringList play(const QByteArray& program, const QString& script);
    void act(const QString& what);
    /// Whether a cue has not come.
    [[nodiscard]] bool hasCues() const { return !cues_.isEmpty(); }

    using Words = QStringList;
    std::map<QString, std::function<void(const Words&)>> verbs;
    ExecutorBench bench;

private:
    void hear(const QString& cue);
    [[nodiscard]] QStringList leftBehind() const;

    QVector<QPair<QString, QString>> cues_;  ///< what to hear, and what to do then
    int heard_ = 0;
    int told_ = 0;  ///< pending steps when the executor last announced its activity
    bool stale_ = false;
    int timers_ = 0;
};

}  // namespace test
