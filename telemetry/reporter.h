#pragma once

#include "telemetry/documents.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

namespace mendo {
class ModuleObject;
}

namespace workcell {
class RunWatch;
}

namespace telemetry {

class Client;

/// Turns what happens in the cell into documents: lines and runs as they begin, ports and faults as they
/// change. What only its owner knows is told to it: the state, the parts, the record of a run. It only
/// reads.
class Reporter : public QObject {
    Q_OBJECT
public:
    struct Sources {
        const workcell::RunWatch* runs = nullptr;
        std::function<QString()> projectName;  ///< of the project that runs or is open, without ending
        std::function<int()> runMode;          ///< one of prog::runmode
    };
    /// `client` and what `sources` have must outlive it. `program`: its name. Make it when the package is
    /// loaded: its ports are read.
    Reporter(Client* client, const QString& program, Sources sources, QObject* parent = nullptr);

    /// Told again only when it says something else.
    void setState(const StateDocument& state);
    void setParts(const QString& project, int made, int target, qint64 lastMs, qint64 meanMs);
    /// The run that began last is over and everything is switched off.
    void setRecord(const workcell::RunRecord& record);
    /// Equipment is faulty while the laser is on; see workcell::EvidenceRecorder.
    void setFaultWhileLit(const QString& equipment);

private:
    void onBegun();
    void onEnded();
    void onLine(int line, const QString& type);
    void onResult(const QVariant& code);
    void onPort();
    void followPorts();
    void tellFaults();
    void tellCounters();
    [[nodiscard]] Stamp stamp() const;
    [[nodiscard]] int lineCount() const;
    template <typename Kind>
    void tell(const char* topic, const Kind& document);

    Client* client_;
    const Sources sources_;
    qint64 begunMs_ = -1;  ///< of the run or step under way; -1: none
    StateDocument state_;
    bool isStateTold_ = false;
    RunDocument run_;
    CountersDocument counters_;
    FaultsDocument faults_;
    PortsDocument ports_;
    std::vector<QPointer<const mendo::ModuleObject>> signals_;  ///< of the ports
};

}  // namespace telemetry
