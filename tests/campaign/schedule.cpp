#include "campaign/world.h"

#include <QTimer>

#include <cstdlib>

namespace campaign {

namespace {

constexpr int tickMs = 37;  // not a multiple of the executor's poll interval
constexpr qint64 plannedLimitMs = 30000;
constexpr qint64 supplyingLimitMs = 300000;
constexpr qint64 closingLimitMs = 5000;  // more than the longest drawn times

/// Carries out the actions of a scenario at their times. Then it switches the inputs that the run waits for;
/// then it pauses and takes the power away, after which everything has to come to rest.
///
/// An action is an object; "do" names it. Its time: with "of", the `nth` event of that kind and of `text`:
/// inside that event, or with "ms" that much later (with "due" relative to the end of the wait that begins
/// there). With "after", `ms` after the previous action. Otherwise `ms` after the beginning.
class Schedule : public QObject {
public:
    qint64 quitMs = -1;  ///< when the application was asked to quit, -1 for never

    Schedule(World& world, Recorder& recorder, const QJsonObject& scenario)
        : world_(world), recorder_(recorder), scenario_(scenario) {
        for (const QJsonValue value : scenario["actions"].toArray()) {
            const QJsonObject action = value.toObject();
            planned_.push_back({action, action["nth"].toInt()});
            if (!action.contains("of") && !action["after"].toBool()) {
                later(planned_.size() - 1, action["ms"].toInt());
            }
        }
        connect(&tick_, &QTimer::timeout, this, &Schedule::tick);
        tick_.start(tickMs);
    }

    std::function<void(bool)> ended;  ///< called at the end; the argument says whether all is at rest

    /// Drops the remaining actions.
    void stop() {
        tick_.stop();
        planned_.clear();
        timers_ = std::make_unique<QObject>();
    }

    /// Carries out the actions tied to an event. By value, because recording more events invalidates
    /// references.
    void notice(Event event) {
        for (int i = 0; i < planned_.size(); ++i) {
            const QJsonObject action = planned_[i].action;
            const QString text = action["text"].toString();
            const bool matches = action["of"] == nameOf(event.kind) && (text.isEmpty() || text == event.text);
            if (planned_[i].done || !matches || planned_[i].left-- != 0) {
                continue;
            }
            const qint64 due = executor ? executor->waiting()["due"].toLongLong() : -1;
            if (action.contains("ms")) {
                const bool aroundDue = action["due"].toBool() && due >= 0;
                later(i, action["ms"].toInt() + (aroundDue ? due - world_.time.nowMs() : 0));
            } else {
                perform(i);
            }
        }
    }

private:
    enum class Course { Planned, Supplying, Stopping };

    struct Planned {
        QJsonObject action;
        int left;  ///< matching events still to come before it
        bool done = false;
    };

    void arm(qint64 ms, const std::function<void()>& expired) {
        auto* const timer = new QTimer(timers_.get());
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        connect(timer, &QTimer::timeout, this, expired);
        timer->start(int(std::max<qint64>(0, ms)));
    }

    void later(int index, qint64 ms) {
        lastMs_ = std::max(lastMs_, recorder_.nowMs() + ms);
        arm(ms, [this, index] { perform(index); });
    }

    void perform(int index) {
        if (index >= planned_.size() || std::exchange(planned_[index].done, true)) {
            return;
        }
        if (index + 1 < planned_.size() && planned_[index + 1].action["after"].toBool()) {
            later(index + 1, planned_[index + 1].action["ms"].toInt());
        }
        const QJsonObject action = planned_[index].action;  // a copy: planned_ may be cleared meanwhile
        carryOut(action);
    }

    /// Records the beginning of an action, carries it out, and records its return.
    void act(Event event, const std::function<void()>& action) {
        event.action = ++acts_;
        recorder_.record(event);
        action();
        recorder_.record({Done, {}, 0, -1, event.action});
    }

    void carryOut(const QJsonObject& action) {
        const QString kind = action["do"].toString();
        const QString name = action["name"].toString();
        const int line = action["line"].toInt();
        const int value = action["value"].toInt();
        const bool on = action["on"].toBool();
        auto& controller = *world_.controller;
        if (kind == "start" || kind == "once") {
            start(kind == "once", line, action["mode"].toInt(), on);
        } else if (kind == "resume") {
            start(false, m(key::currentLine)->getInt(0), 0, on);
        } else if (kind == "pause") {
            act({Pause}, [] { m(key::triggerPause)->trigger(); });
        } else if (kind == "power") {
            act({Power, {}, on}, [&] { controller.setPower(on); });
        } else if (kind == "endExecutor") {
            act({Power, kind}, [&] { world_.endExecutor(); });  // shuts down like a loss of power
        } else if (kind == "quit") {
            quitMs = recorder_.nowMs();
            act({Quit}, [] { QCoreApplication::quit(); });
        } else if (kind == "quirk") {
            sim::Quirk quirk = sim::Quirk::Bunch;
            sim::Controller::quirkFromName(name, &quirk);
            act({Act, name, on}, [&] { controller.setQuirk(quirk, on); });
        } else if (kind == "replace") {
            const auto& program = on ? key::program : key::stationProgram;
            act({on ? Replace : Act, kind},
                [&] { m(program)->loadJson(this, scenario_["other"].toArray()); });
        } else if (kind == "param") {
            ModuleObject* const set = m(key::param)->c(action["mode"].toInt());
            act({Act, name, value}, [&] { set->set(this, name, value, true); });
        } else if (kind == "fail") {
            act({Act, kind}, [&] { controller.failMotion(-3); });
        } else if (kind == "input") {
            act({Act, kind + ' ' + name, on}, [&] { controller.setInput(name, on); });
        } else if (kind == "mode") {
            act({Act, kind, on}, [&] { controller.setMode(on ? "auto" : "manual"); });
        } else if (kind == "switch") {
            act({Act, name, on}, [&] { m(key::lumo)->c("allWeldBtnstatus")->set(this, name, on); });
        } else {
            recorder_.record({Complaint, "no action is called " + kind});
        }
    }

