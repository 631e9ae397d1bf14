#include "campaign/performer.h"

#include <cstdlib>

namespace campaign {

namespace {

constexpr int tickMs = 37;  // out of step with the executor's polls
constexpr qint64 plannedLimitMs = 30000;
constexpr qint64 givingLimitMs = 300000;
constexpr int standingTicks = 20;

const QStringList givenInputs{"DI1", "DI2", "FIXTURE_DI.#0", "FIXTURE_DI.#1"};

/// Leads a schedule through its course: the planned actions; then the world gives what is still waited
/// for; then a pause and a loss of power, after which everything has to come to rest.
class Conductor : public QObject {
public:
    Conductor(World& world, Recorder& recorder, Performer& performer, const QJsonObject& scenario)
        : world_(world), recorder_(recorder), performer_(performer), scenario_(scenario) {
        connect(&tick_, &QTimer::timeout, this, &Conductor::tick);
        tick_.start(tickMs);
    }

    std::function<void(bool)> isOver;  ///< told whether all is at rest

private:
    enum class Course { Planned, Giving, Stopping };

    [[nodiscard]] bool atRest() const {
        Event event;
        Recorder::takeFacts(event);
        return event[Idle] && event[Depth] == 0 && event[Pending] == 0 && world_.controller->standsStill();
    }

    /// Results got lost, a motion takes hours, a wait has not yet reached its time, or nobody gives its
    /// input.
    [[nodiscard]] bool mayGoOn() const {
        const QVariantMap wait = executor->waiting();
        return performer_.mayLoseErrors || !world_.controller->standsStill() ||
               wait["due"].toLongLong() > world_.time.nowMs() ||
               (wait["kind"] == "input" && !givenInputs.contains(wait["detail"].toString()));
    }

    void enter(Course course) {
        course_ = course;
        sinceMs_ = recorder_.nowMs();
    }

    void tick() {
        checkWait();
        const qint64 passed = recorder_.nowMs() - sinceMs_;
        if (course_ == Course::Planned) {
            if (passed > plannedLimitMs || (passed > performer_.lastMs + 200 && atRest())) {
                performer_.stop();
                world_.controller->setPower(true);
                enter(Course::Giving);
            }
        } else if (course_ == Course::Giving) {
            if (atRest() || (passed > givingLimitMs && mayGoOn())) {
                stopAll();
            } else if (passed > givingLimitMs) {
                complain("the run does not end");
            } else {
                give();
            }
        } else if (course_ == Course::Stopping && passed > endMs_) {
            if (atRest() || passed > endMs_ + closingMs()) {
                tick_.stop();
                isOver(atRest());
            }
        }
    }

    /// Each input takes both states, long enough for the executor's poll.
    void give() {
        if (executor->waiting()["kind"] == "input" && ++gifts_ % 5 == 0) {
            for (const QString& input : givenInputs) {
                performer_.carryOut({{"do", "input"}, {"name", input}, {"on", gifts_ % 2 == 0}});
            }
        }
    }

    void stopAll() {
        performer_.stop();
        enter(Course::Stopping);
        // A pause may wait for its closing: not in the tick, which has to go on meanwhile.
        performer_.arm(0, [this] { performer_.carryOut({{"do", "pause"}}); });
        performer_.arm(endMs_, [this] {
            const bool ends = scenario_["endExecutor"].toBool() && executor->depth() == 0;
            performer_.carryOut({{"do", ends ? "endExecutor" : "power"}});
        });
    }

    /// The longest that a closing with these parameter sets can take, the dwell below it and the robot's
    /// braking included.
    [[nodiscard]] static qint64 closingMs() {
        qint64 longest = 0;
        for (const ModuleObject* set : m(lumo::key::param)->cmobjs()) {
            qint64 sum = 0;
            for (const char* time : {"stay_time", "decrease_time", "close_delay", "delay_after_blow",
                                     "move_wire_time", "give_wire_time"}) {
                sum += std::max(0, set->c(time)->getInt());
            }
            longest = std::max(longest, sum);
        }
        return longest + 1000;
    }

