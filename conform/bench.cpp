#include "conform/bench.h"

#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QTimer>

#include <cmath>

namespace conform {

using mendo::ModuleObject;

namespace {

constexpr double mmPerM = 1000;
constexpr double radPerDeg = 3.14159265358979323846 / 180;
constexpr const char* motionCommands[] = {"move.j", "move.l", "move.c"};
constexpr const char* writeCommands[] = {"register.write", "register.write_multi", "device.io.out.do"};

using Matrix = std::array<std::array<double, 3>, 3>;

/// R = Rz·Ry·Rx.
Matrix matrixOf(const std::array<double, 3>& rot) {
    const double cx = std::cos(rot[0]), sx = std::sin(rot[0]), cy = std::cos(rot[1]), sy = std::sin(rot[1]),
                 cz = std::cos(rot[2]), sz = std::sin(rot[2]);
    return {{{cz * cy, cz * sy * sx - sz * cx, cz * sy * cx + sz * sx},
             {sz * cy, sz * sy * sx + cz * cx, sz * sy * cx - cz * sx},
             {-sy, cy * sx, cy * cx}}};
}

QJsonObject poseObject(const Pose& pose) {
    return {{"trans", QJsonArray{pose.trans[0], pose.trans[1], pose.trans[2]}},
            {"rot", QJsonArray{pose.rot[0], pose.rot[1], pose.rot[2]}}};
}

QJsonObject traj(double speedMmPerS, double zoneMm) {
    return {{"speed", speedMmPerS / mmPerM}, {"zone", zoneMm / mmPerM}};
}

}  // namespace

double distanceMm(const Pose& a, const Pose& b) {
    return mmPerM * std::hypot(a.trans[0] - b.trans[0], a.trans[1] - b.trans[1], a.trans[2] - b.trans[2]);
}

/// From the trace of the rotation between them.
double angleDeg(const Pose& a, const Pose& b) {
    const Matrix m = matrixOf(a.rot), n = matrixOf(b.rot);
    double squares = 0;  // of the difference; without the loss of digits that the trace has near 0
    for (size_t i = 0; i < 3; ++i) {
        for (size_t k = 0; k < 3; ++k) {
            squares += (m[i][k] - n[i][k]) * (m[i][k] - n[i][k]);
        }
    }
    return 2 * std::asin(std::min(1.0, std::sqrt(squares / 8))) / radPerDeg;
}

Bench::Bench(KordService* service, bridge::Adapter* adapter, const Tolerance& tolerance)
    : service_(service), adapter_(adapter), tolerance_(tolerance) {
    clock_.start();
    followCommands();
    using Kind = Event::Kind;
    const auto follow = [this](const char* path, Kind kind) {
        connect(m(QLatin1String(path)), &ModuleObject::changed, this,
                [this, kind](const QVariant& value) { note(kind, {}, value); });
    };
    follow("kord.r.state", Kind::State);
    follow("kord.r.power", Kind::Power);
    follow("kord.r.mode", Kind::Mode);
    connect(service->dataNode(QStringLiteral("sys.posture")), &ModuleObject::changed, this,
            &Bench::onPosture);
    connect(adapter, &bridge::Adapter::inputChanged, this,
            [this](const QString& name, bool value) { note(Kind::Input, name, value); });
    connect(adapter, &bridge::Adapter::outputChanged, this,
            [this](const QString& name, const QVariant& value) { note(Kind::Output, name, value); });
    connect(adapter, &bridge::Adapter::rejected, this,
            [this](const QString& name, const QString& reason) { note(Kind::Rejected, name, reason); });
    connect(adapter, &bridge::Adapter::violated, this, [this](bridge::Rule rule, int id) {
        violations_ << QStringLiteral("%1 (motion %2)").arg(bridge::ruleText(rule)).arg(id);
    });
}

void Bench::followCommands() {
    for (const char* name : motionCommands) {
        const QString command = QLatin1String(name);
        connect(service_->commandNode(command), &ModuleObject::changed, this,
                [this, command](const QVariant& code) { note(Event::Kind::Result, command, code); });
    }
    for (const char* name : writeCommands) {
        const QString command = QLatin1String(name);
        connect(service_->commandNode(command), &ModuleObject::changed, this,
                [this, command](const QVariant& code) { note(Event::Kind::Answer, command, code); });
    }
}

void Bench::note(Event::Kind kind, const QString& name, const QVariant& value) {
    if (!passPosted_) {
        passPosted_ = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                passPosted_ = false;
                ++pass_;
            },
            Qt::QueuedConnection);
    }
    events_.push_back({kind, name, value, nowMs(), pass_, calls_ > 0, posture(), state()});
}

void Bench::onPosture() {
    samples_.push_back({nowMs(), posture()});
}

void Bench::forget() {
    events_.clear();
    samples_.clear();
    violations_.clear();
}

std::vector<Event> Bench::of(Event::Kind kind) const {
    std::vector<Event> some;
    std::copy_if(events_.begin(), events_.end(), std::back_inserter(some),
                 [kind](const Event& event) { return event.kind == kind; });
    return some;
}

