#pragma once

#include "runner/options.h"
#include "runner/problem.h"
#include "telemetry/client.h"
#include "telemetry/reporter.h"
#include "workcell/treefollower.h"
#include "workcell/workcell.h"

#include <QObject>

#include <functional>
#include <memory>

namespace run {

/// Tells an MQTT broker what a run of the runner does, when the settings of --mqtt are given.
class Telemetry : public QObject {
    Q_OBJECT
public:
    explicit Telemetry(const Options& options);
    ~Telemetry() override;

    /// Reads the settings. False, with the reason in `problem`, when they cannot be used.
    [[nodiscard]] bool read(Problem* problem);
    /// Begins to tell. After the package is loaded; all must outlive it. `projectName` tells the file of the
    /// project that runs.
    void begin(const workcell::WorkCell* cell, const workcell::TreeFollower* follower,
               const workcell::RunWatch* watch, const std::function<QString()>& projectName);
    /// The run is over. Waits until the broker has everything; a broker that is not reached ends the wait,
    /// else waitMs. Says on standard error when something was not delivered.
    void finish(const workcell::RunRecord& record);

private:
    static constexpr int waitMs = 2000;
    void refresh();
    [[nodiscard]] QString stateWord() const;

    const Options& options_;
    telemetry::Settings settings_;
    const workcell::WorkCell* cell_ = nullptr;
    const workcell::RunWatch* watch_ = nullptr;
    std::function<QString()> project_;
    std::function<int()> mode_;
    std::unique_ptr<telemetry::Client> client_;
    std::unique_ptr<telemetry::Reporter> reporter_;
};

}  // namespace run
