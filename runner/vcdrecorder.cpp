#include "runner/vcdrecorder.h"

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "simulator/cell.h"
#include "simulator/controller.h"

namespace run {

namespace {

using Kind = VcdWriter::Kind;

/// Names of the logical ports, by their row.
const char* const kEquipment[] = {"laser_state",
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

/// "LUMO_DO.#3" is bit 3 in the scope LUMO_DO, "DO3" and "LUMO_AO_1" stand in a scope of their kind.
void splitName(const QString& name, QString* scope, QString* leaf) {
    const int dot = name.indexOf(QLatin1Char('.'));
    if (dot >= 0) {
        *scope = name.left(dot);
        *leaf = QStringLiteral("bit") + name.mid(dot + 2);
        return;
    }
    int letters = name.size();
    while (letters > 0 && (name[letters - 1].isDigit() || name[letters - 1] == QLatin1Char('_')))
        --letters;
    *scope = name.left(letters);
    *leaf = name;
}

}  // namespace

VcdRecorder::VcdRecorder(VcdWriter* writer, sim::Controller* controller, sim::Cell* cell,
                         TreeFollower* follower, std::function<qint64()> clock, QObject* parent)
    : QObject(parent), writer_(writer), controller_(controller), cell_(cell), clock_(std::move(clock)) {
    connect(controller, &sim::Controller::outputChanged, this, &VcdRecorder::onSignal);
    connect(controller, &sim::Controller::inputChanged, this, &VcdRecorder::onSignal);
    connect(controller, &sim::Controller::postureMoved, this, &VcdRecorder::onPosture);
    connect(cell, &sim::Cell::emittingChanged, this, [this](bool on) {
        if (begun_)
            set(emission_, on);
    });
    connect(follower, &TreeFollower::changed, this, &VcdRecorder::onChanged);
}

void VcdRecorder::begin() {
    declareSignals();
    declareEquipment();
    begun_ = true;
    onPosture();
    writer_->begin();
}

void VcdRecorder::declareSignals() {
    const QString run = QStringLiteral("run");
    busy_ = writer_->declare(run, QStringLiteral("busy"), Kind::Wire);
    line_ = writer_->declare(run, QStringLiteral("line"), Kind::Integer);
    moving_ = writer_->declare(run, QStringLiteral("moving"), Kind::Wire);
    emission_ = writer_->declare(run, QStringLiteral("laser_emission"), Kind::Wire);
    const char* const axes[] = {"x_mm", "y_mm", "z_mm"};
    for (int i = 0; i < 3; ++i)
        tool_[i] = writer_->declare(run, QLatin1String(axes[i]), Kind::Real);
    set(emission_, cell_->emitting());
    const auto declare = [this](const QString& name, const QVariant& value) {
        QString scope, leaf;
        splitName(name, &scope, &leaf);
        const bool bit = value.type() == QVariant::Bool;
        signals_[name] = writer_->declare(scope, leaf, bit ? Kind::Wire : Kind::Integer);
        set(signals_[name], value.toDouble());
    };
    for (const QString& name : controller_->inputNames())
        declare(name, controller_->input(name));
    for (const QString& name : controller_->outputNames())
        declare(name, controller_->output(name));
}

void VcdRecorder::declareEquipment() {
    const QList<mendo::ModuleObject*> ports = m(QStringLiteral("lumo.port"))->cmobjs();
    for (int i = 0; i < ports.size() && i < int(std::size(kEquipment)); ++i) {
        const auto signal = signals_.constFind(ports[i]->r(QStringLiteral("name"))->getString());
        if (signal != signals_.constEnd() && ports[i]->r(QStringLiteral("enable"))->getBool())
            writer_->alias(QStringLiteral("equipment"), QLatin1String(kEquipment[i]), *signal);
    }
}

void VcdRecorder::onSignal(const QString& name, const QVariant& value) {
    const auto signal = signals_.constFind(name);
    if (signal != signals_.constEnd())
        set(*signal, value.toDouble());
}

void VcdRecorder::onChanged(const Change& change) {
    if (!begun_)
        return;
    if (change.path == QLatin1String("lumo.execute.state"))
        set(busy_, change.value.toString() == QLatin1String("busy"));
    else if (change.path == QLatin1String("lumo.current.line"))
        set(line_, change.value.toInt());
    else if (change.path == QLatin1String("kord.r.state"))
        set(moving_, change.value.toString() != QLatin1String("idle"));
}

void VcdRecorder::onPosture() {
    if (!begun_)
        return;
    constexpr double kMm = 1000.0;
    const mendo::ModuleObject* trans = kordservice()->dataNode(QStringLiteral("sys.posture.trans"));
    for (int i = 0; i < 3; ++i)
        set(tool_[i], trans->c(i)->getDouble() * kMm);
}

}  // namespace run
