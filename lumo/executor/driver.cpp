#include "executor/driver.h"

#include "executor/weldflag.h"
#include "module/globals.h"
#include "program/words.h"

#include <QCoreApplication>
#include <QDebug>
#include <QScopedValueRollback>

#include <utility>

using namespace prog;

namespace lumo {

namespace {

/// The line that a trigger was written with; -1 for what is no number.
int lineFrom(const QVariant& var) {
    bool isNumber = false;
    const int line = var.toInt(&isNumber);
    return isNumber && var.type() != QVariant::Bool ? line : -1;
}

bool isIdle() {
    return m(key::executeState)->getString() == word::idle;
}

bool isBusy() {
    return m(key::executeState)->getString() == word::busy;
}

void send(QObject* sender, QLatin1String command) {
    kordservice()->command(sender, command, static_cast<const ModuleObject*>(nullptr));
}

}  // namespace

Driver::Driver(QObject* sender) : sender_(sender), resume_(m(key::program), sender) {
    runDepth = 0;
    connectTree();
}

void Driver::connectTree() {
    kordservice();  // first: it makes the robot's nodes
    for (const QLatin1String permission : {key::robotMode, key::weldSwitch, key::handWeldSwitch}) {
        connect(m(permission), &ModuleObject::changed, this, &Driver::onPermission);
    }
    connect(&laser_, &Laser::pendingChanged, this, &Driver::activityChanged);
    connect(&laser_, &Laser::opened, this, &Driver::onOpened);
    connect(&motions_, &Motions::failed, this, &Driver::failRun);
    connect(&resumption_, &Resumption::failed, this, &Driver::failOnTheWay);
    connect(&resumption_, &Resumption::notThere, this, &Driver::onNotThere);
    connect(&waiter_, &Waiter::waitingChanged, this, &Driver::activityChanged);
    connect(&waiter_, &Waiter::quitting, this, &Driver::quit);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &Driver::quit);
    connect(m()->root(), &ModuleObject::removed, this, &Driver::onRemoved);
}

void Driver::onPermission() {
    if (!stopping_) {
        laser_.onPermission();
    }
}

/// An "open" of the program. A reopening at a resume keeps the weld's own.
void Driver::onOpened() {
    if (run_ && run_->inStatement) {
        resume_.weldOpened(run_->original(run_->line));
        motions_.welded().clear();
    }
}

/// The subtree goes, and with it the ports: what is on has to be switched off while they can be read.
void Driver::onRemoved(const QString& name) {
    if (m()->root()->c(name) == m(key::lumo)) {
        quit();
    }
}

// --- Starting -------------------------------------------------------------------------------------

void Driver::start(const QVariant& var) {
    const int line = lineFrom(var);
    qDebug() << "start" << line;
    if (quitting_) {
        return;  // the application ends every wait, also that of a page for the closing before its start
    }
    const int mode = hand_or_signalbing;
    const ModuleObject* const program = m(mode == runmode::byStation ? key::stationProgram : key::program);
    if (const std::optional<RunMessage> reason = refusal(line, program)) {
        reason->show(QMessageBox::Warning);
        return;
    }
    Run run(program, mode, false);
    if (refuseCircle(run, line, run.program.lineCount())) {
        return;
    }
    run.inWeld = run.ofHandProgram() && resume_.liesInWeld(line);
    resume_.suspend();
    begin(run);
    if (!run.isAborted) {
        walk(run, line);
    }
    end(run);
}

void Driver::runOnce(const QVariant& var, bool onlyMoves) {
    if (quitting_) {
        return;
    }
    const int line = lineFrom(var);
    const ModuleObject* const program = m(key::program);
    std::optional<RunMessage> reason = refusal(line, program);
    if (!reason && onlyMoves && !Statement::from(program->c(line)).moves) {
        reason = RunMessage::noMove(line);
    }
    if (reason) {
        reason->show(QMessageBox::Warning);
        return;
    }
    Run run(program, hand_or_signalbing, true);
    if (refuseCircle(run, line, line + 1)) {
        return;
    }
    begin(run);
    if (!run.isAborted) {
        step(run, line);
    }
    end(run);
}

std::optional<RunMessage> Driver::refusal(int line, const ModuleObject* program) const {
    if (!isIdle() || depth_ > 0) {
        return RunMessage::notIdle();
    }
    if (line < 0 || program->c(line)->isNull()) {
        return RunMessage::noLine(program->cmobjCount());
    }
    if (m(key::robotPower)->getString() != word::on) {
        return RunMessage::noPower();
    }
    if (m(key::robotState)->getString() != word::idle) {
        return RunMessage::robotMoves();
    }
    return std::nullopt;
}

/// Whether the program that runs, or ran last, is that of the project page: then a message can show its line.
bool Driver::isOfHand() const {
    return (run_ ? run_->mode : hand_or_signalbing) != runmode::byStation;
}

bool Driver::refuseCircle(const Run& run, int from, int to) const {
    const int line = run.program.firstBadCircle(from, to);
    if (line >= 0) {
        RunMessage::circle(run.program.circleFaultAt(line), line, run.mode != runmode::byStation)
            .show(QMessageBox::Warning);
    }
    return line >= 0;
}

