#pragma once

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "simulator/controller.h"
#include "simulator/virtualtime.h"

#include <QMetaEnum>
#include <QPointer>
#include <QVariantHash>

/// A controller on the robot service, orders as a package gives them, and a diary of what the
/// controller did, with the milliseconds since start().
class ControllerFixture : public QObject {
public:
    explicit ControllerFixture(const sim::Controller::Options& options = {})
        : controller(kordservice(), options, nullptr) {
        using sim::Controller;
        connect(&controller, &Controller::motion, this, [this](int id, Controller::MotionEvent event) {
            note(QStringLiteral("%1 %2").arg(
                QString::fromLatin1(QMetaEnum::fromType<Controller::MotionEvent>().valueToKey(int(event)))
                    .toLower(),
                QString::number(id)));
        });
        connect(&controller, &Controller::result, this, [this](const QString& command, int id, int code) {
            note(QStringLiteral("result %1 %2 %3").arg(command).arg(id).arg(code));
        });
        connect(&controller, &Controller::outputChanged, this,
                [this](const QString& name, const QVariant& value) {
                    note(QStringLiteral("%1=%2").arg(name, value.toString()));
                });
        connect(&controller, &Controller::inputChanged, this, [this](const QString& name, bool value) {
            note(QStringLiteral("%1=%2").arg(name, QVariant(value).toString()));
        });
        connect(&controller, &Controller::rejected, this, [this](const QString& name, const QString& reason) {
            note(QStringLiteral("rejected %1: %2").arg(name, reason));
        });
        connect(m(QStringLiteral("kord.r.state")), &mendo::ModuleObject::changed, this,
                [this](const QVariant& value) { note(value.toString()); });
    }

    void start() {
        lines.clear();
        start_ = now();
    }
    /// Waits until the controller stands still, then returns the diary.
    QString diary(int limitMs = 60000) {
        sim::VirtualTime::instance()->advanceUntil([this] { return controller.standsStill(); }, limitMs);
        return lines.join(QLatin1String(", "));
    }
    void advance(int ms) { sim::VirtualTime::instance()->advance(ms); }
    void note(const QString& what) { lines << QStringLiteral("%1 %2").arg(now() - start_).arg(what); }

    void line(double x, double y, double z, double speed = 0.1, double zone = 0) {
        mendo::ModuleObject arguments(QStringLiteral("tmp"));
        point(&arguments, QStringLiteral("point"), x, y, z);
        traj(&arguments, speed, zone);
        kordservice()->command(this, QStringLiteral("move.l"), &arguments);
    }
    /// The joints turned by `turn` from home, each.
    void joint(double turn, double speed = 0.1) {
        mendo::ModuleObject arguments(QStringLiteral("tmp"));
        arguments.append(this, QStringLiteral("point"))->copyFrom(this, posture(QStringLiteral("near")));
        for (mendo::ModuleObject* angle : arguments.r(QStringLiteral("point"))->cmobjs())
            angle->setValue(this, angle->getDouble() + turn);
        traj(&arguments, speed, 0);
        kordservice()->command(this, QStringLiteral("move.j"), &arguments);
    }
    void order(const char* name) {
        kordservice()->command(this, QLatin1String(name), static_cast<const mendo::ModuleObject*>(nullptr));
    }
    void writeRegister(const QString& name, const QString& type, const QVariant& value,
                       const QVariant& bias) {
        kordservice()->execCommand(this, QStringLiteral("register.write"), record(name, type, value, bias));
    }
    static QVariantHash record(const QString& name, const QString& type, const QVariant& value,
                               const QVariant& bias) {
        return {{QStringLiteral("name"), name},
                {QStringLiteral("type"), type},
                {QStringLiteral("value"), value},
                {QStringLiteral("bias"), bias}};
    }
    void point(mendo::ModuleObject* arguments, const QString& path, double x, double y, double z) {
        const double values[] = {x, y, z, 3.14159265358979323846, 0, 0};
        for (int i = 0; i < 6; ++i) {
            const QString list = path + QLatin1String(i < 3 ? ".trans." : ".rot.");
            arguments->set(this, list + mIndex(i % 3), values[i], true);
        }
    }
    void traj(mendo::ModuleObject* arguments, double speed, double zone) {
        arguments->set(this, QStringLiteral("traj.speed"), speed, true);
        arguments->set(this, QStringLiteral("traj.zone"), zone, true);
    }
    mendo::ModuleObject* posture(const QString& path) const {
        return kordservice()->get(nullptr, QStringLiteral("sys.posture"), path);
    }
    QString state() const { return m(QStringLiteral("kord.r.state"))->getString(); }

    sim::Controller controller;
    QStringList lines;

private:
    static qint64 now() { return sim::VirtualTime::instance()->nowMs(); }
    qint64 start_ = now();
};
