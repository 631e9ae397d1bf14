#pragma once

#include "bridge/adapter.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "simulator/time/virtualtime.h"

#include <QJsonArray>
#include <QJsonObject>

namespace test {

/// A port whose device answers when the test says so.
class FakePort : public bridge::SignalPort {
public:
    using Row = bridge::SignalRow;

    explicit FakePort(const QVector<Row>& rows = {{Row::Kind::Register, "LUMO_DO", "bit", true, 4},
                                                  {Row::Kind::Register, "LUMO_AO_1", "int16", true, 1},
                                                  {Row::Kind::Register, "LUMO_DI", "bit", false, 4},
                                                  {Row::Kind::Output, "DO1", "", false, 1}})
        : rows_(rows) {}

    QVector<Row> rows() const override { return rows_; }
    void start() override {}
    void write(const QVector<bridge::SignalWrite>& writes, int ticket) override {
        QStringList texts;
        for (const bridge::SignalWrite& write : writes) {
            texts << QString("%1#%2=%3").arg(write.name).arg(write.bias).arg(write.value);
        }
        written_ << texts.join(' ');
        tickets_ << ticket;
        if (answersAtOnce) {
            answer(true);
        }
    }
    /// Answers the oldest call.
    void answer(bool accepted) { emit written(tickets_.takeFirst(), accepted); }
    QStringList takeWritten() { return std::exchange(written_, {}); }

    bool answersAtOnce = true;

private:
    QVector<Row> rows_;
    QStringList written_;
    QList<int> tickets_;
};

/// A controller that does what the test says.
class FakeController : public bridge::Controller {
public:
    int axes() const override { return 6; }
    bridge::Abilities abilities() const override { return {true, true, true}; }
    bridge::SignalPort* signalPort() override { return &port; }
    void start() override {}
    void queue(const bridge::Motion& motion) override { calls << QString("queue %1").arg(motion.id); }
    void release() override {
        calls << "release";
        if (finishesInRelease) {
            emit finished(1, 0);
        }
    }
    void stop() override { calls << "stop"; }
    void reset() override { calls << "reset"; }
    void setPower(bool on) override { calls << (on ? "on" : "off"); }
    void setToolset(const bridge::Toolset& toolset) override { calls << "tool " + toolset.tool; }

    /// It can be reached, its drives are on.
    void comeUp() {
        emit powerChanged(true);
        emit modeChanged(bridge::Mode::Auto);
        emit postureChanged({{{0.5, 0, 0.4}, {}}, bridge::Joints(6)});
        emit linkChanged(true, {});
    }
    void tellPosture(double x) { emit postureChanged({{{x, 0, 0.4}, {}}, bridge::Joints(6)}); }
    void tell(int id, int code = 0) { emit finished(id, code); }
    void tellMoving(bool on) { emit movingChanged(on); }
    void tellPower(bool on) { emit powerChanged(on); }
    void tellLink(bool up, const bridge::LinkReason& reason = {}) { emit linkChanged(up, reason); }
    QStringList takeCalls() { return std::exchange(calls, {}); }

    FakePort port;
    QStringList calls;
    bool finishesInRelease = false;
};

/// A fake controller behind an adapter, and what reaches the robot service.
class Cell : public QObject {
public:
    explicit Cell(bool repair = true, FakePort* device = nullptr)
        : adapter(kordservice(), &controller, device, {true, repair}) {
        using mendo::ModuleObject;
        for (const char* command : {"move.j", "move.l", "move.c", "register.write", "register.write_multi"}) {
            connect(kordservice()->commandNode(command), &ModuleObject::changed, this,
                    [this, command](const QVariant& code) {
                        note(QString("%1 %2").arg(command, code.toString()));
                    });
        }
        for (const char* path : {"kord.r.state", "kord.r.power", "kord.r.mode"}) {
            connect(m(path), &ModuleObject::changed, this,
                    [this](const QVariant& value) { note(value.toString()); });
        }
        connect(kordservice()->dataNode("sys.posture"), &ModuleObject::changed, this, [this] {
            note(QString("at %1").arg(kordservice()->dataNode("sys.posture.trans")->c(0)->getDouble()));
        });
        connect(
            &adapter, &bridge::Adapter::rejected, this,
            [this](const QString& name, const QString& reason) { note("rejected " + name + ": " + reason); });
        connect(&adapter, &bridge::Adapter::violated, this,
                [this](bridge::Rule rule, int id) { violations << QString("%1:%2").arg(int(rule)).arg(id); });
        adapter.start();
        controller.comeUp();
        seen.clear();
        controller.calls.clear();
    }

    void order(const char* name, const QJsonObject& arguments = {}) {
        mendo::ModuleObject node("tmp");
        node.loadJson(this, arguments);
        kordservice()->command(this, name, &node);
    }
    void line(double x, double speed = 0.1) {
        order("move.l",
              {{"point", QJsonObject{{"trans", QJsonArray{x, 0, 0.4}}, {"rot", QJsonArray{0, 0, 0}}}},
               {"traj", QJsonObject{{"speed", speed}, {"zone", 0}}}});
    }
    void lines(int count) {
        for (int i = 0; i < count; ++i) {
            line(0.6);
        }
    }
    void write(const char* name, int bias, int value) {
        kordservice()->execCommand(this, "register.write",
                                   QVariantHash{{"name", name}, {"bias", bias}, {"value", value}});
    }
    void advance(int ms) { sim::VirtualTime::instance()->advance(ms); }
    QString take() { return std::exchange(seen, {}).join(", "); }

    FakeController controller;
    bridge::Adapter adapter;
    QStringList seen, violations;

private:
    void note(const QString& what) { seen << what; }
};

}  // namespace test