void Driver::begin(Run& run) {
    run_ = &run;
    reachedEnd_ = false;
    motions_.begin(run);
    changeDepth(+1);
    if (run.ofHandProgram()) {
        resume_.setFinished(false);
    }
    if (run.isDry()) {
        dry_.begin();
    }
    setState(word::busy);
}

void Driver::end(Run& run) {
    dry_.light(false);
    if (!run.isAborted && !run.isStep) {
        resume_.hold(run.original(run.line));
    }
    if (!run.isAborted && run.reachedEnd && run.ofHandProgram()) {
        resume_.setFinished(true);
    }
    reachedEnd_ = !run.isAborted && run.reachedEnd;
    motions_.end();
    run_ = nullptr;
    waiter_.setLine(-1);
    if (!isIdle()) {
        setState(word::idle);
    }
    dry_.end();
    changeDepth(-1);
}

/// Before the robot moves: nothing is queued, and nothing is on that was switched on by hand or is left of an
/// earlier closing. False when the run was aborted meanwhile.
bool Driver::prepareRobot(const Run& run) {
    motions_.forget();
    send(sender_, command::reset);
    if (!run.isAborted) {
        laser_.switchOffByHand();
    }
    if (!run.isAborted) {
        laser_.settleBeforeMoving();
    }
    return !run.isAborted;
}

void Driver::setLine(int line) {
    run_->line = line;
    waiter_.setLine(line);
}

// --- Walking --------------------------------------------------------------------------------------

void Driver::walk(Run& run, int line) {
    motions_.beginBatches(line);
    const bool isReady = prepareRobot(run);
    setLine(line);
    int i = isReady ? resumption_.takeUp(run, line) : line;
    if (run.isAborted) {
        return;
    }
    motions_.arcs().forgetStopped();  // the run has what is left of it
    resume_.goOn();
    if (run.isDry()) {
        enterDryWeld(run, run.program.isExecuted(line) && run.program.weldOf(line) >= 0);
    }
    for (; i < run.program.lineCount() && isBusy(); ++i) {
        const bool isDone = i < line && !isOfOverlap(run.program.statement(i));
        if (run.program.isExecuted(i) && !isDone && !execute(run, i)) {
            return;
        }
    }
    run.inStatement = false;
    resume_.hold(run.original(run.line));  // a stop in the closing leaves the last line
    run.reachedEnd = i == run.program.lineCount();
    endWeldOfWalk(run.reachedEnd);
}

/// Of the statements in front of the line that is taken up: outputs are not set again, and nothing is awaited
/// again.
bool Driver::isOfOverlap(const Statement& statement) {
    return statement.moves || statement.type == StatementType::Param;
}

/// One line of a walk. False when the run was aborted meanwhile.
bool Driver::execute(Run& run, int line) {
    setLine(line);
    run.inStatement = true;
    if (run.mode == runmode::byHand) {
        m(key::executeLine)->setValue(sender_, line);
    }
    m(key::currentLine)->setValue(sender_, line);
    if (run.isAborted) {
        return false;
    }
    const int code = execProgram(line);
    qDebug() << "execute ----" << line;
    if (!run.isAborted && code != 0) {
        failRun(code, line);
        return false;
    }
    return !run.isAborted;
}

int Driver::execProgram(int line) {
    if (!run_ || line < 0 || line >= run_->program.lineCount()) {
        return 0;
    }
    const Statement statement = run_->program.statement(line);
    m(key::currentType)->setValue(sender_, statement.word);
    qDebug() << "exec program" << line << statement.word;
    if (isAborted()) {
        return 0;
    }
    if (statement.moves) {
        return executeMove(line);
    }
    if (run_->isDry() && passDry(statement.type)) {
        return 0;
    }
    switch (statement.type) {
        case StatementType::Param:
            laser_.takeOver(statement.set);
            break;
        case StatementType::Open:
            laser_.openIfPermitted(&statement);
            break;
        case StatementType::Close:
            laser_.closeIfPermitted();
            break;
        case StatementType::SetDO:
            cell_.setDO(statement);
            break;
        case StatementType::WaitDI:
            cell_.waitDI(statement);
            break;
        case StatementType::Delay:
            cell_.delay(statement);
            break;
        default:
            break;
    }
    return 0;
}

/// What a dry run does in place of a statement for the laser. False for other statements.
bool Driver::passDry(StatementType type) {
    if (type == StatementType::Open || type == StatementType::Close) {
        enterDryWeld(*run_, type == StatementType::Open);
        return true;
    }
    return type == StatementType::Param;
}

void Driver::enterDryWeld(Run& run, bool isIn) {
    run.inDryWeld = isIn;
    dry_.light(isIn);
}

int Driver::executeMove(int line) {
    const int code = motions_.queueBatchFrom(line);
    if (code != 0 || isAborted()) {
        return code;
    }
    motions_.storeCurrent(run_->record(line), run_->program.statement(line).word);
    return isAborted() ? 0 : motions_.await(run_->record(line), false);
}

