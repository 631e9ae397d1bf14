#pragma once

#include "campaign/event.h"
#include "executor/lumoexecutor.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "mendo/log.h"
#include "module/globals.h"
#include "module/host.h"
#include "module/keys.h"
#include "panel/lumowidget.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "simulator/virtualtime.h"
#include "support/ports.h"
#include "support/widgets.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QPixmapCache>
#include <QStackedWidget>

#include <private/qfont_p.h>

#include <functional>
#include <vector>

namespace campaign {

using lumo::key::currentLine;

/// The package in a process of its own on virtual time. For each schedule everything that could
/// remember an earlier one is filled or made anew: the tree, the executor, the controller, the cell.
class World : public QObject {
public:
    World() : time(*sim::VirtualTime::instance()) {
        mendo::LogHub::instance()->setConsole(false);
        QPixmapCache::setCacheLimit(0);  // it would keep a timer, which is no timer of ours
        kord::ManagerHelper::instance()->module()->mobj()->set(this, "language", "en");
        setInstantiatedCenterWidget(&center_);
        { const LumoWidget page; }  // fills the tree and makes the executor, which outlive it
        endExecutor();
        pristine_ = m(lumo::key::lumo)->exportToJson();
        time.settle();
    }
    ~World() override { setInstantiatedCenterWidget(nullptr); }

    /// The tree as the scenario wants it; no executor and no controller yet.
    void fill(const QJsonObject& scenario) {
        time.advance(1);  // an instant of its own: the passes of the event loop at one instant are counted
        hand_or_signalbing = 0;
        m(lumo::key::lumo)->loadJson(this, pristine_);
        m(lumo::key::lumo)->set(this, "signalbind_program", QVariant(), true);
        for (int port = 0; port < portCount; ++port) {
            ModuleObject* const row = m(lumo::key::port)->c(port);
            row->set(this, lumo::field::name, test::kPortNames[port]);
            row->set(this, lumo::field::enable, !scenario["disabled"].toArray().contains(nameOf(Port(port))));
        }
        m(lumo::key::program)->loadJson(this, scenario["program"].toArray());
        m(lumo::key::stationProgram)->loadJson(this, scenario["other"].toArray());
        m(lumo::key::param)->loadJson(this, scenario["sets"].toArray());
        m(lumo::key::executeDt)->setValue(this, scenario["dt"].toInt(20));
        m(lumo::key::weldSwitch)->setValue(this, !scenario["noWeld"].toBool());
        m(lumo::key::handWeldSwitch)->setValue(this, scenario["handWeld"].toBool());
        timersBefore_ = time.armedTimers(QFontCache::instance());
        objectsBefore_ = objects();
    }

    /// The executor, and behind it, so that it hears of everything first, the controller and its cell.
    void make(const QJsonObject& scenario) {
        executor = new LumoExecutor(m(lumo::key::lumo));
        objectsBefore_ += executor->findChildren<QObject*>().size();
        sim::Controller::Options options;
        options.axes = scenario["axes"].toInt(6);
        options.writeMulti = !scenario["noMulti"].toBool();
        controller = std::make_unique<sim::Controller>(kordservice(), options);
        if (scenario["manual"].toBool()) {
            controller->setMode("manual");
        }
        const auto& name = test::kPortNames;
        cell = std::make_unique<sim::Cell>(
            controller.get(),
            sim::Wiring{name[GAS], name[WIRE], name[PULLBACK], name[LASER], name[POWER], name[WIRE_SPEED]});
    }

    /// Deletes the executor, which shuts down what is under way; none is no error.
    void endExecutor() {
        delete executor;
        executor = nullptr;
    }

    /// Takes everything down and says what is left, or still on.
    QStringList takeDown(bool quits) {
        QStringList left;
        for (const Port port : {GAS, WIRE, PULLBACK, LASER, POWER}) {
            if (controller->output(test::kPortNames[port]).toInt() != 0) {
                left << nameOf(port) + " is on at the controller";
            }
        }
        test::closeBoxes();
        time.settle();
        const int objectsMore = objects() - objectsBefore_;
        cell.reset();
        controller.reset();
        time.advance(quits ? 400 : 0);  // the longest delay of the controller's answers, which outlive it
        const int timersMore = time.armedTimers(QFontCache::instance()) - timersBefore_;
        if (objectsMore > 0 || timersMore > 0) {
            left << QString("%1 objects and %2 timers are left").arg(objectsMore).arg(timersMore);
        }
        endExecutor();
        time.settle();
        return left;
    }

    sim::VirtualTime& time;
    std::unique_ptr<sim::Controller> controller;
    std::unique_ptr<sim::Cell> cell;

private:
    /// On the screen, and of the executor where there is one.
    [[nodiscard]] int objects() const {
        return center_.findChildren<QObject*>().size() + QApplication::topLevelWidgets().size() +
               (executor ? executor->findChildren<QObject*>().size() : 0);
    }

    QStackedWidget center_;
    QJsonValue pristine_;  ///< the subtree as the package fills it
    int timersBefore_ = 0;
    int objectsBefore_ = 0;
};

/// Runs one schedule from its beginning to the end of everything that it set going. When the executor cannot
/// be brought to rest there is no way back to a clean beginning: the events go to `stuck`, and the process
/// ends.
std::vector<Event> runSchedule(World& world, const QJsonObject& scenario,
                               const std::function<void(const std::vector<Event>&)>& stuck);

}  // namespace campaign