    /// A wait that is overdue, or for a robot that has nothing to do, will not end.
    void checkWait() {
        const QVariantMap wait = executor ? executor->waiting() : QVariantMap();
        const bool forRobot = wait["kind"] == "move" || wait["kind"] == "zone";
        standing_ = forRobot && world_.controller->standsStill() ? standing_ + 1 : 0;
        if (course_ == Course::Stopping) {
            return;
        }
        const qint64 due = wait.value("due", -1).toLongLong();
        if (due >= 0 && due + tickMs < world_.time.nowMs()) {
            complain("a wait is overdue: " + wait["kind"].toString());
        } else if (standing_ > standingTicks && performer_.mayLoseErrors) {
            stopAll();
        } else if (standing_ > standingTicks) {
            complain("a move is awaited, but the robot has nothing left to do");
        }
    }

    /// Says what is wrong and goes on with the end of the schedule.
    void complain(const QString& words) {
        recorder_.record({Complaint, words});
        stopAll();
    }

    World& world_;
    Recorder& recorder_;
    Performer& performer_;
    const QJsonObject scenario_;
    const int endMs_ = scenario_["endMs"].toInt();
    Course course_ = Course::Planned;
    qint64 sinceMs_ = 0;
    int gifts_ = 0;
    int standing_ = 0;  ///< ticks since the robot that is waited for has nothing to do
    QTimer tick_;
};

Recorder* complaints = nullptr;

/// Qt reports nothing but misuse.
void onQtMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    const bool isOffscreen = text.startsWith("This plugin does not support");
    if (type != QtDebugMsg && type != QtInfoMsg && !isOffscreen && complaints) {
        complaints->record({Complaint, "Qt reports: " + text});
    }
}

/// Then it runs in the application's own loop.
bool quits(const QJsonObject& scenario) {
    const QJsonArray actions = scenario["actions"].toArray();
    return std::any_of(actions.begin(), actions.end(),
                       [](const QJsonValue& action) { return action["do"] == "quit"; });
}

}  // namespace

std::vector<Event> runSchedule(World& world, const QJsonObject& scenario,
                               const std::function<void(const std::vector<Event>&)>& stuck) {
    world.fill(scenario);
    Recorder recorder;
    complaints = &recorder;
    qInstallMessageHandler(onQtMessage);
    Performer performer(world, recorder, scenario);
    const Sources first([&](const Event& event) {
        if (recorder.record(event)) {
            performer.notice(recorder.events.back(), true);
        }
    });
    world.make(scenario);
    const auto onActivity = [&] {
        if (recorder.record({Activity})) {
            performer.notice(recorder.events.back(), false);  // nobody comes after it
        }
    };
    QObject::connect(executor, &LumoExecutor::activityChanged, &performer, onActivity);
    QObject::connect(world.cell.get(), &sim::Cell::emittingChanged, &performer, [&recorder](bool on) {
        recorder.record({Emission, {}, on});
    });
    const Sources last([&performer](const Event& event) { performer.notice(event, false); });

    bool isOver = false;
    auto conductor = std::make_unique<Conductor>(world, recorder, performer, scenario);
    conductor->isOver = [&](bool atRest) {
        if (!atRest) {
            recorder.record({Complaint, "pause and power off did not bring the executor to rest"});
            stuck(recorder.events);
            std::_Exit(EXIT_FAILURE);
        }
        isOver = true;
        if (quits(scenario)) {
            QCoreApplication::exit();
        }
    };
    performer.begin();
    if (quits(scenario)) {
        QCoreApplication::exec();
    } else {
        world.time.advanceUntil([&isOver] { return isOver; }, 1000000);
    }
    conductor.reset();
    performer.stop();
    if (performer.quitMs >= 0 && recorder.nowMs() > performer.quitMs) {
        recorder.record({Complaint, "the application did not quit at once"});
    }
    recorder.record({End});
    for (const QString& words : world.takeDown(performer.quitMs >= 0)) {
        recorder.record({Complaint, words});
    }
    complaints = nullptr;
    return recorder.events;
}

}  // namespace campaign