void Driver::endWeldOfWalk(bool reachedEnd) {
    laser_.settleCutWeld();
    if (isAborted()) {
        return;
    }
    // Asks the laser too, not only the flag: others may write that.
    const bool isFlagged = isWeldFlagged();
    if (laser_.isWelding() || (reachedEnd && isFlagged)) {
        laser_.close();
    }
    // Where somebody else wrote the state the walk ends like a pause, and the weld can be resumed.
    if (reachedEnd && isFlagged) {
        setWeldFlag(sender_, false);
    }
}

void Driver::step(Run& run, int line) {
    if (!prepareRobot(run) || !run.program.isExecuted(line)) {
        return;
    }
    setLine(line);
    run.inStatement = true;
    m(key::executeLine)->setValue(sender_, line);
    if (run.isAborted) {
        return;
    }
    ModuleObject* const stmt = run.record(line);
    const int code = motions_.queueAlone(stmt);
    if (code != 0) {
        failRun(code, line);
    } else if (!run.isAborted) {
        motions_.await(stmt, true);
    }
}

/// `line`: whose motion failed; -1 on the way back.
void Driver::failRun(int code, int line) {
    const RunMessage message =
        motions_.circleFault() == CircleFault::None
            ? RunMessage::motionError(code, line, isOfHand())
            : RunMessage::circle(motions_.circleFault(), motions_.badCircle(), isOfHand());
    if (run_ && !isAborted()) {
        pause();
    }
    message.show(QMessageBox::Critical);
}

/// On the way back, which belongs to no line.
void Driver::failOnTheWay(int code) {
    failRun(code, -1);
}

/// A controller that says too early that the tool is back where a weld was stopped.
void Driver::onNotThere(double awayMm) {
    pause();
    RunMessage::notBack(awayMm).show(QMessageBox::Warning);
}

// --- Stopping -------------------------------------------------------------------------------------

void Driver::pause() {
    qDebug() << "pause";
    if (stopping_) {
        return;  // the stop does all that a pause would, and must not wait for its closing
    }
    abort();
    const int mine = aborts_;
    changeDepth(+1);
    // The robot may still say "idle" just after motions were handed over.
    if (m(key::robotState)->getString() != word::idle || motions_.outstanding() > 0) {
        send(sender_, command::stop);
    }
    motions_.forget();
    waiter_.end(WaitEnd::Abort);
    keepStop();
    if (dry_.isUnderWay()) {
        dry_.light(false);         // there is nothing to close, and no wire to pull back
    } else if (mine == aborts_) {  // else a listener of these writes has stopped everything meanwhile
        laser_.close();
    }
    setState(word::idle);
    changeDepth(-1);
}

void Driver::estop(const QVariant& power) {
    if (power.toString() == word::on) {
        return;
    }
    if (!isIdle() || (run_ && !isAborted())) {
        emergencyStop();
    } else if (laser_.pendingSteps() > 0 || laser_.isClosing()) {
        // The closing of a pause is still under way.
        const QScopedValueRollback<bool> stopping(stopping_, true);
        abort();
        waiter_.end(WaitEnd::Abort);
        laser_.shutDown();
    } else {
        laser_.switchOffByHand();
    }
}

void Driver::emergencyStop() {
    const QScopedValueRollback<bool> stopping(stopping_, true);
    abort();
    motions_.forget();
    waiter_.end(WaitEnd::Abort);
    send(sender_, command::stop);
    keepStop();
    laser_.shutDown();
    dry_.light(false);
    setState(word::idle);
}

void Driver::quit() {
    quitting_ = true;
    QMetaObject::invokeMethod(
        this, [this] { quitting_ = false; }, Qt::QueuedConnection);  // if the event loop goes on
    if (depth_ > 0 || laser_.pendingSteps() > 0) {
        emergencyStop();
    } else {
        laser_.switchOffByHand();
    }
}

void Driver::abort() {
    ++aborts_;
    if (run_) {
        run_->isAborted = true;
    }
}

/// The resume data of a stop. One that interrupts no statement (on the way back, while idle, a second one)
/// leaves those of the stop before.
void Driver::keepStop() {
    if (run_ && run_->isStep) {
        resume_.setFinished(false);
    }
    if (!run_ || !std::exchange(run_->inStatement, false)) {
        resume_.release();
        return;
    }
    if (!run_->isStep) {
        motions_.keepArc();
        resume_.stopIn(run_->original(run_->line), run_->ofHandProgram());
    } else if (resume_.isStopped() || isWeldFlagged()) {
        return;  // a step must not move the place where a stopped program goes on
    }
    // Last: a listener may stop once more, and then finds the line kept.
    m(key::currentPausePoint)->copyFrom(sender_, kordservice()->get(sender_, key::posture), true, false);
}

void Driver::setState(QLatin1String state) {
    m(key::executeState)->setValue(sender_, QString(state));
}

void Driver::changeDepth(int by) {
    depth_ += by;
    runDepth = depth_;
    emit activityChanged();
}

}  // namespace lumo
