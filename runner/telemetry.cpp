#include "runner/telemetry.h"

#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "workcell/runwatch.h"

#include <QFileInfo>

namespace run {

Telemetry::Telemetry(const Options& options) : options_(options) {}

Telemetry::~Telemetry() = default;

bool Telemetry::read(Problem* problem) {
    if (options_.mqtt.isEmpty()) {
        return true;
    }
    mendo::FileProblem found;
    const auto settings = telemetry::Settings::read(options_.mqtt, &found);
    *problem = {options_.mqttName, found.place, found.text()};
    if (!settings) {
        return false;
    }
    settings_ = *settings;
    settings_.isOn = true;  // the option switches it on
    if (const auto flaw = settings_.flaw()) {
        *problem = {options_.mqttName, {}, flaw->text()};
        return false;
    }
    if (settings_.exposesPassword()) {
        printWarning(
            QStringLiteral("%1: the password crosses the network as plain text").arg(options_.mqttName));
    }
    return true;
}

void Telemetry::begin(const workcell::WorkCell* cell, const workcell::TreeFollower* follower,
                      const workcell::RunWatch* watch, const std::function<QString()>& projectName) {
    if (!settings_.isOn) {
        return;
    }
    cell_ = cell;
    watch_ = watch;
    project_ = [projectName] { return QFileInfo(projectName()).completeBaseName(); };
    mode_ = [flags = cell->flags()] { return flags.mode(); };
    client_ = std::make_unique<telemetry::Client>();
    reporter_ = std::make_unique<telemetry::Reporter>(client_.get(), QStringLiteral("lumo-run"),
                                                      telemetry::Reporter::Sources{watch, project_, mode_});
    client_->setSettings(settings_);
    connect(watch, &workcell::RunWatch::begun, this, &Telemetry::refresh);
    connect(watch, &workcell::RunWatch::ended, this, &Telemetry::refresh);
    connect(watch, &workcell::RunWatch::lineBegun, this, &Telemetry::refresh);
    connect(follower, &workcell::TreeFollower::switchWritten, this, &Telemetry::refresh);
    connect(cell->cell(), &sim::Cell::emittingChanged, this, &Telemetry::refresh);
    connect(cell->controller(), &sim::Controller::emergencyStopChanged, this, &Telemetry::refresh);
    connect(m(prog::key::robotPower), &mendo::ModuleObject::changed, this, &Telemetry::refresh);
    refresh();
}

/// The same words as the panel's state block, as far as the runner has these states.
QString Telemetry::stateWord() const {
    const QString reason = watch_->isRunning() ? QString() : watch_->reason();
    if (cell_->controller()->emergencyStop()) {
        return QStringLiteral("emergency_stop");
    }
    if (reason == QLatin1String("error")) {
        return QStringLiteral("fault");
    }
    if (cell_->cell()->emitting()) {
        return QStringLiteral("laser_on");
    }
    if (watch_->isRunning()) {
        return QStringLiteral("running");
    }
    if (reason == QLatin1String("paused") || reason == QLatin1String("finished")) {
        return reason;
    }
    const bool isOn = m(prog::key::robotPower)->getString() == prog::word::on;
    return isOn ? QStringLiteral("ready") : QStringLiteral("drives_off");
}

void Telemetry::refresh() {
    const int mode = mode_();
    const bool byStation = mode == prog::runmode::byStation;
    telemetry::StateDocument state;
    state.state = stateWord();
    state.project = project_();
    state.runMode = telemetry::runModeWord(mode);
    state.isDry = m(prog::key::executeDryRun)->getBool(false);
    state.isPowered = m(prog::key::robotPower)->getString() == prog::word::on;
    state.robotMode = m(prog::key::robotMode)->getString();
    state.isEmergencyStop = cell_->controller()->emergencyStop();
    state.lines = m(byStation ? prog::key::stationProgram : prog::key::program)->cmobjCount();
    if (watch_->isRunning()) {
        state.line = m(watch_->isStep() ? prog::key::executeLine : prog::key::currentLine)->getInt() + 1;
    } else if (state.state == QLatin1String("paused")) {
        state.pausedLine = m(prog::key::currentLine)->getInt() + 1;
    }
    if (cell_->cell()->emitting()) {
        state.laser = byStation ? QStringLiteral("station") : QStringLiteral("program");
    }
    reporter_->setState(state);
}

void Telemetry::finish(const workcell::RunRecord& record) {
    if (!client_) {
        return;
    }
    refresh();
    reporter_->setRecord(record);
    if (!client_->flush(waitMs)) {
        const telemetry::LinkStatus status = client_->status();
        const bool hasFailed = status.state == telemetry::LinkStatus::State::Failed;
        printWarning(QStringLiteral("--mqtt %1: not everything was sent: %2")
                         .arg(options_.mqttName,
                              hasFailed ? status.text() : QStringLiteral("the broker does not answer")));
    }
}

}  // namespace run
