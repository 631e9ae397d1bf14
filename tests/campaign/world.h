#pragma once

#include "campaign/campaign.h"
#include "executor/lumoexecutor.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "mendo/log.h"
#include "module/globals.h"
#include "panel/lumowidget.h"
#include "program/words.h"
#include "simulator/controller.h"
#include "simulator/time/virtualtime.h"
#include "support/ports.h"
#include "support/widgets.h"

#include <QJsonArray>
#include <QPixmapCache>
#include <QStackedWidget>

#include <private/qfont_p.h>

namespace campaign {

namespace key = prog::key;

/// The package on virtual time. Tree, executor and controller are made or filled anew for each schedule, so
/// that no schedule affects another.
class World : public QObject {
public:
    World() : time(*sim::VirtualTime::instance()) {
        mendo::LogHub::instance()->setConsole(false);
        QApplication::setQuitOnLastWindowClosed(false);
        QPixmapCache::setCacheLimit(0);  // otherwise Qt keeps a timer
        kord::ManagerHelper::instance()->module()->mobj()->set(this, "language", "en");
        setInstantiatedCenterWidget(&center_);
        { const LumoWidget page; }  // makes the tree and the executor, which outlive the page
        endExecutor();
        pristine_ = m(key::lumo)->exportToJson();
        time.settle();
    }
    ~World() override { setInstantiatedCenterWidget(nullptr); }

    /// Fills the tree for a scenario; executor and controller do not exist yet.
    void fill(const QJsonObject& scenario) {
        time.advance(1);  // VirtualTime limits the passes at one instant
        hand_or_signalbing = 0;
        m(key::lumo)->loadJson(this, pristine_);
        m(key::lumo)->set(this, "signalbind_program", QVariant(), true);
        for (int port = 0; port < portCount; ++port) {
            ModuleObject* const row = m(key::port)->c(port);
            row->set(this, prog::field::name, test::portNames[port]);
            row->set(this, prog::field::enable, port < GAS || scenario["disabled"] != nameOf(Port(port)));
        }
        m(key::program)->loadJson(this, scenario["program"].toArray());
        m(key::stationProgram)->loadJson(this, scenario["other"].toArray());
        m(key::param)->loadJson(this, scenario["sets"].toArray());
        m(key::executeDt)->setValue(this, scenario["dt"].toInt(20));
        m(key::weldSwitch)->setValue(this, !scenario["noWeld"].toBool());
        m(key::handWeldSwitch)->setValue(this, scenario["handWeld"].toBool());
        timersBefore_ = time.armedTimers(QFontCache::instance());
    }

    /// Makes the executor, then the controller, so that the executor's slots are called first.
    void make(const QJsonObject& scenario) {
        executor = new LumoExecutor(m(key::lumo));
        objectsBefore_ = objects();
        const sim::Controller::Options options{6, !scenario["noMulti"].toBool()};
        controller = std::make_unique<sim::Controller>(kordservice(), options);
        controller->setMode(scenario["manual"].toBool() ? "manual" : "auto");
    }

    /// Deletes the executor, if any; its destructor shuts everything down.
    void endExecutor() {
        delete executor;
        executor = nullptr;
    }

    /// Ends the schedule and returns the outputs that are still on and the objects and timers left.
    QStringList takeDown(bool quits) {
        QStringList left;
        for (const Port port : {GAS, WIRE, PULLBACK, LASER, POWER}) {
            if (controller->output(test::portNames[port]).toInt() != 0) {
                left << nameOf(port) + " is on at the controller";
            }
        }
        test::closeBoxes();
        time.settle();
        const int objectsMore = objects() - objectsBefore_;
        controller.reset();
        time.advance(quits ? 400 : 0);  // the longest delay of the controller's results, which outlive it
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

private:
    /// Number of widgets and of the executor's children.
    [[nodiscard]] int objects() const {
        return center_.findChildren<QObject*>().size() + QApplication::topLevelWidgets().size() +
               (executor ? executor->findChildren<QObject*>().size() : 0);
    }

    QStackedWidget center_;
    QJsonValue pristine_;  ///< the subtree as the package fills it
    int timersBefore_ = 0;
    int objectsBefore_ = 0;
};

/// Reports signals of the tree and the robot service as events, without the state. Slots are called in the
/// order of connecting: Sources made before the executor and the controller report before these react.
class Sources : public QObject {
public:
    explicit Sources(std::function<void(const Event&)> report) : report_(std::move(report)) {
        listen(key::executeState, State);
        listen(key::robotState, Robot);
        listen(key::robotMode, Permission);
        listen(key::weldSwitch, Permission);
        listen(key::handWeldSwitch, Permission);
        listen(key::currentLine, Line);
        listen(key::currentType, Statement);
        listen(key::weldOpen, WeldFlag);
        listen(key::curParam, Param);
        listen(key::currentPausePoint, Node);
        for (const char* command : {"move.j", "move.l", "move.c"}) {
            connect(kordservice()->commandNode(command), &ModuleObject::changed, this,
                    [=](const QVariant& code) {
                        report_({Result, command, code.toInt()});
                    });
        }
        connect(kordservice(), &KordService::issued, this, &Sources::onIssued);
        connect(mendo::LogHub::instance(), &mendo::LogHub::line, this,
                [this](const QString&, const QString& text) {
                    if (text.startsWith("enter zone!")) {
                        report_({Zone});
                    } else if (text.contains(" move result!")) {
                        report_({Dropped, text});
                    }
                });
    }

private:
    void listen(const QString& path, Kind kind) {
        const bool executorOnly = kind > State && kind <= Node;
        connect(m(path), &ModuleObject::changed, this,
                [=](const QVariant& value, const QVariant&, const QObject* sender) {
                    if (!executorOnly || sender == executor) {
                        report_({kind, value.toString(), value.toInt()});
                    }
                });
    }

