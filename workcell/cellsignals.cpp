#include "workcell/cellsignals.h"

#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/geometry.h"
#include "program/ports.h"
#include "program/words.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "workcell/treefollower.h"

#include <cmath>

namespace workcell {

namespace {

using Kind = VcdWriter::Kind;
using Source = CellSignal::Source;

constexpr int axes = 3;

CellSignal ofRun(const QString& name, Kind kind, double value = 0) {
    return {Source::Run, name, QStringLiteral("run"), name, kind, value};
}

/// "LUMO_DO.#3" is bit 3 in the scope LUMO_DO; the scope of "DO3" is DO, that of "LUMO_AO_1" LUMO_AO.
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

double toThousandth(double number) {
    return std::round(number * 1000.0) / 1000.0 + 0.0;  // no negative zero
}

double powerPct(const QVariant& registerValue) {
    return toThousandth(registerValue.toDouble() / prog::analogueFullScale * 100.0);
}

}  // namespace

CellSignals::CellSignals(sim::Controller* controller, sim::Cell* cell, TreeFollower* follower,
                         QObject* parent)
    : QObject(parent), controller_(controller), powerName_(cell->wiring().laserPower) {
    addRun(cell);
    addController(controller);
    onPosture();
    connect(controller, &sim::Controller::outputChanged, this, &CellSignals::setNamed);
    connect(controller, &sim::Controller::inputChanged, this, &CellSignals::setNamed);
    connect(controller, &sim::Controller::postureMoved, this, &CellSignals::onPosture);
    connect(controller, &sim::Controller::cameToRest, this, &CellSignals::onRest);
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
    station_ = add(ofRun(QStringLiteral("station"), Kind::Integer));
    moving_ = add(ofRun(QStringLiteral("moving"), Kind::Wire));
    emission_ = add(ofRun(signalname::emission, Kind::Wire, cell->emitting()));
    power_ = add(ofRun(QStringLiteral("power_pct"), Kind::Real, powerPct(controller_->output(powerName_))));
    tool_ = add(ofRun(QStringLiteral("x_mm"), Kind::Real));
    add(ofRun(QStringLiteral("y_mm"), Kind::Real));
    add(ofRun(QStringLiteral("z_mm"), Kind::Real));
    speed_ = add(ofRun(QStringLiteral("speed_mm_s"), Kind::Real));
}

void CellSignals::addController(const sim::Controller* controller) {
    for (const QString& name : controller->inputNames()) {
        add(ofController(Source::Input, name, controller->input(name)));
    }
    for (const QString& name : controller->outputNames()) {
        add(ofController(Source::Output, name, controller->output(name)));
    }
}

std::vector<double> CellSignals::values() const {
    std::vector<double> values;
    values.reserve(all_.size());
    for (const CellSignal& signal : all_) {
        values.push_back(signal.value);
    }
    return values;
}

void CellSignals::beginDump(VcdWriter* writer, const std::vector<double>& values) const {
    for (std::size_t i = 0; i < all_.size(); ++i) {
        writer->set(writer->declare(all_[i].scope, all_[i].leaf, all_[i].kind), values[i], 0);
    }
    const QList<mendo::ModuleObject*> ports = m(prog::key::port)->cmobjs();
    for (int i = 0; i < ports.size() && i < prog::portCount; ++i) {
        const int signal = indexOf(ports[i]->r(prog::field::name)->getString());
        if (signal >= 0 && ports[i]->r(prog::field::enable)->getBool()) {
            writer->alias(QStringLiteral("equipment"), prog::portInfo(I_PORT(i)).word, signal);
        }
    }
    writer->begin();
}

void CellSignals::set(int signal, double value) {
    if (signal < 0 || all_[std::size_t(signal)].value == value) {
        return;
    }
    all_[std::size_t(signal)].value = value;
    emit changed(signal, value);
}

void CellSignals::onTree(const Change& change) {
    if (change.path == prog::key::executeState) {
        const bool isBusy = change.value.toString() == prog::word::busy;
        set(busy_, isBusy);
        set(station_, isBusy && runningStation_ ? runningStation_() + 1 : 0);
    } else if (change.path == prog::key::currentLine) {
        set(line_, change.value.toInt());
    } else if (change.path == prog::key::robotState) {
        set(moving_, change.value.toString() != prog::word::idle);
        beginSample();
    }
}

void CellSignals::setNamed(const QString& name, const QVariant& value) {
    set(indexOf(name), value.toDouble());
    if (name == powerName_) {
        set(power_, powerPct(value));
    }
}

/// The mean since the last sample, or since the motion began.
void CellSignals::setSpeed() {
    const qint64 now = mendo::Clock::current().elapsedMs();
    if (now > sampleMs_) {
        const double metresPerMs = (controller_->travelled() - sampleM_) / double(now - sampleMs_);
        set(speed_, toThousandth(metresPerMs * prog::mmPerM * 1000.0));
    }
    beginSample();
}

void CellSignals::beginSample() {
    sampleMs_ = mendo::Clock::current().elapsedMs();
    sampleM_ = controller_->travelled();
}

void CellSignals::onRest() {
    onPosture();
    set(speed_, 0.0);
}

void CellSignals::onPosture() {
    constexpr double mm = 1000.0;
    setSpeed();
    const mendo::ModuleObject* trans = kordservice()->dataNode(prog::key::posturePlace);
    for (int i = 0; i < axes; ++i) {
        set(tool_ + i, trans->c(i)->getDouble() * mm);
    }
}

}  // namespace workcell
