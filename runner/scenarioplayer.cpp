#include "runner/scenarioplayer.h"

#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "runner/longtime.h"
#include "runner/pageoperator.h"
#include "runner/project.h"
#include "runner/treeoperator.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "workcell/safety/eventsource.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

#include <algorithm>
#include <limits>

namespace run {

namespace {

int number(const ScenarioEntry& entry, const char* key) {
    return entry.keys.value(QLatin1String(key)).toInt();
}

std::array<double, 3> triple(const QJsonValue& list) {
    const QJsonArray numbers = list.toArray();
    return {numbers[0].toDouble(), numbers[1].toDouble(), numbers[2].toDouble()};
}

sim::PoseMove poseMoveOf(const ScenarioEntry& entry) {
    sim::PoseMove move;
    move.trans = triple(entry.keys.value(QStringLiteral("trans")));
    if (entry.keys.contains(QStringLiteral("rot"))) {
        move.rot = triple(entry.keys.value(QStringLiteral("rot")));
    }
    return move;
}

QString reasonOf(sim::JogAnswer answer) {
    switch (answer) {
        case sim::JogAnswer::Moves:
            return {};
        case sim::JogAnswer::DriveOff:
            return QStringLiteral("the drives are off");
        case sim::JogAnswer::Moving:
            return QStringLiteral("the robot moves");
        case sim::JogAnswer::OutOfReach:
            return QStringLiteral("the arm does not reach there");
        case sim::JogAnswer::JointLimit:
            return QStringLiteral("a joint's limit is in the way");
        case sim::JogAnswer::TooFast:
            return QStringLiteral("a joint cannot turn that fast");
        case sim::JogAnswer::NotOffered:
            return QStringLiteral("the controller takes no jogs");
    }
    return {};
}

/// The problem of a file that cannot be loaded; nothing without one.
std::optional<Problem> noProject(const QString& path) {
    Problem problem;
    const std::optional<Project> project = Project::read(path, QFileInfo(path).fileName(), &problem);
    return project ? project->structureFault() : std::make_optional(problem);
}

QString noLine(int line, int count) {
    return line < count ? QString() : QStringLiteral("there is no line0 %1").arg(line);
}

}  // namespace

ScenarioPlayer::ScenarioPlayer(const Scenario& scenario, TreeOperator* tree, PageOperator* pages,
                               sim::Controller* controller, sim::Cell* cell, const QString& projectFolder,
                               QObject* parent)
    : QObject(parent),
      scenario_(scenario),
      tree_(tree),
      pages_(pages),
      controller_(controller),
      cell_(cell),
      projectFolder_(projectFolder),
      count_(qint64(scenario.entries().size())) {
    for (const ScenarioEntry& entry : scenario_.cued()) {
        waiting_.push_back({&entry, entry.cue->nth});
    }
}

ScenarioPlayer::~ScenarioPlayer() = default;

void ScenarioPlayer::follow(QObject* executor) {
    if (waiting_.empty()) {
        return;
    }
    follower_ = std::make_unique<workcell::TreeFollower>();
    events_ = std::make_unique<workcell::safety::EventSource>(follower_.get());
    events_->setExecutor(executor);
    connect(events_.get(), &workcell::safety::EventSource::happened, this, &ScenarioPlayer::onEvent);
}

bool ScenarioPlayer::operatesPages() const {
    const std::vector<Action> actions = {Action::Device, Action::Port, Action::Station, Action::Monitor,
                                         Action::Key};
    return std::any_of(actions.begin(), actions.end(),
                       [this](Action action) { return scenario_.has(action); });
}

qint64 ScenarioPlayer::calmMs() const {
    constexpr qint64 calm = 1000;
    return std::min(scenario_.lastMs(), std::numeric_limits<qint64>::max() - calm) + calm;
}

void ScenarioPlayer::start(qint64 rounds, qint64 everyMs) {
    startMs_ = mendo::Clock::current().elapsedMs();
    everyMs_ = everyMs;
    const qint64 most = std::numeric_limits<qint64>::max();
    count_ = count_ > 0 && rounds > most / count_ ? most : count_ * rounds;
    beginRound();
}

/// The timers of a round are armed together, so that entries come before what the package arms meanwhile for
/// the same time.
void ScenarioPlayer::beginRound() {
    const std::vector<ScenarioEntry>& entries = scenario_.entries();
    const qint64 first = begun_;
    begun_ += qint64(entries.size());
    for (std::size_t end = 1; end <= entries.size(); ++end) {
        if (end == entries.size() || entries[end].atMs != entries[end - 1].atMs) {
            callAfter(entries[end - 1].atMs, this, [this, due = first + qint64(end)] { makeDue(due); });
        }
    }
    if (begun_ < count_) {
        callAfter(everyMs_, this, [this] {
            if (count_ > 0) {  // the application has not quit
                beginRound();
            }
        });
    }
    emit roundBegun();
}

const ScenarioEntry& ScenarioPlayer::entryAt(qint64 number) const {
    return scenario_.entries()[std::size_t(number) % scenario_.entries().size()];
}

void ScenarioPlayer::makeDue(qint64 end) {
    if (count_ == 0) {
        return;  // the application has quit
    }
    due_ = end;
    drain();
}

/// An entry may run a whole program before it returns. The event loop inside it then applies the entries that
/// follow.
void ScenarioPlayer::drain() {
    while (next_ < due_) {
        const ScenarioEntry& entry = entryAt(next_++);
        if (next_ < due_) {
            QMetaObject::invokeMethod(
                this, [this] { drain(); }, Qt::QueuedConnection);
        }
        play(entry);
    }
}

void ScenarioPlayer::play(const ScenarioEntry& entry) {
    ++applying_;
    cueFirst(QStringLiteral("entry"), entry.number + 1);  // the entry behind it may wait for it
    const QString refusal = refusalOf(entry);
    emit applying(entry.text, !refusal.isEmpty());
    if (refusal.isEmpty()) {
        emit acting(entry);
        apply(entry);
        emit acted();
    } else {
        refuse(entry, refusal);
    }
    --applying_;
    emit applied();
}

/// By value: an entry that is applied here may cause more events before it returns.
void ScenarioPlayer::onEvent(const workcell::safety::Event& event) {
    const QString kind = workcell::safety::wordOf(event.kind);
    const QString name = event.text;
    const qint64 passedMs = startMs_ < 0 ? -1 : mendo::Clock::current().elapsedMs() - startMs_;
    for (Waiting& waiting : waiting_) {
        const Cue& cue = *waiting.entry->cue;
        const bool matches = cue.kind == kind && (cue.name.isEmpty() || cue.name == name);
        if (!quits_ && !waiting.isTold && matches && passedMs >= waiting.entry->atMs && waiting.left-- == 0) {
            this->cue(&waiting);
        }
    }
}

void ScenarioPlayer::cue(Waiting* waiting) {
    waiting->isTold = true;
    const ScenarioEntry& entry = *waiting->entry;
    if (!entry.cue->ms) {
        play(entry);
        return;
    }
    qint64 delayMs = *entry.cue->ms;
    const qint64 dueMs = events_ ? events_->waitDueMs() : -1;
    if (entry.cue->isDue && dueMs >= 0) {
        delayMs += dueMs - mendo::Clock::current().elapsedMs();
    }
    ++delayed_;
    QTimer::singleShot(int(std::max<qint64>(0, delayMs)), Qt::PreciseTimer, this, [this, &entry] {
        --delayed_;
        if (!quits_) {
            play(entry);
        }
    });
}

bool ScenarioPlayer::playEnd() {
    return cueFirst(QStringLiteral("end"), -1);
}

/// Cues the first entry of a kind that waits, with this place in the file unless that is negative.
bool ScenarioPlayer::cueFirst(const QString& kind, int number) {
    for (Waiting& waiting : waiting_) {
        const bool matches =
            waiting.entry->cue->kind == kind && (number < 0 || waiting.entry->number == number);
        if (matches && !waiting.isTold && !quits_) {
            cue(&waiting);
            return true;
        }
    }
    return false;
}

void ScenarioPlayer::refuse(const ScenarioEntry& entry, const QString& reason) {
    printWarning(QStringLiteral("scenario: refused at %1 ms: %2").arg(entry.atMs).arg(reason));
    if (entry.action != Action::Load) {
        return;
    }
    // As the page's Open button does, report the problem through the host's file service.
    if (const std::optional<Problem> problem = noProject(pathOf(entry))) {
        emit m()->fileProblem(
            {pathOf(entry), problem->place, {{mendo::FileProblem::Kind::OtherFault, {problem->reason}}}});
    }
}

void ScenarioPlayer::apply(const ScenarioEntry& entry) {
    const QJsonValue value = entry.keys.value(QStringLiteral("value"));
    const QString name = entry.keys.value(QStringLiteral("name")).toString();
    sim::Quirk quirk;
    switch (entry.action) {
        case Action::Power:
            controller_->setPower(value.toString() == QLatin1String("on"));
            break;
        case Action::Mode:
            controller_->setMode(value.toString());
            break;
        case Action::Input:
            controller_->setInput(name, value.toBool());
            break;
        case Action::Key:
            controller_->reportKey(name, value.toBool());
            break;
        case Action::Place:
            controller_->moveToPose(poseMoveOf(entry));
            break;
        case Action::Quit:
            quit();
            break;
        case Action::MotionError:
            controller_->failMotion(entry.keys.value(QStringLiteral("code")).toInt());
            break;
        case Action::Fault:
            cell_->setFault(name, value.toBool());
            break;
        case Action::Quirk:
            if (sim::Controller::quirkFromName(name, &quirk)) {
                controller_->setQuirk(quirk, value.toBool());
            }
            break;
        default:
            applyToHand(entry);
    }
}

/// Why an entry cannot be applied now; empty when it can.
QString ScenarioPlayer::refusalOf(const ScenarioEntry& entry) const {
    const int lines = TreeOperator::lineCount();
    switch (entry.action) {
        case Action::Place:
            return reasonOf(controller_->checkPoseMove(poseMoveOf(entry)));
        case Action::Insert:
            return noLine(number(entry, "line0"), lines + 1);
        case Action::Remove:
        case Action::Enable:
            return noLine(number(entry, "line0"), lines);
        case Action::Move:
            return noLine(std::max(number(entry, "line0"), number(entry, "to0")), lines);
        case Action::Load:
            return noProject(pathOf(entry)) ? QStringLiteral("there is no project to load") : QString();
        case Action::Port:
            return pages_->portFault(number(entry, "row"));
        case Action::Station:
            return pages_->stationFault(number(entry, "row"));
        default:
            return {};
    }
}

void ScenarioPlayer::applyToHand(const ScenarioEntry& entry) {
    const QJsonValue value = entry.keys.value(QStringLiteral("value"));
    const int line = number(entry, "line0");
    const QString path = entry.keys.value(QStringLiteral("path")).toString();
    switch (entry.action) {
        case Action::Start:
            if (entry.keys.value(QStringLiteral("station")).toBool()) {
                tree_->startStation(line);
            } else {
                tree_->start(line);
            }
            break;
        case Action::Once:
            tree_->once(line, entry.keys.value(QStringLiteral("sender")).toBool(true));
            break;
        case Action::Resume:
            tree_->resume();
            break;
        case Action::Pause:
            tree_->pause();
            break;
        case Action::Weld:
            tree_->setWeld(value.toBool());
            break;
        case Action::HandWeld:
            tree_->setHandWeld(value.toBool());
            break;
        case Action::Monitor:
            tree_->setMonitoring(value.toBool());
            break;
        case Action::Set:
            emit writing(path);
            tree_->set(path, value);
            break;
        case Action::Load:
            load(pathOf(entry));
            break;
        default:
            applyToProgram(entry);
    }
}

void ScenarioPlayer::applyToProgram(const ScenarioEntry& entry) {
    const int line = number(entry, "line0");
    switch (entry.action) {
        case Action::Insert:
            tree_->insertStatement(line, entry.keys.value(QStringLiteral("statement")).toObject());
            break;
        case Action::Remove:
            tree_->removeStatement(line);
            break;
        case Action::Move:
            tree_->moveStatement(line, number(entry, "to0"));
            break;
        case Action::Enable:
            tree_->enableStatement(line, entry.keys.value(QStringLiteral("value")).toBool());
            break;
        default:
            applyToPages(entry);
    }
}

void ScenarioPlayer::applyToPages(const ScenarioEntry& entry) {
    switch (entry.action) {
        case Action::Device:
            pages_->device(entry.keys);
            break;
        case Action::Port:
            pages_->port(number(entry, "row"), entry.keys.value(QStringLiteral("enable")).toBool());
            break;
        case Action::Station:
            pages_->station(number(entry, "row"), entry.keys.value(QStringLiteral("set")).toObject());
            break;
        default:
            break;
    }
}

void ScenarioPlayer::quit() {
    count_ = 0;
    next_ = due_;
    quits_ = true;
    pages_->dropActions();
    emit quitting();
}

QString ScenarioPlayer::pathOf(const ScenarioEntry& entry) const {
    return QDir(projectFolder_).absoluteFilePath(entry.keys.value(QStringLiteral("file")).toString());
}

void ScenarioPlayer::load(const QString& path) {
    tree_->loadProject(mendo::ModuleManager::readFromJson(path));
    if (TreeOperator::isIdle()) {
        tree_->resetResumeData();
    }
}

}  // namespace run