    void start(bool once, int line, int mode, bool withSender) {
        const bool ofStation = mode == 1 && !once;
        if (ofStation) {
            carryOut({{"do", "replace"}});  // a station loads its program
        }
        const auto& source = ofStation ? key::stationProgram : key::program;
        const QJsonArray program = m(source)->exportToJson().toArray();
        const auto typeAt = [&](int at) { return program.at(at).toObject()["type"].toString(); };
        Event event{once ? Once : Start, {}, line};
        event.mode = once ? 2 : mode;
        event.lineCount = program.size();
        event.mayBeRefused = once && withSender && !typeAt(line).startsWith("move");
        for (int i = std::max(0, line); i < (once ? line + 1 : program.size()); ++i) {
            event.mayBeRefused |= typeAt(i) == "moveCC";  // an impossible circle
        }
        act(event, [&] {
            hand_or_signalbing = event.mode;
            m(once ? key::triggerOnce : key::triggerStart)
                ->setValue(once && !withSender ? nullptr : this, line);
        });
    }

    [[nodiscard]] bool atRest() const {
        Event event;
        Recorder::readState(event);
        return event.idle && event.depth == 0 && event.pending == 0 && world_.controller->standsStill();
    }

    void tick() {
        const qint64 passed = recorder_.nowMs() - sinceMs_;
        if (course_ == Course::Planned) {
            if (passed > plannedLimitMs || (passed > lastMs_ + 200 && atRest())) {
                enter(Course::Supplying);
                world_.controller->setPower(true);
            }
        } else if (course_ == Course::Supplying) {
            if (passed > supplyingLimitMs) {
                recorder_.record({Complaint, "the run does not end"});
            }
            if (atRest() || passed > supplyingLimitMs) {
                stopAll();
            } else if (executor->waiting()["kind"] == "input" && ++switchings_ % 5 == 0) {
                // Both states of each input, long enough for the executor's poll.
                for (const char* input : {"DI1", "DI2", "FIXTURE_DI.#0", "FIXTURE_DI.#1"}) {
                    carryOut({{"do", "input"}, {"name", input}, {"on", switchings_ % 2 == 0}});
                }
            }
        } else if (passed > endMs_ && (atRest() || passed > endMs_ + closingLimitMs)) {
            stop();
            ended(atRest());
        }
    }

    void enter(Course course) {
        course_ = course;
        sinceMs_ = recorder_.nowMs();
        stop();
        tick_.start(tickMs);
    }

    void stopAll() {
        enter(Course::Stopping);
        // Not inside tick(), because a pause may wait for its closing.
        arm(0, [this] { carryOut({{"do", "pause"}}); });
        arm(endMs_, [this] {
            const bool ends = scenario_["endExecutor"].toBool() && executor->depth() == 0;
            carryOut({{"do", ends ? "endExecutor" : "power"}});
        });
    }

    World& world_;
    Recorder& recorder_;
    const QJsonObject scenario_;
    const int endMs_ = scenario_["endMs"].toInt();
    QVector<Planned> planned_;
    std::unique_ptr<QObject> timers_ = std::make_unique<QObject>();
    QTimer tick_;
    Course course_ = Course::Planned;
    qint64 sinceMs_ = 0;
    qint64 lastMs_ = 0;  // time of the last scheduled action
    int acts_ = 0;
    int switchings_ = 0;
};

Recorder* complaints = nullptr;

/// A warning of Qt means misuse.
void onQtMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    const bool isOffscreen = text.startsWith("This plugin does not support");
    if (type != QtDebugMsg && type != QtInfoMsg && !isOffscreen && complaints) {
        complaints->record({Complaint, "Qt reports: " + text});
    }
}

}  // namespace

std::vector<Event> runSchedule(World& world, const QJsonObject& scenario,
                               const std::function<void(const std::vector<Event>&)>& stuck) {
    world.fill(scenario);
    Recorder recorder;
    complaints = &recorder;
    qInstallMessageHandler(onQtMessage);
    const Sources first([&](const Event& event) { recorder.record(event); });
    world.make(scenario);
    Schedule schedule(world, recorder, scenario);
    QObject::connect(executor, &LumoExecutor::activityChanged, &schedule, [&] {
        if (recorder.record({Activity})) {
            schedule.notice(recorder.events.back());
        }
    });
    const Sources last([&](const Event& event) { schedule.notice(event); });
    schedule.ended = [&](bool atRest) {
        if (!atRest) {
            recorder.record({Complaint, "pause and power off did not bring the executor to rest"});
            stuck(recorder.events);
            std::_Exit(EXIT_FAILURE);
        }
        QCoreApplication::exit();
    };
    QCoreApplication::exec();
    const qint64 quitMs = schedule.quitMs;
    if (quitMs >= 0 && recorder.nowMs() > quitMs) {
        recorder.record({Complaint, "the application did not quit at once"});
    }
    recorder.record({End});
    schedule.stop();
    for (const QString& words : world.takeDown(quitMs >= 0)) {
        recorder.record({Complaint, words});
    }
    complaints = nullptr;
    return recorder.events;
}

}  // namespace campaign
