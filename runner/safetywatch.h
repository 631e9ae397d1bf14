#pragma once

#include "runner/scenario.h"
#include "workcell/safety/eventrecorder.h"
#include "workcell/safety/eventsource.h"
#include "workcell/safety/rules.h"

#include <QObject>

namespace run {

struct Options;

/// Records a run for the rules of docs/safety.md: what the executor and the robot do, and what the scenario
/// does to them.
class SafetyWatch : public QObject {
    Q_OBJECT
public:
    /// Make it before the controller and the package.
    explicit SafetyWatch(workcell::TreeFollower* follower, QObject* parent = nullptr);

    void setExecutor(QObject* executor);
    /// Records from now on.
    void begin();
    /// The runner itself starts the run or single step of its options; returned() when it is over.
    void starts(const Options& options);
    void returned();
    /// An entry of the scenario is applied; returned() when that has returned.
    void onActing(const run::ScenarioEntry& entry);
    /// The application was asked to quit, and its event loops have returned.
    void onQuit();
    /// A message of Qt.
    void complain(const QString& text) { recorder_.complain(text); }
    /// The runner ends for this reason, as in the trace's last line. Returns whether no rule was broken;
    /// `tell`: prints those that were.
    bool end(const sim::Controller* controller, const QString& reason, bool tell);

    [[nodiscard]] const std::vector<workcell::safety::Event>& events() const { return recorder_.events(); }
    /// The rules that were broken so far.
    [[nodiscard]] std::vector<workcell::safety::Breach> breaches() const {
        return workcell::safety::judge(events());
    }

private:
    workcell::safety::Event eventOf(const ScenarioEntry& entry) const;

    workcell::safety::EventSource source_;
    workcell::safety::EventRecorder recorder_;
    QObject* executor_ = nullptr;
    bool losesResults_ = false;  ///< the controller was told to keep a result to itself
    bool ended_ = false;
    qint64 quitMs_ = -1;
};

/// "1234 ms: RULE: TEXT".
QString breachText(const workcell::safety::Breach& breach, const workcell::safety::Event& event);

}  // namespace run
