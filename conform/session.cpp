#include "conform/session.h"

#include "bridge/plugin.h"
#include "kord/kordservice.h"
#include "simulator/controller.h"

namespace conform {

namespace {

constexpr int connectMs = 15000;
constexpr Tolerance realTime{60, 0.5, 1.0, 0.5, 0.05, 600};

/// The first register with such an element, but rather the wanted one.
QString chosen(const QStringList& registers, const QString& wanted) {
    return registers.contains(wanted) || registers.isEmpty() ? (registers.isEmpty() ? QString() : wanted)
                                                             : registers.front();
}

}  // namespace

Session::Session(const Options& options) : options_(options) {}

Session::~Session() = default;

bool Session::prepare(QString* error) {
    return makeBackend(error) && awaitReady(error);
}

bool Session::makeBackend(QString* error) {
    return options_.isSimulator() ? makeSimulator() : loadBackend(error);
}

bool Session::makeSimulator() {
    sim::Controller::Options options;
    options.axes = options_.backend.endsWith(QLatin1String(":7")) ? 7 : 6;
    simulator_ = std::make_unique<sim::Controller>(kordservice(), options);
    bench_ = std::make_unique<Bench>(kordservice(), simulator_.get(), Tolerance());
    subject_.cutLink = [this](bool cut) { simulator_->cutLink(cut); };
    QObject::connect(simulator_.get(), &bridge::Adapter::outputChanged, bench_.get(),
                     [this](const QString& name, const QVariant& value) {
                         if (name == options_.loopOutput) {
                             simulator_->setInput(options_.loopInput, value.toBool());
                         }
                     });
    return true;
}

bool Session::loadBackend(QString* error) {
    backend_ = bridge::loadController(options_.backend, error);
    if (!backend_) {
        return false;
    }
    if (!options_.device.isEmpty() && !(device_ = bridge::loadSignalPort(options_.device, error))) {
        return false;
    }
    adapter_ = std::make_unique<bridge::Adapter>(kordservice(), backend_.get(), device_.get(),
                                                 bridge::Adapter::Options{true, options_.repair});
    bench_ = std::make_unique<Bench>(kordservice(), adapter_.get(), realTime);
    if (backend_->metaObject()->indexOfMethod("cutLink(bool)") >= 0) {
        subject_.cutLink = [this](bool cut) {
            QMetaObject::invokeMethod(backend_.get(), "cutLink", Q_ARG(bool, cut));
        };
    }
    adapter_->start();
    return true;
}

/// Drives on, automatic mode, a posture.
bool Session::awaitReady(QString* error) {
    bridge::Adapter* const adapter = bench_->adapter();
    if (!bench_->waitFor([adapter] { return adapter->isLinked(); }, connectMs)) {
        *error = QStringLiteral("the controller cannot be reached: %1").arg(adapter->linkReason().text());
        return false;
    }
    adapter->setMode(bridge::Mode::Auto);
    adapter->setPower(true);
    if (!bench_->waitFor([this] { return bench_->power() == QLatin1String("on"); }, connectMs)) {
        *error = QStringLiteral("the drives do not come on");
        return false;
    }
    if (!bench_->awaitIdle(connectMs) || bench_->posture().joints.empty()) {
        *error = QStringLiteral("the controller tells no posture, or does not stand");
        return false;
    }
    bench_->setStart();
    chooseRegisters();
    return true;
}

void Session::chooseRegisters() {
    const QStringList names = bench_->adapter()->outputNames();
    QStringList bits, numbers;
    for (const QString& name : names) {
        const bool isBit = bench_->adapter()->output(name).type() == QVariant::Bool;
        const QString base = name.section(QLatin1Char('.'), 0, 0);
        if (isBit && name.endsWith(QLatin1String(".#1"))) {
            bits << base;
        } else if (!isBit && base == name) {
            numbers << name;
        }
    }
    subject_.bench = bench_.get();
    subject_.bits = options_.bits.isEmpty() ? chosen(bits, QStringLiteral("LUMO_DO")) : options_.bits;
    subject_.number =
        options_.number.isEmpty() ? chosen(numbers, QStringLiteral("LUMO_AO_0")) : options_.number;
    subject_.loopOutput = options_.loopOutput;
    subject_.loopInput = options_.loopInput;
    subject_.repeats = options_.repeats;
}

void Session::setQuirk(bool on) {
    sim::Quirk quirk;
    if (simulator_ && sim::Controller::quirkFromName(options_.quirk, &quirk)) {
        simulator_->setQuirk(quirk, on);
    }
}

Judged Session::judge(const Check& check) {
    Judged judged{check, {}, 0, {}};
    const double began = bench_->nowMs();
    if (check.moves && !bench_->goToStart()) {
        judged.outcome = failed(QStringLiteral("the arm cannot be brought back to where it stood"));
        return judged;
    }
    bench_->forget();
    setQuirk(true);
    judged.outcome = check.judge(subject_);
    setQuirk(false);
    judged.violations = bench_->violations();
    judged.violations.removeDuplicates();
    judged.seconds = (bench_->nowMs() - began) / 1000;
    violations_ << judged.violations;
    return judged;
}

std::vector<Figure> Session::measureTimes() {
    bench_->goToStart();
    return measure(subject_);
}

}  // namespace conform
