#include "workcell/cellsignals.h"

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "workcell/treefollower.h"

namespace workcell {

namespace {

using Kind = VcdWriter::Kind;
using Source = CellSignal::Source;

constexpr int axes = 3;

/// Names of the logical ports, by their row.
const char* const equipmentWords[] = {"laser_state",
                                      "laser_head_state",
                                      "cooling_state",
                                      "air_pressure_state",
                                      "temperature_state",
                                      "welding_state",
                                      "gas",
                                      "red_light",
                                      "wire_enable",
                                      "laser_enable",
                                      "alarm",
                                      "laser_lock",
                                      "wire_lock",
                                      "gas_lock",
                                      "wire_pullback",
                                      "wire_speed",
                                      "laser_power",
                                      "laser_frequency",
                                      "laser_duty_cycle"};

CellSignal ofRun(const QString& name, Kind kind, double value = 0) {
    return {Source::Run, name, QStringLiteral("run"), name, kind, value};
}

/// "LUMO_DO.#3" is bit 3 in the scope LUMO_DO, "DO3" and "LUMO_AO_1" stand in a scope of their kind.
CellSignal ofController(Source source, const QString& name, const QVariant& value) {
    CellSignal signal{source, name, {}, name, Kind::Integer, value.toDouble()};
    if (value.type() == QVariant::Bool) {
        signal.kind = Kind::Wire;
    }
    const int dot = name.indexOf(QLatin1Char('.'));
    if (dot >= 0) {
        signal.scope = name.left(dot);
        signal.leaf = QStringLiteral("bit") + name.mid(dot + 2);
        return signal;
    }
    int letters = name.size();
    while (letters > 0 && (name[letters - 1].isDigit() || name[letters - 1] == QLatin1Char('_'))) {
        --letters;
    }
    signal.scope = name.left(letters);
    return signal;
}

}  // namespace

CellSignals::CellSignals(sim::Controller* controller, sim::Cell* cell, TreeFollower* follower,
                         QObject* parent)
    : QObject(parent) {
    addRun(cell);
    addController(controller);
    onPosture();
    connect(controller, &sim::Controller::outputChanged, this, &CellSignals::setNamed);
    connect(controller, &sim::Controller::inputChanged, this, &CellSignals::setNamed);
    connect(controller, &sim::Controller::postureMoved, this, &CellSignals::onPosture);
    connect(cell, &sim::Cell::emittingChanged, this, [this](bool on) { set(emission_, on); });
    connect(follower, &TreeFollower::changed, this, &CellSignals::onTree);
}

int CellSignals::add(const CellSignal& signal) {
    const int index = int(all_.size());
    all_.push_back(signal);
    byName_.insert(signal.name, index);
    return index;
}

void CellSignals::addRun(const sim::Cell* cell) {
    busy_ = add(ofRun(signalname::busy, Kind::Wire));
    line_ = add(ofRun(QStringLiteral("line"), Kind::Integer));
    moving_ = add(ofRun(QStringLiteral("moving"), Kind::Wire));
    emission_ = add(ofRun(signalname::emission, Kind::Wire, cell->emitting()));
    tool_ = add(ofRun(QStringLiteral("x_mm"), Kind::Real));
    add(ofRun(QStringLiteral("y_mm"), Kind::Real));
    add(ofRun(QStringLiteral("z_mm"), Kind::Real));
}

void CellSignals::addController(const sim::Controller* controller) {
    for (const QString& name : controller->inputNames()) {
        add(ofController(Source::Input, name, controller->input(name)));
    }
    for (const QString& name : controller->outputNames()) {
        add(ofController(Source::Output, name, controller->output(name)));
    }
}

void CellSignals::declare(VcdWriter* writer) const {
    for (const CellSignal& signal : all_) {
        writer->declare(signal.scope, signal.leaf, signal.kind);
    }
    const QList<mendo::ModuleObject*> ports = m(QStringLiteral("lumo.port"))->cmobjs();
    for (int i = 0; i < ports.size() && i < int(std::size(equipmentWords)); ++i) {
        const int signal = indexOf(ports[i]->r(QStringLiteral("name"))->getString());
        if (signal >= 0 && ports[i]->r(QStringLiteral("enable"))->getBool()) {
            writer->alias(QStringLiteral("equipment"), QLatin1String(equipmentWords[i]), signal);
        }
    }
}

void CellSignals::set(int signal, double value) {
    if (signal < 0 || all_[std::size_t(signal)].value == value) {
        return;
    }
    all_[std::size_t(signal)].value = value;
    emit changed(signal, value);
}

void CellSignals::onTree(const Change& change) {
    if (change.path == QLatin1String("lumo.execute.state")) {
        set(busy_, change.value.toString() == QLatin1String("busy"));
    } else if (change.path == QLatin1String("lumo.current.line")) {
        set(line_, change.value.toInt());
    } else if (change.path == QLatin1String("kord.r.state")) {
        set(moving_, change.value.toString() != QLatin1String("idle"));
    }
}

void CellSignals::onPosture() {
    constexpr double mm = 1000.0;
    const mendo::ModuleObject* trans = kordservice()->dataNode(QStringLiteral("sys.posture.trans"));
    for (int i = 0; i < axes; ++i) {
        set(tool_ + i, trans->c(i)->getDouble() * mm);
    }
}

}  // namespace workcell