/// "move.l 0, move.l 0, move.c -3".
QString Bench::resultText() const {
    QStringList texts;
    for (const Event& result : results()) {
        texts << QStringLiteral("%1 %2").arg(result.name).arg(result.value.toInt());
    }
    return texts.isEmpty() ? QStringLiteral("none") : texts.join(QStringLiteral(", "));
}

// --- Orders --------------------------------------------------------------------------------------

void Bench::command(const char* name, const QJsonObject& arguments) {
    ModuleObject node(QStringLiteral("arguments"));
    node.loadJson(this, arguments);
    ++calls_;
    service_->command(this, QLatin1String(name), &node);
    --calls_;
}

Pose Bench::target(double x, double y, double z, double turnZDeg) const {
    Pose pose = start_->pose;
    pose.trans[0] += x / mmPerM;
    pose.trans[1] += y / mmPerM;
    pose.trans[2] += z / mmPerM;
    pose.rot[2] += turnZDeg * radPerDeg;
    return pose;
}

void Bench::line(double x, double y, double z, double speedMmPerS, double zoneMm, double turnZDeg) {
    command("move.l",
            {{"point", poseObject(target(x, y, z, turnZDeg))}, {"traj", traj(speedMmPerS, zoneMm)}});
}

void Bench::arc(const std::array<double, 3>& through, const std::array<double, 3>& to, double speedMmPerS) {
    command("move.c", {{"aux", poseObject(target(through[0], through[1], through[2]))},
                       {"point", poseObject(target(to[0], to[1], to[2]))},
                       {"traj", traj(speedMmPerS, 0)}});
}

void Bench::joint(double turnDeg, double speedMmPerS) {
    QJsonArray joints;
    for (const double joint : start_->joints) {
        joints.append(joint + (joints.isEmpty() ? turnDeg * radPerDeg : 0));
    }
    command("move.j", {{"point", joints}, {"traj", traj(speedMmPerS, 0)}});
}

void Bench::write(const QString& name, const char* type, int bias, const QVariant& value) {
    const QVariantHash record{
        {"name", name}, {"type", QLatin1String(type)}, {"bias", bias}, {"value", value}};
    ++calls_;
    service_->execCommand(this, QStringLiteral("register.write"), record);
    --calls_;
}

void Bench::writeTogether(const QJsonArray& records) {
    ModuleObject node(QStringLiteral("arguments"));
    node.loadJson(this, records);
    ++calls_;
    service_->command(this, QStringLiteral("register.write_multi"), &node);
    --calls_;
}

// --- Time ----------------------------------------------------------------------------------------

/// In real time finer than the host's clock.
double Bench::nowMs() const {
    return tolerance_.slackMs > 10 ? double(clock_.nsecsElapsed()) / 1e6
                                   : double(mendo::Clock::current().elapsedMs());
}

bool Bench::waitFor(const std::function<bool()>& condition, int ms) {
    if (condition()) {
        return true;
    }
    QEventLoop loop;
    QTimer look;
    look.setTimerType(Qt::PreciseTimer);
    const double until = nowMs() + ms;
    bool holds = false;
    connect(&look, &QTimer::timeout, &loop, [&] {
        holds = condition();
        if (holds || nowMs() >= until) {
            loop.quit();
        }
    });
    look.start(1);
    loop.exec();  // ends with the condition or the time
    return holds;
}

void Bench::wait(int ms) {
    waitFor([] { return false; }, ms);
}

bool Bench::awaitResults(int count, int ms) {
    return waitFor([&] { return int(results().size()) >= count; }, ms) && awaitIdle();
}

bool Bench::awaitIdle(int ms) {
    return waitFor([this] { return state() == QLatin1String("idle") && adapter_->standsStill(); }, ms);
}

bool Bench::goToStart() {
    stop();
    if (!awaitIdle()) {
        return false;
    }
    forget();
    if (distanceMm(posture().pose, start_->pose) > tolerance_.placeMm / 2 ||
        angleDeg(posture().pose, start_->pose) > tolerance_.turnDeg / 2) {
        line(0, 0);
        enough();
        waitFor([this] { return !results().empty(); }, 20000);
        awaitIdle();
    }
    wait(tolerance_.slackMs);
    const bool isThere = distanceMm(posture().pose, start_->pose) < tolerance_.placeMm;
    forget();
    return isThere;
}

// --- Nodes ---------------------------------------------------------------------------------------

Posture Bench::posture() const {
    const ModuleObject* node = service_->dataNode(QStringLiteral("sys.posture"));
    Posture posture;
    for (int i = 0; i < 3; ++i) {
        posture.pose.trans[size_t(i)] = node->c(QStringLiteral("trans"))->c(i)->getDouble();
        posture.pose.rot[size_t(i)] = node->c(QStringLiteral("rot"))->c(i)->getDouble();
    }
    const ModuleObject* joints = node->c(QStringLiteral("near"));
    for (int i = 0; i < joints->cmobjCount(); ++i) {
        posture.joints.push_back(joints->c(i)->getDouble());
    }
    return posture;
}

QString Bench::state() const {
    return m("kord.r.state")->getString();
}

QString Bench::power() const {
    return m("kord.r.power")->getString();
}

QString Bench::mode() const {
    return m("kord.r.mode")->getString();
}

}  // namespace conform
