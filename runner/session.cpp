#include "runner/session.h"

#include "gantu/package.h"
#include "mendo/clock.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "simulator/time/virtualtime.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>

namespace run {

namespace {

constexpr int failed = 1;
constexpr int badInput = 2;
constexpr int stuckMs = 1000;
constexpr int calmMs = 1000;  // after the last entry of a scenario for stations

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
      stationWatch_([this] { return elapsedMs(); }, [this] { return cell_->cell()->laserOnMs(); }),
      evidence_(options_) {
    trace_.setClock([this] { return elapsedMs(); });
    mendo::LogHub::instance()->setConsole(false);
    until_.setSingleShot(true);
    until_.setTimerType(Qt::PreciseTimer);
    connect(&until_, &QTimer::timeout, this, [this] { finish(QStringLiteral("until")); });
    calm_.setSingleShot(true);
    calm_.setTimerType(Qt::PreciseTimer);
    connect(&calm_, &QTimer::timeout, this, &Session::scheduleCheck);
    stuck_->setSingleShot(true);
    stuck_->setInterval(stuckMs);
    connect(stuck_, &QTimer::timeout, this, [this] {
        if (isStuck() || isForgotten()) {
            finish(QStringLiteral("stalled"));
        }
    });
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
    if (!readInput() || !openFiles() || !setUp() || !openEvidence()) {
        return status_;
    }
    QMetaObject::invokeMethod(
        this, [this] { begin(); }, Qt::QueuedConnection);
    mendo::ModuleManager::setOutermostLoop(1);
    QCoreApplication::exec();
    if (quit_ == Quit::Asked) {
        windDown();
    }
    return status_;
}

/// All event loops return, and the outermost announces the end to the package, as in any host.
void Session::quit() {
    quit_ = Quit::Asked;
    quitInRun_ = watch_.isRunning() || package_.executor->property("depth").toInt() > 0;
    QCoreApplication::quit();
}

/// Runs the cell until the robot stands and nothing is pending.
void Session::windDown() {
    quit_ = Quit::Done;
    QEventLoop rest;
    scheduleCheck();
    if (!finished_) {
        rest.exec();
    }
}

bool Session::readInput() {
    status_ = badInput;
    Problem problem;
    const bool hasProgram = input_.readProgram(&problem);
    if ((!hasProgram && !options_.check) || !evidence_.read(&problem)) {
        printError(problem.text());
        return false;
    }
    if (!QDir::setCurrent(options_.settings)) {
        printError(QStringLiteral("%1: the folder cannot be entered").arg(options_.settings));
        return false;
    }
    makeCell();
    if (!checkInput()) {
        return false;
    }
    project_ = input_.takeProject();
    stations_ = input_.takeStations();
    player_ = std::make_unique<ScenarioPlayer>(input_.scenario(), &tree_, &pages_, cell_->controller(),
                                               cell_->cell(), options_.folder());
    return true;
}

void Session::makeCell() {
    stack_ = std::make_unique<QStackedWidget>();
    stack_->resize(1280, 800);
    sim::Controller::Options controller;
    controller.axes = options_.axes;
    controller.writeMulti = !options_.noWriteMulti;
    cell_ = std::make_unique<workcell::WorkCell>(stack_.get(), controller);
    cell_->controller()->setPower(options_.power);
    cell_->controller()->setMode(options_.mode);
    recorder_.attach(cell_->controller(), options_.posture);
    evidence_.attach(cell_.get(), &follower_, &watch_, [this] { return projectName(); });
    recorder_.attachCell(cell_->cell());
}

/// False where nothing is to be run: only the check was asked for, or it refuses the run.
bool Session::checkInput() {
    input_.check(cell_->controller()->inputNames(), prog::CellFacts::ofHost(), cell_->arm());
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
    return true;
}

/// Last: nothing is written where nothing runs.
bool Session::openEvidence() {
    if (!evidence_.open()) {
        status_ = badInput;
        return false;
    }
    return true;
}

bool Session::setUp() {
    status_ = failed;
    messages_ = std::make_unique<MessageWatch>(options_.ackMs);
    if (vcd_.isOpen()) {
        signals_ = std::make_unique<workcell::CellSignals>(cell_->controller(), cell_->cell(), &follower_);
        signals_->setRunningStation([this] { return stationPage_.running(); });
    }
    if (!openPanel()) {
        return false;
    }
    const bool hasStationPage = stationPage_.find(stack_.get());
    if (!hasStationPage && (stations_ || player_->needsStationPage())) {
        printError(QStringLiteral("the package has no station page"));
        return false;
    }
    tree_.setRunMode(package_.runMode);
    tree_.setStationPage(&stationPage_);
    pages_.setPanel(stack_.get(), &stationPage_);
    connectEnds();
    return true;
}

bool Session::openPanel() {
    workcell::setLanguage(options_.language);
    QString error;
    if (cell_->open(gantu::findLibrary(prog::key::lumo), &error)) {
        stack_->setUpdatesEnabled(false);  // painting would take most of the time
        stack_->show();
        package_ = cell_->flags();
        if (!package_.executor) {
            error = QStringLiteral("the package made no executor");
        } else if (!package_.runMode) {
            error = QStringLiteral("the package does not export its run mode");
        }
    }
    if (!error.isEmpty()) {
        printError(error);
    }
    return error.isEmpty();
}

/// Any of these may be the last event of a run.
void Session::connectEnds() {
    const sim::Controller* controller = cell_->controller();
    connect(controller, &sim::Controller::motion, this, &Session::scheduleCheck);
    connect(controller, &sim::Controller::result, this, &Session::scheduleCheck);
    watch_.attach(controller);
    connect(controller, &sim::Controller::postureMoved, this, &Session::scheduleCheck);
    connect(package_.executor, SIGNAL(activityChanged()), this, SLOT(scheduleCheck()));
    connect(&tree_, &TreeOperator::written, this, &Session::scheduleCheck);
    connect(&pages_, &PageOperator::worked, this, &Session::scheduleCheck);
    connect(messages_.get(), &MessageWatch::closed, this, &Session::scheduleCheck);
    connect(messages_.get(), &MessageWatch::shown, &recorder_, &Recorder::message);
    connect(messages_.get(), &MessageWatch::shown, this, &Session::onMessage);
    connect(messages_.get(), &MessageWatch::answered, &recorder_, &Recorder::answer);
    connect(player_.get(), &ScenarioPlayer::applying, &recorder_, &Recorder::scenarioEntry);
    connect(player_.get(), &ScenarioPlayer::writing, &follower_, &workcell::TreeFollower::followElement);
    connect(player_.get(), &ScenarioPlayer::applied, this, &Session::scheduleCheck);
    connect(player_.get(), &ScenarioPlayer::quitting, this, &Session::quit);
    sim::VirtualTime* time = sim::VirtualTime::instance();
    connect(time, &QAbstractEventDispatcher::aboutToBlock, this, &Session::onAboutToBlock);
    if (options_.realtime) {
        time->setPace(1);
    }
}

void Session::begin() {
    recorder_.setRecording(true);
    writeBeginLine(trace_, options_, project_ ? project_->statementCount() : 0);
    if (signals_) {
        signals_->beginDump(&vcd_, signals_->values());
        connect(signals_.get(), &workcell::CellSignals::changed, this,
                [this](int signal, double value) { vcd_.set(signal, value, elapsedMs()); });
    }
    if (project_) {
        tree_.loadProject(project_->content());
    } else {
        stationPage_.show();
    }
    tree_.setWeld(options_.weld);
    tree_.setHandWeld(options_.handWeld);
    if (options_.once) {
        tree_.prepareStep();
    } else if (project_) {
        tree_.prepareRun(options_.line - 1);
    }
    startMs_ = mendo::Clock::current().elapsedMs();
    evidence_.begin();
    until_.start(options_.untilMs);
    player_->start();
    if (stations_) {
        calm_.start(player_->lastMs() + calmMs);
    }
    go();
    scheduleCheck();
}

void Session::go() {
    if (stations_) {
        tree_.setMonitoring(true);
    } else if (options_.once) {
        tree_.once(*options_.once - 1);
    } else {
        tree_.resume();
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
    scheduleCheck();
}

void Session::onMessage(const QString& icon, const QString& title, const QString& text) {
    report_.message(icon, title, text, elapsedMs());
}

void Session::onChanged(const workcell::Change& change) {
    if (change.path == prog::key::robotState || change.path == prog::key::executeState) {
        scheduleCheck();
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

/// Ends the run when no timer is armed but that of the time limit.
void Session::onAboutToBlock() {
    if (!startMs_ || finished_ || player_->isPending()) {
        return;  // the remaining entries have timers
    }
    if (sim::VirtualTime::instance()->armedTimers(&until_) == 0) {
        QMetaObject::invokeMethod(
            this, [this] { checkStall(); }, Qt::QueuedConnection);
    }
}

void Session::checkStall() {
    check();
    if (!finished_ && quit_ != Quit::Asked && sim::VirtualTime::instance()->armedTimers(&until_) == 0) {
        finish(QStringLiteral("stalled"));
    }
}

void Session::scheduleCheck() {
    if (checkPosted_ || !startMs_) {
        return;
    }
    checkPosted_ = true;
    QMetaObject::invokeMethod(
        this, [this] { check(); }, Qt::QueuedConnection);
}

void Session::check() {
    checkPosted_ = false;
    if (quit_ == Quit::Asked) {
        return;  // the event loops have not returned yet
    }
    if (isOver()) {
        finish(watch_.reason());
    } else {
        watchStuckRun();
    }
}

/// Gives up a run that has waited for a while for a motion while the robot stands still: timers of pages, and
/// laser pulses, may go on for ever.
void Session::watchStuckRun() {
    if (!isStuck() && !isForgotten()) {
        stuck_->stop();
    } else if (!stuck_->isActive()) {
        stuck_->start();
    }
}

bool Session::isStuck() const {
    const QObject* executor = package_.executor;
    const QString kind = executor->property("waiting").toMap().value(QStringLiteral("kind")).toString();
    const bool awaitsMotion = kind == prog::waits::move || kind == prog::waits::zone;
    return awaitsMotion && !player_->isPending() && !pages_.isBusy() && !messages_->isPending() &&
           cell_->controller()->standsStill();
}

bool Session::isOver() const {
    return isAtRest() && areStationsDone();
}

bool Session::isAtRest() const {
    const QObject* executor = package_.executor;
    return !tree_.isWriting() && !pages_.isBusy() && !player_->isPlaying() && !messages_->isPending() &&
           TreeOperator::isIdle() && executor->property("depth").toInt() == 0 &&
           executor->property("pendingSteps").toInt() == 0 && cell_->controller()->standsStill();
}

bool Session::areStationsDone() const {
    return !stations_ || quit_ != Quit::No || (stationPage_.queued() == 0 && !calm_.isActive());
}

/// Projects are queued, but the station page is switched off.
bool Session::isForgotten() const {
    return stations_ && !stationPage_.isMonitoring() && stationPage_.queued() > 0 && isAtRest();
}

Figures Session::figures(const QString& reason) const {
    const sim::Cell* cell = cell_->cell();
    Figures f;
    f.reason = reason;
    f.waiting = waitingText(package_.executor->property("waiting").toMap());
    f.lines = watch_.lines();
    f.pathM = cell_->controller()->travelled();
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
    const QString reason = quit_ == Quit::No ? ending : QStringLiteral("quit");
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
    const bool written = closeFiles();
    const bool inTime = reason == QLatin1String("quit") || reason == QLatin1String("finished");
    const bool succeeded = inTime && isSuccess();
    const bool proven = evidence_.finish(result(reason, succeeded));
    status_ = written && succeeded && proven ? 0 : failed;
    until_.stop();
    stuck_->stop();
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
