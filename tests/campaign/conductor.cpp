#include "campaign/conductor.h"

#include "binding/signalsbindwidget.h"
#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "module/keys.h"

#include <QCoreApplication>

#include <algorithm>

namespace campaign {

namespace {

constexpr int tickMs = 37;  // out of step with the executor's polls
constexpr qint64 plannedLimitMs = 30000;
constexpr qint64 givingLimitMs = 300000;
constexpr qint64 listeningLimitMs = 20000;  ///< stations may ask for their projects for ever
constexpr int standingTicks = 20;

}  // namespace

Conductor::Conductor(World& world, Recorder& recorder, Performer& performer, const Scenario& scenario)
    : world_(world), recorder_(recorder), performer_(performer), scenario_(scenario) {
    connect(&tick_, &QTimer::timeout, this, &Conductor::tick);
}

void Conductor::begin() {
    performer_.arm();
    tick_.start(tickMs);
}

bool Conductor::atRest() const {
    const Facts facts = Recorder::facts();
    const bool nothingWaits =
        !world_.panel.stations() || !world_.panel.isListening() || world_.panel.stations()->queued() == 0;
    return facts.idle && facts.depth == 0 && facts.pending == 0 && nothingWaits &&
           world_.controller->standsStill();
}

void Conductor::enter(Course course) {
    course_ = course;
    if (course == Course::Over && scenario_.quits()) {
        QCoreApplication::exit();
    }
    sinceMs_ = recorder_.nowMs();
}

void Conductor::tick() {
    checkWait();
    const qint64 now = recorder_.nowMs();
    switch (course_) {
        case Course::Planned:
            if (now > plannedLimitMs || (now > performer_.lastMs() + 200 && atRest())) {
                performer_.stop();
                world_.controller->setPower(true);
                releaseStations();
                enter(Course::Giving);
            }
            break;
        case Course::Giving:
            if (atRest() || takesDays()) {
                stopAll();
            } else if (now > sinceMs_ + givingLimitMs) {
                if (isHopeless()) {
                    stopAll();
                } else {
                    complain(QStringLiteral("the run does not end"));
                }
            } else {
                if (now > sinceMs_ + listeningLimitMs) {
                    world_.panel.stopListening();
                }
                give();
            }
            break;
        case Course::Stopping:
            if (now > sinceMs_ + scenario_.endMs && atRest()) {
                end();
            } else if (now > sinceMs_ + scenario_.endMs && takesDays()) {
                // A closing that began without power, from an answer: another loss of power ends it.
                performer_.setPower(true);
                performer_.setPower(false);
            } else if (now > sinceMs_ + scenario_.endMs && world_.panel.isListening()) {
                // Signals that stay trigger their stations for ever.
                world_.panel.stopListening();
            } else if (now > sinceMs_ + scenario_.endMs + closingMs()) {
                tick_.stop();
                stuck_(QStringLiteral("pause and power off did not bring the executor to rest"));
            }
            break;
        case Course::Over:
            break;
    }
}

/// What is still open is answered when everything is over, and whatever that does is over too.
void Conductor::end() {
    if (PageWorld::dialogs() > 0 && !answered_) {
        answered_ = true;
        performer_.replyToAll();
        enter(Course::Stopping);
        return;
    }
    tick_.stop();
    enter(Course::Over);
}

/// Nobody waits for the end of what a file of odd values asks for.
bool Conductor::takesDays() const {
    const Facts facts = Recorder::facts();
    const bool onlyCloses = facts.idle && facts.depth == 0 && facts.pending > 0;
    return executor->waiting().value(QStringLiteral("due")).toLongLong() >
               world_.time.nowMs() + givingLimitMs ||
           (onlyCloses && closingMs() > givingLimitMs);
}

/// What is awaited cannot come: an input that the cell does not have, a result that got lost, the end of
/// days, or of a motion of hours.
bool Conductor::isHopeless() const {
    const QVariantMap wait = executor->waiting();
    static const QStringList given{QStringLiteral("DI1"), QStringLiteral("DI2"),
                                   QStringLiteral("FIXTURE_DI.#0"), QStringLiteral("FIXTURE_DI.#1")};
    const bool forInput = wait.value(QStringLiteral("kind")).toString() == QLatin1String("input");
    return performer_.mayLoseErrors() || !world_.controller->standsStill() || closingMs() > givingLimitMs ||
           wait.value(QStringLiteral("due")).toLongLong() > world_.time.nowMs() ||
           (forInput && !given.contains(wait.value(QStringLiteral("detail")).toString()));
}

/// A stop input that is held pauses again and again.
void Conductor::releaseStations() {
    for (int input = 3; world_.panel.isListening() && input <= 14; ++input) {
        performer_.setInput(QStringLiteral("DI%1").arg(input), false);
    }
}

/// Each input takes both states, long enough for the executor's poll.
void Conductor::give() {
    if (executor->waiting().value(QStringLiteral("kind")).toString() != QLatin1String("input") ||
        ++gifts_ % 5 != 0) {
        return;
    }
    for (const char* input : {"DI1", "DI2", "FIXTURE_DI.#0", "FIXTURE_DI.#1"}) {
        performer_.setInput(QString::fromLatin1(input), gifts_ % 2 == 0);
    }
}

void Conductor::stopAll() {
    enter(Course::Stopping);
    // A pause may wait for its closing: not in the tick, which has to go on meanwhile.
    QTimer::singleShot(0, Qt::PreciseTimer, this, [this] { performer_.pause(); });
    QTimer::singleShot(scenario_.endMs, Qt::PreciseTimer, this, [this] {
        if (scenario_.endExecutor && executor->depth() == 0) {
            performer_.endExecutor();
        } else {
            performer_.setPower(false);
        }
    });
}

/// The longest that a closing with these parameter sets can take, the dwell below it and the robot's
/// braking included.
qint64 Conductor::closingMs() const {
    qint64 longest = 0;
    for (const ModuleObject* set : m(lumo::key::param)->cmobjs()) {
        qint64 sum = 1000;
        for (const char* time : {"stay_time", "decrease_time", "close_delay", "delay_after_blow",
                                 "move_wire_time", "give_wire_time"}) {
            sum += std::max(0, set->c(QString::fromLatin1(time))->getInt());
        }
        longest = std::max(longest, sum);
    }
    return std::max<qint64>(longest, 1000);
}

/// A wait that is overdue, or for a robot that has nothing to do, will not end.
void Conductor::checkWait() {
    const QVariantMap wait = executor ? executor->waiting() : QVariantMap();
    const qint64 due = wait.value(QStringLiteral("due"), -1).toLongLong();
    const QString kind = wait.value(QStringLiteral("kind")).toString();
    const bool forRobot = kind == QLatin1String("move") || kind == QLatin1String("zone");
    standing_ = forRobot && world_.controller->standsStill() ? standing_ + 1 : 0;
    if (course_ != Course::Planned && course_ != Course::Giving) {
        return;
    }
    if (due >= 0 && due + tickMs < world_.time.nowMs()) {
        complain(QStringLiteral("the wait \"%1\" is overdue").arg(kind));
    } else if (standing_ > standingTicks && performer_.mayLoseErrors()) {
        performer_.stop();
        stopAll();
    } else if (standing_ > standingTicks) {
        complain(QStringLiteral("a move is awaited, but the robot has nothing left to do"));
    }
}

/// Says what is wrong and goes on with the end of the schedule.
void Conductor::complain(const QString& words) {
    Event event;
    event.kind = Event::Kind::Complaint;
    event.text = words;
    recorder_.record(event);
    performer_.stop();
    stopAll();
}

}  // namespace campaign