    void onIssued(const KordCall& call) {
        if (call.name == prog::command::outDo && !call.sender) {  // a statement's output has no sender
            report_({Output, call.argument(prog::field::name).toString()});
        } else if (call.sender != executor) {
            return;
        } else if (call.name == prog::command::registerWriteMulti) {
            for (const ModuleObject* record : call.node->cmobjs()) {
                onRegister(*record);
            }
        } else if (call.name != prog::command::registerWrite) {
            report_({Command, call.name});
        } else if (call.node) {
            onRegister(*call.node);
        } else {
            report_({Output, call.argument(prog::field::name).toString()});
        }
    }

    void onRegister(const ModuleObject& record) {
        const QString name = record.c(prog::field::name)->getString();
        const QString bit = name + '.' + mIndex(record.c(prog::field::bias)->getInt());
        for (int port = 0; port < portCount; ++port) {
            if (test::portNames[port] == bit || test::portNames[port] == name) {
                report_({Write, nameOf(Port(port)), record.c(prog::field::value)->getInt(), port});
            }
        }
    }

    std::function<void(const Event&)> report_;
};

/// Records the events of a schedule with their state.
class Recorder {
public:
    std::vector<Event> events;

    /// Adds an event; false for an Activity without a change.
    bool record(Event event) {
        event.ms = nowMs();
        readState(event);
        if (event.kind == Activity && !hasChanged(event)) {
            return false;
        }
        events.push_back(event);
        return true;
    }

    static void readState(Event& event) {
        const bool automatic = m(key::robotMode)->getString() == prog::word::automatic;
        const bool mayWeld = automatic || m(key::handWeldSwitch)->getBool(false);
        const ModuleObject* const set = m(key::param)->c(m(key::curParam)->getInt(-1));
        event.idle = m(key::executeState)->getString() == prog::word::idle;
        event.powered = m(key::robotPower)->getString() == prog::word::on;
        event.robotIdle = m(key::robotState)->getString() == prog::word::idle;
        event.permitted = m(key::weldSwitch)->getBool(true) && mayWeld;
        event.gasUsed = portEnabled(DO_GAS);
        event.resumeLine = m(key::currentLine)->getInt(-1);
        event.weldOpen = m(key::weldOpen)->getBool(false);
        event.decreaseMs = std::max(0, set->c("decrease_time")->getInt(0));
        event.postFlowMs = std::max(0, set->c("delay_after_blow")->getInt(0));
        event.depth = executor ? executor->depth() : 0;
        event.pending = executor ? executor->pendingSteps() : 0;
        event.boxes = event.kind == Done ? test::boxes().size() : 0;
    }

    [[nodiscard]] qint64 nowMs() const { return mendo::Clock::current().elapsedMs() - startMs_; }

private:
    /// Whether depth, wait, or the presence of pending steps has changed.
    bool hasChanged(Event& event) {
        const QVariantMap wait = executor ? executor->waiting() : QVariantMap();
        const bool begins = wait != std::exchange(wait_, wait);
        const bool isDeeper = event.depth != std::exchange(depth_, event.depth);
        const bool isMore = (event.pending > 0) != std::exchange(isPending_, event.pending > 0);
        event.text = begins ? wait["kind"].toString() : QString();
        return begins || isDeeper || isMore;
    }

    qint64 startMs_ = mendo::Clock::current().elapsedMs();
    QVariantMap wait_;
    int depth_ = 0;
    bool isPending_ = false;
};

/// Runs one schedule until everything it started has ended. If the executor does not come to rest, `stuck`
/// gets the events and the process ends, because the next schedule would be affected.
std::vector<Event> runSchedule(World& world, const QJsonObject& scenario,
                               const std::function<void(const std::vector<Event>&)>& stuck);

}  // namespace campaign
