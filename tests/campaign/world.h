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

/// The package in a process of its own on virtual time. For each schedule everything that could
/// remember an earlier one is filled or made anew: the tree, the executor, the controller.
class World : public QObject {
public:
    World() : time(*sim::VirtualTime::instance()) {
        mendo::LogHub::instance()->setConsole(false);
        QApplication::setQuitOnLastWindowClosed(false);
        QPixmapCache::setCacheLimit(0);  // it would keep a timer, which is no timer of ours
        kord::ManagerHelper::instance()->module()->mobj()->set(this, "language", "en");
        setInstantiatedCenterWidget(&center_);
        { const LumoWidget page; }  // fills the tree and makes the executor, which outlive it
        endExecutor();
        pristine_ = m(key::lumo)->exportToJson();
        time.settle();
    }
    ~World() override { setInstantiatedCenterWidget(nullptr); }

    /// The tree as the scenario wants it; no executor and no controller yet.
    void fill(const QJsonObject& scenario) {
        time.advance(1);  // an instant of its own: the passes of the event loop at one instant are counted
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

    /// The executor, and behind it, so that it hears of everything first, the controller.
    void make(const QJsonObject& scenario) {
        executor = new LumoExecutor(m(key::lumo));
        objectsBefore_ = objects();
        const sim::Controller::Options options{6, !scenario["noMulti"].toBool()};
        controller = std::make_unique<sim::Controller>(kordservice(), options);
        controller->setMode(scenario["manual"].toBool() ? "manual" : "auto");
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
            if (controller->output(test::portNames[port]).toInt() != 0) {
                left << nameOf(port) + " is on at the controller";
            }
        }
        test::closeBoxes();
        time.settle();
        const int objectsMore = objects() - objectsBefore_;
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

/// Turns what the tree and the robot service announce into events (without the facts). Listeners are called
/// in the order in which they connected, so who wants to hear of a write before the executor or the
/// controller does makes its sources before them.
class Sources : public QObject {
public:
    explicit Sources(std::function<void(const Event&)> heard) : heard_(std::move(heard)) {
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
                        heard_({Result, command, code.toInt()});
                    });
        }
        connect(kordservice(), &KordService::issued, this, &Sources::onIssued);
        connect(mendo::LogHub::instance(), &mendo::LogHub::line, this,
                [this](const QString&, const QString& text) {
                    if (text.startsWith("enter zone!")) {
                        heard_({Zone});
                    } else if (text.contains(" move result!")) {
                        heard_({Dropped, text});
                    }
                });
    }

private:
    void listen(const QString& path, Kind kind) {
        const bool executorOnly = kind > State && kind <= Node;
        connect(m(path), &ModuleObject::changed, this,
                [=](const QVariant& value, const QVariant&, const QObject* sender) {
                    if (!executorOnly || sender == executor) {
                        heard_({kind, value.toString(), value.toInt()});
                    }
                });
    }

    void onIssued(const KordCall& call) {
        if (call.name == prog::command::outDo && !call.sender) {  // a statement's output has no sender
            heard_({Output, call.argument(prog::field::name).toString()});
        } else if (call.sender != executor) {
            return;
        } else if (call.name == prog::command::registerWriteMulti) {
            for (const ModuleObject* record : call.node->cmobjs()) {
                onRegister(*record);
            }
        } else if (call.name != prog::command::registerWrite) {
            heard_({Command, call.name});
        } else if (call.node) {
            onRegister(*call.node);
        } else {
            heard_({Output, call.argument(prog::field::name).toString()});
        }
    }

    void onRegister(const ModuleObject& record) {
        const QString name = record.c(prog::field::name)->getString();
        const QString bit = name + '.' + mIndex(record.c(prog::field::bias)->getInt());
        for (int port = 0; port < portCount; ++port) {
            if (test::portNames[port] == bit || test::portNames[port] == name) {
                heard_({Write, nameOf(Port(port)), record.c(prog::field::value)->getInt(), port});
            }
        }
    }

    std::function<void(const Event&)> heard_;
};

/// Keeps what happens in a schedule, with the facts.
class Recorder {
public:
    std::vector<Event> events;

    /// Whether the event was kept: it says something new.
    bool record(Event event) {
        event.ms = nowMs();
        takeFacts(event);
        if (event.kind == Activity && !isNews(event)) {
            return false;
        }
        events.push_back(event);
        return true;
    }

    static void takeFacts(Event& event) {
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
    /// An activity counts when the depth, the wait or whether something is pending has changed.
    bool isNews(Event& event) {
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

/// Runs one schedule from its beginning to the end of everything that it set going. When the executor cannot
/// be brought to rest there is no way back to a clean beginning: the events go to `stuck`, and the process
/// ends.
std::vector<Event> runSchedule(World& world, const QJsonObject& scenario,
                               const std::function<void(const std::vector<Event>&)>& stuck);

}  // namespace campaign
