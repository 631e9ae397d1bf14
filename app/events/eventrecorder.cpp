#include "app/events/eventrecorder.h"

#include "app/fileproblem.h"
#include "app/link/linktext.h"
#include "app/link/linkwatch.h"
#include "app/results/resulttext.h"
#include "app/status/statuswatcher.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"
#include "workcell/runningproject.h"
#include "workcell/runwatch.h"

#include <QDir>
#include <QFileInfo>

namespace app {

using Kind = Event::Kind;
using Origin = Event::Origin;

namespace {

Origin originOf(const workcell::PackageFlags& package, bool isStep) {
    if (isStep) {
        return Origin::Step;
    }
    return package.mode() == prog::runmode::byStation ? Origin::Station : Origin::Hand;
}

/// A package may have no such signal.
void connectByName(const QObject* from, const char* signal, const QObject* to, const char* slot) {
    if (from->metaObject()->indexOfSignal(signal + 1) >= 0) {  // the macro's text begins with a digit
        QObject::connect(from, signal, to, slot);
    }
}

}  // namespace

EventRecorder::EventRecorder(EventStore* store, QObject* parent) : QObject(parent), store_(store) {
    note(Kind::Panel, QStringLiteral("begun"), QStringLiteral(LUMO_VERSION));
    connect(m(), &mendo::ModuleManager::fileProblem, this, &EventRecorder::onFileProblem);
}

EventRecorder::~EventRecorder() {
    note(Kind::Panel, QStringLiteral("ended"));
}

void EventRecorder::follow(const Sources& sources) {
    sources_ = sources;
    connect(sources.runs, &workcell::RunWatch::begun, this, &EventRecorder::onBegun);
    connect(sources.runs, &workcell::RunWatch::ended, this, &EventRecorder::onEnded);
    connect(sources.controller, &sim::Controller::result, this,
            [this](const QString&, int, int code) { onResult(code); });
    connect(sources.controller, &sim::Controller::emergencyStopChanged, this,
            &EventRecorder::onEmergencyStop);
    connect(sources.status, &StatusWatcher::refreshed, this, &EventRecorder::onStatus);
    followProjects();
    followLinks();
}

/// The parts of page and editor that open and save projects.
void EventRecorder::followProjects() {
    QObjectList parts = sources_.page->children();
    if (const auto* editor = sources_.page->findChild<QWidget*>(QStringLiteral("ProgramWidget"))) {
        parts += editor->children();
    }
    for (const QObject* part : parts) {
        connectByName(part, SIGNAL(projectSaved()), this, SLOT(onSaved()));
        connectByName(part, SIGNAL(saved()), this, SLOT(onSaved()));
        connectByName(part, SIGNAL(projectLoaded()), this, SLOT(onLoaded()));
    }
}

/// Reasons in the language of their time.
void EventRecorder::followLinks() {
    connect(sources_.links, &LinkWatch::lost, this, [this](const LinkFacts& link) {
        note(Kind::Fault, QStringLiteral("link_lost"),
             link.name + QStringLiteral(": ") + reasonText(link.lostFor));
    });
    connect(sources_.links, &LinkWatch::regained, this,
            [this](const LinkFacts& link) { note(Kind::Fault, QStringLiteral("link_back"), link.name); });
    connect(sources_.links, &LinkWatch::broke, this,
            [this](bridge::Rule rule) { note(Kind::Error, QStringLiteral("rule"), ruleWord(rule)); });
}

QString EventRecorder::projectName() const {
    if (!sources_.project) {
        return {};
    }
    const bool isOpen = sources_.package.hasProject() || sources_.project->station() >= 0;
    return isOpen ? QFileInfo(sources_.project->name()).completeBaseName() : QString();
}

int EventRecorder::lineNow() const {
    return m(run_.origin == Origin::Step ? prog::key::executeLine : prog::key::currentLine)->getInt();
}

void EventRecorder::add(Event event) {
    event.at = mendo::Clock::current().now();
    store_->add(event);
}

void EventRecorder::note(Kind kind, const QString& detail, const QString& argument) {
    Event event;
    event.kind = kind;
    event.project = kind == Kind::Role || kind == Kind::Panel ? QString() : projectName();
    event.detail = detail;
    event.argument = argument;
    add(event);
}

void EventRecorder::onBegun() {
    const bool isStep = sources_.runs->isStep();
    run_ = Event();
    run_.origin = originOf(sources_.package, isStep);
    run_.project = projectName();
    run_.line = m(isStep ? prog::key::triggerOnce : prog::key::triggerStart)->getInt();
    begunMs_ = mendo::Clock::current().elapsedMs();
    failedCode_ = 0;
    add(run_);
}

void EventRecorder::onEnded() {
    Event end = run_;
    const QString reason = sources_.runs->reason();
    end.line = lineNow();
    end.detail = QStringLiteral("time");
    end.argument = QString::number(mendo::Clock::current().elapsedMs() - begunMs_);
    if (reason == QLatin1String("finished")) {
        end.kind = Kind::Finish;
    } else if (reason == QLatin1String("paused")) {
        end.kind = Kind::Pause;
    } else if (reason == QLatin1String("power")) {
        end.kind = Kind::Stop;
        end.detail = QStringLiteral("power");
        end.argument.clear();
    } else {
        end.kind = Kind::Error;
        end.detail = failedCode_ < 0 ? QStringLiteral("motion") : QString();
        end.argument = failedCode_ < 0 ? QString::number(-qint64(failedCode_), 16) : QString();
    }
    add(end);
}

void EventRecorder::onResult(int code) {
    if (code < 0 && sources_.runs->isRunning() && failedCode_ == 0) {
        failedCode_ = code;
    }
}

void EventRecorder::onEmergencyStop() {
    note(Kind::Stop, sources_.controller->emergencyStop() ? QStringLiteral("emergency_stop")
                                                          : QStringLiteral("released"));
}

void EventRecorder::onFaultWhileLit(const QString& name) {
    note(Kind::Fault, QStringLiteral("lit"), equipmentText(name));
}

void EventRecorder::noteFaults(const QStringList& faults) {
    for (const QString& fault : faults) {
        if (!faults_.contains(fault)) {
            note(Kind::Fault, QStringLiteral("unready"), fault);
        }
    }
    for (const QString& fault : qAsConst(faults_)) {
        if (!faults.contains(fault)) {
            note(Kind::Fault, QStringLiteral("ready"), fault);
        }
    }
    faults_ = faults;
}

void EventRecorder::onStatus(const CellStatus& state) {
    store_->setQuiet(sources_.status->isActive());
    if (state.linked) {  // else the inputs are not known
        noteFaults(state.faults);
    }
    const bool isByHand = state.laser == CellStatus::Laser::ByHand;
    if (isByHand != litByHand_) {
        litByHand_ = isByHand;
        note(Kind::Laser, isByHand ? QStringLiteral("on_by_hand") : QStringLiteral("off"));
    }
}

void EventRecorder::onFileProblem(const mendo::FileProblem& problem) {
    note(Kind::Error, QStringLiteral("file"),
         problemText(problem, QDir::toNativeSeparators(QFileInfo(problem.file).absoluteFilePath())));
}

void EventRecorder::onSaved() {
    note(Kind::Save, {});
}

void EventRecorder::onLoaded() {
    note(Kind::Load, {});
}

}  // namespace app
