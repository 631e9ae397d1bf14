#include "runner/replay/replay.h"

#include "gantu/panel.h"
#include "kord/kordservice.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "runner/problem.h"
#include "workcell/commandline.h"
#include "workcell/workcell.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QJsonArray>
#include <QLibrary>

namespace run::replay {

using flight::RecordedRun;
using mendo::ModuleObject;

namespace {

constexpr int different = 1;
constexpr int badInput = 2;
/// On the wall clock a handler may be late, and everything behind it.
constexpr qint64 wallToleranceMs = 100;
constexpr int handsSinceFormat = 2;

QString secondsText(qint64 ms) {
    constexpr double msPerS = 1000.0;
    return QString::number(double(ms) / msPerS, 'f', 3) + QStringLiteral(" s");
}

QString describe(const RecordedRun& run) {
    const QString at =
        QDateTime::fromMSecsSinceEpoch(run.wallMs).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz"));
    const QString what = run.trigger == QLatin1String("once") ? QStringLiteral("step of line %1")
                                                              : QStringLiteral("from line %1");
    const QString by = run.mode == prog::runmode::byStation ? QStringLiteral(", station") : QString();
    const QString name = run.project.isEmpty() ? QStringLiteral("(no project)") : run.project;
    return QStringLiteral("%1  %2%3, %4: %5, %6")
        .arg(at, name, by, what.arg(run.line + 1), run.reason, secondsText(run.endMs - run.startMs));
}

}  // namespace

Replay::Replay(const Options& options) : options_(options) {
    stop_.setSingleShot(true);
    stop_.setTimerType(Qt::PreciseTimer);
    connect(&stop_, &QTimer::timeout, this, &Replay::finish);
}

int Replay::run() {
    if (!read()) {
        return badInput;
    }
    if (options_.replayList) {
        return list();
    }
    if (!choose() || !openPackage()) {
        return badInput;
    }
    QMetaObject::invokeMethod(
        this, [this] { begin(); }, Qt::QueuedConnection);
    mendo::ModuleManager::setOutermostLoop(1);
    QCoreApplication::exec();
    recorder_.reset();
    return status_;
}

bool Replay::read() {
    QString error;
    auto recording = flight::readRing(options_.replay, &error);
    if (!recording) {
        printError(QStringLiteral("--replay %1: %2").arg(options_.replayName, error));
        return false;
    }
    recording_ = std::move(*recording);
    runs_ = flight::runsOf(recording_);
    if (recording_.damaged > 0) {
        printWarning(
            QStringLiteral("%1: damaged in %2 places").arg(options_.replayName).arg(recording_.damaged));
    }
    return true;
}

int Replay::list() const {
    int number = 0;
    for (const RecordedRun& run : runs_) {
        const QString note = run.hasState ? QString() : QStringLiteral(" (its beginning is no longer here)");
        workcell::print(QStringLiteral("%1  %2%3\n").arg(++number, 3).arg(describe(run), note));
    }
    return 0;
}

bool Replay::choose() {
    const int count = int(runs_.size());
    const int wanted = options_.replayRun.value_or(count);
    QString reason;
    if (count == 0) {
        reason = QStringLiteral("holds no run");
    } else if (wanted > count) {
        reason = QStringLiteral("there is no run %1, there are %2").arg(wanted).arg(count);
    } else {
        last_ = std::size_t(wanted - 1);
        first_ = flight::firstOfChain(runs_, last_);
        auto state = flight::stateAt(recording_, runs_[first_]);
        if (state) {
            state_ = std::move(*state);
        } else {
            reason = QStringLiteral("the beginning of run %1 is no longer in the recording").arg(wanted);
        }
    }
    if (!reason.isEmpty()) {
        printError(QStringLiteral("--replay %1: %2").arg(options_.replayName, reason));
        return false;
    }
    toleranceMs_ = runs_[first_].isExact ? 1 : wallToleranceMs;
    script_ = scriptOf(recording_, runs_[first_], runs_[last_]);
    return true;
}

/// The package in a folder of its own: its settings are those of the recording.
bool Replay::openPackage() {
    mendo::LogHub::instance()->setConsole(false);
    QDir::setCurrent(folder_.path());
    workcell::setLanguage(runs_[first_].language);
    stack_.resize(1280, 800);
    stack_.setUpdatesEnabled(false);
    setInstantiatedCenterWidget(&stack_);
    messages_ = std::make_unique<MessageWatch>(0);
    restoreState(false);
    const QString file = gantu::findLibrary(prog::key::lumo);
    package_ = std::make_unique<gantu::Package>();
    QString error;
    QWidget* page = nullptr;
    if (package_->load(file, prog::key::lumo, &error)) {
        page = package_->page(workcell::WorkCell::firstPage());
        error = page ? QString() : QStringLiteral("the package has no page");
    }
    if (!error.isEmpty()) {
        printError(error);
        return false;
    }
    stack_.addWidget(page);
    runMode_ = reinterpret_cast<int*>(QLibrary(file).resolve("hand_or_signalbing"));
    return true;
}

/// Writes either the parts of the package, or those of robot and cell.
void Replay::restoreState(bool ofPackage) {
    for (const flight::SectionContent& section : state_) {
        const bool isPackage = section.name.startsWith(QLatin1String("lumo."));
        if (isPackage != ofPackage) {
            continue;
        }
        QJsonValue content = section.content;
        if (section.name == prog::key::execute) {
            QJsonObject execute = content.toObject();
            execute.remove(QStringLiteral("trigger"));
            content = execute;
        }
        const bool isData = section.name.startsWith(QLatin1String("data."));
        ModuleObject* const root = isData ? kordservice()->dataNode(QString()) : m()->root();
        const QString path = isData ? section.name.section(QLatin1Char('.'), 1) : section.name;
        if (root->r(path)->isNull()) {
            root->set(this, path, QVariant());
        }
        restore(root->r(path), content, this);
    }
    if (!ofPackage) {
        const QJsonArray offered =
            recording_.records[runs_[first_].first].object().value(QStringLiteral("commands")).toArray();
        for (const ModuleObject* command : kordservice()->commandNode(QString())->cmobjs()) {
            const QString name = command->name();
            kordservice()->offerCommand(name, offered.contains(name));
        }
    }
}

void Replay::begin() {
    restoreState(true);
    comparison_ = std::make_unique<Comparison>(&script_, toleranceMs_);
    cell_ = std::make_unique<RecordedCell>(&script_, comparison_.get(), runMode_);
    connect(comparison_.get(), &Comparison::differs, this, &Replay::finish);
    flight::Facts facts;
    facts.runMode = runMode_;
    recorder_ = std::make_unique<flight::Recorder>(comparison_.get(), facts);
    comparison_->begin();
    cell_->begin();
    const qint64 lengthMs = script_.stopMs - script_.startMs + toleranceMs_ + 2;
    stop_.start(int(std::min<qint64>(lengthMs, std::numeric_limits<int>::max())));
}

QString Replay::heading() const {
    const QString runs =
        first_ == last_
            ? QStringLiteral("run %1 of %2").arg(last_ + 1).arg(runs_.size())
            : QStringLiteral("runs %1 to %2 of %3").arg(first_ + 1).arg(last_ + 1).arg(runs_.size());
    const QString heading = QStringLiteral("%1: %2\n").arg(runs, describe(runs_[last_]));
    const QString version = runs_[last_].version;
    return version == QLatin1String(LUMO_VERSION)
               ? heading
               : heading +
                     QStringLiteral("recorded by version %1, repeated by " LUMO_VERSION "\n").arg(version);
}

/// Why the package may decide otherwise than then although it is the same.
QString Replay::notes() const {
    QString notes;
    if (runs_[last_].format > flight::recordingFormat) {
        notes += QStringLiteral("a newer version recorded it: what it tells in addition is not repeated\n");
    }
    if (script_.handCommands > 0 && runs_[first_].format < handsSinceFormat) {
        notes += QStringLiteral(
                     "not repeated: %1 commands of the device page; recordings of format 1 do not hold what "
                     "they changed\n")
                     .arg(script_.handCommands);
    }
    if (comparison_->difference() && flight::mayGoOnFromLost(runs_, first_)) {
        notes +=
            QStringLiteral("the run before it, from which it may go on, is no longer in the recording\n");
    }
    return notes;
}

QString Replay::resultText() const {
    const std::optional<Difference>& difference = comparison_->difference();
    if (!difference) {
        return QStringLiteral("equal: %1 commands and writes in %2, times within %3 ms\n")
            .arg(comparison_->matched())
            .arg(secondsText(script_.stopMs - script_.startMs))
            .arg(toleranceMs_);
    }
    const QString nothing = QStringLiteral("nothing");
    const QString recorded =
        difference->recorded.isEmpty()
            ? nothing
            : QStringLiteral("%1 at %2").arg(difference->recorded, secondsText(difference->recordedMs));
    return QStringLiteral(
               "different at %1, line %2, after %3 equal commands and writes\n"
               "  recorded: %4\n  now:      %5\n")
        .arg(secondsText(difference->ms))
        .arg(difference->line)
        .arg(comparison_->matched())
        .arg(recorded, difference->now.isEmpty() ? nothing : difference->now);
}

/// What the package does from here on is its quitting.
void Replay::finish() {
    if (isFinished_) {
        return;
    }
    isFinished_ = true;
    stop_.stop();
    comparison_->end();
    status_ = comparison_->difference() ? different : 0;
    if (!options_.quiet) {
        workcell::print(heading() + notes() + resultText());
    }
    QCoreApplication::exit(status_);
}

}  // namespace run::replay
