#include "telemetry/reporter.h"

#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/ports.h"
#include "program/words.h"
#include "telemetry/client.h"
#include "workcell/runwatch.h"

#include <QJsonDocument>

#include <memory>
#include <utility>

namespace telemetry {

using mendo::ModuleObject;

Reporter::Reporter(Client* client, const QString& program, Sources sources, QObject* parent)
    : QObject(parent), client_(client), sources_(std::move(sources)) {
    const workcell::RunWatch* const runs = sources_.runs;
    connect(runs, &workcell::RunWatch::begun, this, &Reporter::onBegun);
    connect(runs, &workcell::RunWatch::ended, this, &Reporter::onEnded);
    connect(runs, &workcell::RunWatch::lineBegun, this, &Reporter::onLine);
    for (const QLatin1String move : {prog::command::moveJ, prog::command::moveL, prog::command::moveC}) {
        connect(kordservice()->commandNode(move), &ModuleObject::changed, this, &Reporter::onResult);
    }
    connect(m(prog::key::port), &ModuleObject::changed, this, &Reporter::followPorts);
    connect(m(prog::key::port), &ModuleObject::added, this, &Reporter::followPorts);
    counters_.since = mendo::Clock::current().now();
    tell("info", InfoDocument{stamp(), program});
    tellCounters();
    tellFaults();
    followPorts();
}

/// Its JSON is made in the network's thread.
template <typename Kind>
void Reporter::tell(const char* topic, const Kind& document) {
    client_->publish(topic, [kept = std::make_shared<const Kind>(document)] {
        return QJsonDocument(kept->json()).toJson(QJsonDocument::Compact);
    });
}

Stamp Reporter::stamp() const {
    const mendo::Clock& clock = mendo::Clock::current();
    return {clock.now(), begunMs_ < 0 ? std::nullopt : std::make_optional(clock.elapsedMs() - begunMs_)};
}

int Reporter::lineCount() const {
    const bool ofStation = begunMs_ >= 0 && sources_.runMode() == prog::runmode::byStation;
    return m(ofStation ? prog::key::stationProgram : prog::key::program)->cmobjCount();
}

// --- Told by the owner ----------------------------------------------------------------------------

void Reporter::setState(const StateDocument& state) {
    if (isStateTold_ && state_.says(state)) {
        return;
    }
    isStateTold_ = true;
    state_ = state;
    state_.stamp = stamp();
    tell("state", state_);
    if (faults_.isEmergencyStop != state.isEmergencyStop) {
        faults_.isEmergencyStop = state.isEmergencyStop;
        tellFaults();
    }
}

void Reporter::setParts(const QString& project, int made, int target, qint64 lastMs, qint64 meanMs) {
    counters_.project = project;
    counters_.made = made;
    counters_.target = target;
    counters_.lastMs = lastMs;
    counters_.meanMs = meanMs;
    tellCounters();
}

void Reporter::setRecord(const workcell::RunRecord& record) {
    constexpr double msPerS = 1000;
    run_.stamp = {mendo::Clock::current().now(), qint64(record.seconds * msPerS)};
    run_.isOver = true;
    run_.record = record;
    tell("run", run_);
    client_->publish("seams", [kept = std::make_shared<const RunDocument>(run_)] {
        return QJsonDocument(kept->seamsJson()).toJson(QJsonDocument::Compact);
    });
    counters_.add(record);
    tellCounters();
}

void Reporter::setFaultWhileLit(const QString& equipment) {
    if (!faults_.lit.contains(equipment)) {
        faults_.lit << equipment;
        tellFaults();
    }
}

// --- Runs -----------------------------------------------------------------------------------------

/// Lines and faults are those of the run under way, or else of the last one.
void Reporter::onBegun() {
    const mendo::Clock& clock = mendo::Clock::current();
    begunMs_ = clock.elapsedMs();
    faults_.motionError = 0;
    faults_.lit.clear();
    tellFaults();
    if (sources_.runs->isStep()) {
        return;
    }
    const int number = run_.number + 1;
    run_ = RunDocument();
    run_.stamp = stamp();
    run_.number = number;
    run_.begun = clock.now();
    run_.project = sources_.projectName();
    run_.runMode = runModeWord(sources_.runMode());
    tell("run", run_);
}

void Reporter::onEnded() {
    begunMs_ = -1;
}

void Reporter::onLine(int line, const QString& type) {
    tell("line", LineDocument{stamp(), sources_.projectName(), line + 1, lineCount(), type});
}

/// Results without drive power are no errors of a run.
void Reporter::onResult(const QVariant& code) {
    if (code.toInt() < 0 && m(prog::key::robotPower)->getString() == prog::word::on) {
        faults_.motionError = code.toInt();
        tellFaults();
    }
}

void Reporter::tellFaults() {
    faults_.stamp = stamp();
    tell("faults", faults_);
}

void Reporter::tellCounters() {
    counters_.stamp = stamp();
    tell("counters", counters_);
}

// --- Ports ----------------------------------------------------------------------------------------

/// Loading the ports and assigning a signal replaces their nodes.
void Reporter::followPorts() {
    const ModuleObject* const registers = kordservice()->dataNode(prog::key::registerValues);
    ports_.rows.clear();
    signals_.clear();
    for (int port = 0; port < prog::portCount; ++port) {
        const ModuleObject* const row = m(prog::key::port)->c(port);
        const ModuleObject* const used = row->c(prog::field::enable);
        const ModuleObject* const name = row->c(prog::field::name);
        const ModuleObject* const signal =
            name->getString().isEmpty() ? ModuleObject::null() : registers->r(name->getString());
        ports_.rows.append({used->getBool(false), name->getString()});
        signals_.emplace_back(signal->isNull() ? nullptr : signal);
        for (const ModuleObject* const watched : {used, name}) {
            if (!watched->isNull()) {
                connect(watched, &ModuleObject::changed, this, &Reporter::followPorts, Qt::UniqueConnection);
            }
        }
        if (!signal->isNull()) {
            connect(signal, &ModuleObject::changed, this, &Reporter::onPort, Qt::UniqueConnection);
        }
    }
    onPort();
}

void Reporter::onPort() {
    for (int port = 0; port < ports_.rows.size(); ++port) {
        const ModuleObject* const signal = signals_[std::size_t(port)];
        ports_.rows[port].value = signal ? std::make_optional(signal->value().toInt()) : std::nullopt;
    }
    ports_.stamp = stamp();
    tell("ports", ports_);
    const QStringList faulty = ports_.faulty();
    if (faulty != faults_.equipment) {
        faults_.equipment = faulty;
        tellFaults();
    }
}

}  // namespace telemetry
