#include "runner/session.h"

#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "runner/stress/trial.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "simulator/time/virtualtime.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QJsonDocument>

namespace run {

namespace {

constexpr int failed = 1;
constexpr int badInput = 2;

std::FILE* reportStream(const Options& options) {
    if (options.quiet) {
        return nullptr;
    }
    return options.takesStandardOutput() ? stderr : stdout;
}

void printFileError(const QString& option, const QString& file, const QString& error) {
    printError(QStringLiteral("%1 %2: %3").arg(option, file, error));
}

}  // namespace

Session::Session(const Options& options)
    : options_(options),
      input_(options),
      report_(reportStream(options),
              options.stations.isEmpty() ? Report::Progress::Statements : Report::Progress::Stations),
      watch_(&follower_),
      recorder_(&trace_, &follower_),
      stationWatch_([this] { return elapsedMs(); }, [this] { return cell_.cell()->laserOnMs(); }),
      cell_(options_),
      evidence_(options_),
      telemetry_(options_) {
    if (options.rules) {
        safety_ = std::make_unique<SafetyWatch>(&follower_);
    }
    trace_.setClock([this] { return elapsedMs(); });
    mendo::LogHub::instance()->setConsole(false);
    connect(&end_, &EndWatch::over, this, [this] { finish(watch_.reason()); });
    connect(&end_, &EndWatch::gaveUp, this, &Session::finish);
    connect(m(), &mendo::ModuleManager::fileProblem, this, &Session::onFileProblem);
    connect(&follower_, &workcell::TreeFollower::changed, this, &Session::onChanged);
    connect(&watch_, &workcell::RunWatch::lineBegun, this, &Session::onLineBegun);
    connect(&watch_, &workcell::RunWatch::begun, this,
            [this] { stationWatch_.runBegun(package_.mode() == prog::runmode::byStation); });
    connect(&watch_, &workcell::RunWatch::ended, this, [this] { stationWatch_.runEnded(watch_.reason()); });
    connect(&stationPage_, &StationPage::stateChanged, this, &Session::onStation);
}

Session::~Session() = default;

int Session::run() {
    return prepare() ? play() : status_;
}

bool Session::prepare() {
    return readInput() && openFiles() && setUp() && openEvidence();
}

int Session::play() {
    connectPlayer();
    if (safety_) {
        connectSafety();
    }
    QMetaObject::invokeMethod(
        this, [this] { begin(); }, Qt::QueuedConnection);
    mendo::ModuleManager::setOutermostLoop(1);
    QCoreApplication::exec();
    if (quits_) {
        windDown();
    }
    return status_;
}

bool Session::vary(const stress::Trial& trial, Problem* problem) {
    const QByteArray text = QJsonDocument(trial.scenario).toJson(QJsonDocument::Compact);
    const std::optional<InputArray> entries = InputArray::parse(text, QStringLiteral("scenario"), problem);
    if (!entries) {
        return false;
    }
    const Scenario scenario =
        Scenario::fromText(*entries, cell_.controller()->inputNames(), options_.folder());
    if (scenario.hasErrors()) {
        problem->reason = QStringLiteral("the scenario has errors");
        return false;
    }
    trial.applyTo(&options_);
    cell_.controller()->setMode(options_.mode);
    if (options_.noWriteMulti) {
        kordservice()->offerCommand(prog::command::registerWriteMulti, false);
    }
    program_ = trial.program;
    settings_ = trial.settings;
    makePlayer(scenario);
    showPages();
    return true;
}

/// Only for a scenario that works with them: else a long program's table stays unfilled.
void Session::showPages() {
    if (stations_ || player_->operatesPages()) {
        cell_.pages()->show();
    }
}

int Session::setCount() const {
    return m(prog::key::param)->cmobjCount();
}

/// All event loops return, and the outermost announces the end to the package, as in any host.
void Session::quit() {
    quits_ = true;
    flight_.noteQuitting();
    end_.holdForQuit();
    quitInRun_ = watch_.isRunning() || package_.executor->property("depth").toInt() > 0;
    QCoreApplication::quit();
}

/// Runs the cell until the robot stands and nothing is pending.
void Session::windDown() {
    if (safety_) {
        safety_->onQuit();
    }
    QEventLoop rest;
    end_.endQuit();
    if (!finished_) {
        rest.exec();
    }
}

bool Session::readInput() {
    status_ = badInput;
    Problem problem;
    const bool hasProgram = input_.readProgram(&problem);
    if ((!hasProgram && !options_.check) || !evidence_.read(&problem) || !telemetry_.read(&problem)) {
        printError(problem.text());
        return false;
    }
    if (!QDir::setCurrent(options_.settings)) {
        printError(QStringLiteral("%1: the folder cannot be entered").arg(options_.settings));
        return false;
    }
    if (!makeCell() || !checkInput()) {
        return false;
    }
    if (options_.everyMs.value_or(input_.scenario().lastMs()) < input_.scenario().lastMs()) {
        printError(QStringLiteral("--every %1 is less than the time of the scenario's last entry, %2")
                       .arg(*options_.everyMs)
                       .arg(input_.scenario().lastMs()));
        return false;
    }
    project_ = input_.takeProject();
    stations_ = input_.takeStations();
    makePlayer(input_.scenario());
    return true;
}

void Session::makePlayer(const Scenario& scenario) {
    player_ = std::make_unique<ScenarioPlayer>(scenario, &tree_, &pages_, cell_.controller(), cell_.cell(),
                                               options_.folder());
}

bool Session::makeCell() {
    if (!cell_.make()) {
        return false;
    }
    recorder_.attach(cell_.controller(), options_.posture);
    evidence_.attach(cell_.workCell(), &follower_, &watch_, [this] { return projectName(); });
    recorder_.attachCell(cell_.cell());
    return true;
}

/// False where nothing is to be run: only the check was asked for, or it refuses the run.
bool Session::checkInput() {
    input_.check(cell_.controller()->inputNames(), prog::CellFacts::ofHost(), cell_.workCell()->arm());
    if (options_.check) {
        status_ = printFindings(input_);
        return false;
    }
    return input_.accept();
}

bool Session::openFiles() {
    QString error;
    if (!options_.trace.isEmpty() && !trace_.open(options_.trace, &error)) {
        printFileError(QStringLiteral("--trace"), options_.traceName, error);
        return false;
    }
    if (!options_.vcd.isEmpty() && !vcd_.open(options_.vcd, &error)) {
        printFileError(QStringLiteral("--vcd"), options_.vcdName, error);
        return false;
    }
    return flight_.open(options_);
}

/// Last: nothing is written where nothing runs.
bool Session::openEvidence() {
    if (!evidence_.open()) {
        status_ = badInput;
        return false;
    }
    telemetry_.begin(cell_.workCell(), &follower_, &watch_, [this] { return projectName(); });
    return true;
}

bool Session::setUp() {
    status_ = failed;
    messages_ = std::make_unique<MessageWatch>(options_.ackMs);
    if (vcd_.isOpen()) {
        signals_ = std::make_unique<workcell::CellSignals>(cell_.controller(), cell_.cell(), &follower_);
        signals_->setRunningStation([this] { return stationPage_.running(); });
    }
    if (!cell_.open()) {
        return false;
    }
    showPages();
    package_ = cell_.workCell()->flags();
    const bool hasStationPage = stationPage_.find(cell_.pages());
    if (!hasStationPage && (stations_ || player_->needsStationPage())) {
        printError(QStringLiteral("the package has no station page"));
        return false;
    }
    tree_.setRunMode(package_.runMode);
    tree_.setStationPage(&stationPage_);
    pages_.setPanel(cell_.pages(), &stationPage_);
    connectEnds();
    return cell_.connectOutside();
}

/// Any of these may be the last event of a run.
void Session::connectEnds() {
    const sim::Controller* controller = cell_.controller();
    connect(controller, &sim::Controller::motion, &end_, &EndWatch::schedule);
    connect(controller, &sim::Controller::result, &end_, &EndWatch::schedule);
    connect(controller, &sim::Controller::caughtUp, &end_, &EndWatch::schedule);
    watch_.attach(controller);
    connect(controller, &sim::Controller::postureMoved, &end_, &EndWatch::schedule);
    connect(package_.executor, SIGNAL(activityChanged()), &end_, SLOT(schedule()));
    connect(&tree_, &TreeOperator::written, &end_, &EndWatch::schedule);
    connect(&pages_, &PageOperator::worked, &end_, &EndWatch::schedule);
    connect(messages_.get(), &MessageWatch::closed, &end_, &EndWatch::schedule);
    connect(messages_.get(), &MessageWatch::shown, &recorder_, &Recorder::message);
    connect(messages_.get(), &MessageWatch::shown, this, &Session::onMessage);
    connect(messages_.get(), &MessageWatch::answered, &recorder_, &Recorder::answer);
    if (options_.realtime && sim::VirtualTime::instance()) {
        sim::VirtualTime::instance()->setPace(1);
    }
}

void Session::connectPlayer() {
    connect(player_.get(), &ScenarioPlayer::applying, &recorder_, &Recorder::scenarioEntry);
    connect(player_.get(), &ScenarioPlayer::writing, &follower_, &workcell::TreeFollower::followElement);
    connect(player_.get(), &ScenarioPlayer::applied, &end_, &EndWatch::schedule);
    connect(player_.get(), &ScenarioPlayer::quitting, this, &Session::quit);
}

/// The watch hears of the executor's activity before the scenario's entries that wait for it.
void Session::connectSafety() {
    safety_->setExecutor(package_.executor);
    connect(player_.get(), &ScenarioPlayer::acting, safety_.get(), &SafetyWatch::onActing);
    connect(player_.get(), &ScenarioPlayer::acted, safety_.get(), &SafetyWatch::returned);
}

void Session::begin() {
    flight_.begin(options_, package_.runMode, [this] { return projectName(); });
    player_->follow(package_.executor);
    recorder_.setRecording(true);
    writeBeginLine(trace_, options_, project_ ? project_->statementCount() : 0);
    if (signals_) {
        signals_->beginDump(&vcd_, signals_->values());
        connect(signals_.get(), &workcell::CellSignals::changed, this,
                [this](int signal, double value) { vcd_.set(signal, value, elapsedMs()); });
    }
    for (const QJsonValue setting : settings_) {
        tree_.set(setting[QStringLiteral("path")].toString(), setting[QStringLiteral("value")]);
    }
    if (project_) {
        if (program_) {
            tree_.loadProject(*program_);
        } else {
            tree_.loadProject(*project_);
        }
        project_->clear();
    } else {
        stationPage_.show();
    }
    tree_.setUpRuns(options_.overlapMm, options_.dryPercent);
    tree_.setWeld(options_.weld);
    tree_.setHandWeld(options_.handWeld);
    if (options_.once) {
        tree_.prepareStep();
    } else if (project_) {
        tree_.prepareRun(options_.line - 1);
    }
    startMs_ = mendo::Clock::current().elapsedMs();
    evidence_.begin();
    if (safety_) {
        safety_->begin();
    }
    end_.begin({package_.executor, cell_.controller(), &tree_, &pages_, messages_.get(), player_.get(),
                stations_ ? &stationPage_ : nullptr},
               options_.untilMs);
    connect(player_.get(), &ScenarioPlayer::roundBegun, &end_, &EndWatch::waitCalmly);
    player_->start(options_.repeat, options_.everyMs.value_or(player_->calmMs()));
    go();
    end_.schedule();
}

void Session::go() {
    if (safety_) {
        safety_->starts(options_);
    }
    if (stations_) {
        tree_.setMonitoring(true);
    } else if (options_.once) {
        tree_.once(*options_.once - 1);
    } else {
        tree_.resume();
    }
    if (safety_) {
        safety_->returned();
    }
}

void Session::onLineBegun(int line, const QString& type) {
    if (project_) {
        report_.statement(line, type, elapsedMs());
    }
}

void Session::onStation(int row, const QString& state) {
    stationWatch_.stateChanged(row);
    recorder_.station(row, state);
    report_.station(stationPage_.name(row), state, elapsedMs());
    end_.schedule();
}

void Session::onMessage(const QString& icon, const QString& title, const QString& text) {
    report_.message(icon, title, text, elapsedMs());
}

void Session::onChanged(const workcell::Change& change) {
    if (change.path == prog::key::robotState || change.path == prog::key::executeState) {
        end_.schedule();
    }
}

void Session::onFileProblem(const mendo::FileProblem& problem) {
    const QString name = QFileInfo(problem.file).fileName();
    const bool isSettings = name == prog::file::parameters || name == prog::file::ports;
    if (!isSettings || !input_.hasToldOf(name)) {
        printWarning(Problem{name, problem.place, problem.text()}.text());
    }
}

qint64 Session::elapsedMs() const {
    return startMs_ ? mendo::Clock::current().elapsedMs() - *startMs_ : 0;
}

Figures Session::figures(const QString& reason) const {
    const sim::Cell* cell = cell_.cell();
    Figures f;
    f.reason = reason;
    f.waiting = waitingText(package_.executor->property("waiting").toMap());
    f.lines = watch_.lines();
    f.pathM = cell_.controller()->travelled();
    f.laserMs = cell->laserOnMs();
    f.weldM = cell->weldLength();
    f.gasMs = cell->gasOnMs();
    f.wireMs = cell->wireOnMs();
    f.durationMs = elapsedMs();
    return f;
}

std::vector<StationLine> Session::stationLines() const {
    std::vector<StationFigures> figures = stationWatch_.figures();
    figures.resize(std::size_t(stationPage_.count()));
    std::vector<StationLine> lines;
    lines.reserve(figures.size());
    for (int row = 0; row < stationPage_.count(); ++row) {
        lines.push_back({stationPage_.name(row), stationPage_.project(row), figures[std::size_t(row)]});
    }
    return lines;
}

ProjectResult Session::result(const QString& reason, bool succeeded) const {
    ProjectResult result;
    result.isFolder = stations_.has_value();
    result.name = stations_ ? QDir(options_.stations).dirName() : projectName();
    result.succeeded = succeeded;
    result.record.reason = reason;
    for (const PlacedFinding& finding : input_.findings()) {
        result.findings.push_back(finding.reported());
    }
    if (stations_) {
        int row = 0;
        for (const StationLine& line : stationLines()) {
            const StationFigures& figures = line.figures;
            result.stations.push_back({row++, line.name, line.project, figures.runs, figures.finished,
                                       double(figures.busyMs) / 1000.0});
        }
    }
    return result;
}

/// The file of the project that runs.
QString Session::projectName() const {
    return project_ ? QFileInfo(options_.project).fileName() : stationPage_.project(stationPage_.running());
}

/// Whether all runs that began finished.
bool Session::isSuccess() const {
    return watch_.reason() == QLatin1String("finished") && !quitInRun_ && !pages_.hasFailed() &&
           (!stations_ || (stationWatch_.allFinished() && !input_.hasFaultyStation()));
}

void Session::finish(const QString& ending) {
    if (finished_) {
        return;
    }
    finished_ = true;
    flight_.noteQuitting();
    const QString reason = !quits_ ? ending : QStringLiteral("quit");
    JsonWriter& line = trace_.begin("done").key(QStringLiteral("reason")).string(reason);
    line.key(QStringLiteral("state")).string(m(prog::key::executeState)->getString());
    line.key(QStringLiteral("line")).integer(m(prog::key::currentLine)->getInt());
    line.key(QStringLiteral("lines")).integer(watch_.lines());
    line.key(QStringLiteral("ms")).integer(elapsedMs());
    trace_.end();
    recorder_.setRecording(false);
    if (stations_) {
        report_.stations(stationLines());
    }
    report_.table(figures(reason));
    const bool isSafe = !safety_ || safety_->end(cell_.controller(), reason, !options_.stress);
    const bool written = closeFiles();
    const bool inTime = reason == QLatin1String("quit") || reason == QLatin1String("finished");
    const bool succeeded = inTime && isSuccess() && isSafe;
    workcell::RunRecord record = evidence_.record();
    record.reason = reason;
    telemetry_.finish(record);
    const bool proven = evidence_.finish(result(reason, succeeded));
    status_ = written && succeeded && proven ? 0 : failed;
    end_.stop();
    QCoreApplication::exit(status_);
}

bool Session::closeFiles() {
    QString error;
    const bool traced = trace_.close(&error);
    if (!traced) {
        printFileError(QStringLiteral("--trace"), options_.traceName, error);
    }
    const bool dumped = vcd_.close(elapsedMs(), &error);
    if (!dumped) {
        printFileError(QStringLiteral("--vcd"), options_.vcdName, error);
    }
    return traced && dumped;
}

}  // namespace run
