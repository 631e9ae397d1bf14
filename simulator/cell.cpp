#include "simulator/cell.h"

#include "mendo/clock.h"
#include "simulator/controller.h"

#include <array>

namespace sim {

namespace {

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

/// Equipment with an input, in the order of the input register's bits.
constexpr std::array<const char*, 5> equipmentWords = {"laser", "head", "chiller", "gas", "temperature"};
constexpr size_t neededToEmit = 3;  // the first three
constexpr int weldingBit = int(equipmentWords.size());

QString signalName(int bit) {
    return QStringLiteral("LUMO_DI.#%1").arg(bit);
}

/// Adds up the time for which something is on.
class Stopwatch {
public:
    bool isOn() const { return since_ >= 0; }
    void set(bool on) {
        if (on == isOn()) {
            return;
        }
        if (!on) {
            total_ += nowMs() - since_;
        }
        since_ = on ? nowMs() : -1;
    }
    qint64 totalMs() const { return isOn() ? total_ + nowMs() - since_ : total_; }

private:
    qint64 total_ = 0, since_ = -1;
};

}  // namespace

struct Cell::Private {
    bool isOn(const QString& output) const { return controller->output(output).toBool(); }
    bool mayEmit() const {
        for (size_t i = 0; i < neededToEmit; ++i) {
            if (faulty[i]) {
                return false;
            }
        }
        return isOn(wiring.laserEnable) && controller->output(wiring.laserPower).toInt() > 0;
    }

    Controller* controller;
    Wiring wiring;
    std::array<bool, equipmentWords.size()> faulty{};
    Stopwatch laser, gas, wire;
    double weldLength = 0;  ///< of the finished seams
    double seamStart = 0;   ///< travelled() when the laser came on
};

Cell::Cell(Controller* controller, const Wiring& wiring, QObject* parent)
    : QObject(parent), d_(std::make_unique<Private>()) {
    d_->controller = controller;
    d_->wiring = wiring;
    for (int bit = 0; bit < weldingBit; ++bit) {
        controller->setInput(signalName(bit), true);
    }
    controller->setInput(signalName(weldingBit), false);
    connect(controller, &Controller::outputChanged, this, &Cell::update);
    update();
}

Cell::~Cell() = default;

/// Brings the equipment up to date with the outputs and faults.
void Cell::update() {
    d_->gas.set(d_->isOn(d_->wiring.gas));
    d_->wire.set(d_->isOn(d_->wiring.wireEnable) || d_->isOn(d_->wiring.wirePullback));
    const bool on = d_->mayEmit();
    if (on == d_->laser.isOn()) {
        return;
    }
    d_->laser.set(on);
    if (on) {
        d_->seamStart = d_->controller->travelled();
    } else {
        d_->weldLength += d_->controller->travelled() - d_->seamStart;
    }
    d_->controller->setInput(signalName(weldingBit), on);
    emit emittingChanged(on);
}

const Wiring& Cell::wiring() const {
    return d_->wiring;
}

QStringList Cell::equipment() {
    QStringList words;
    for (const char* word : equipmentWords) {
        words.append(QLatin1String(word));
    }
    return words;
}

QString Cell::inputOf(int equipment) {
    return signalName(equipment);
}

bool Cell::setFault(const QString& name, bool faulty) {
    for (size_t i = 0; i < equipmentWords.size(); ++i) {
        if (name != QLatin1String(equipmentWords[i])) {
            continue;
        }
        d_->faulty[i] = faulty;
        update();
        d_->controller->setInput(signalName(int(i)), !faulty);
        return true;
    }
    return false;
}

bool Cell::emitting() const {
    return d_->laser.isOn();
}
qint64 Cell::laserOnMs() const {
    return d_->laser.totalMs();
}
qint64 Cell::gasOnMs() const {
    return d_->gas.totalMs();
}
qint64 Cell::wireOnMs() const {
    return d_->wire.totalMs();
}

double Cell::weldLength() const {
    return emitting() ? d_->weldLength + d_->controller->travelled() - d_->seamStart : d_->weldLength;
}

}  // namespace sim
