// The driver: triggers, checks, the walk over the program, pause and emergency stop.

#include "equipment/handlit.h"
#include "executor/lumoexecutor.h"
#include "program/words.h"
#include "widgets/messagebox.h"

#include <QCoreApplication>
#include <QDebug>
#include <QScopedValueRollback>

using namespace lumo;
using namespace prog;

namespace {

constexpr int handRun = 0;
constexpr int stationRun = 1;

/// The line that a trigger was written with; -1 for what is no number.
int lineFrom(const QVariant& var) {
    bool isNumber = false;
    const int line = var.toInt(&isNumber);
    return isNumber && var.type() != QVariant::Bool ? line : -1;
}

}  // namespace

LumoExecutor* executor = nullptr;

LumoExecutor::Run::Run(const ModuleObject* source, int runMode, int abortsNow)
    : program(source), mode(runMode), aborts(abortsNow), motionOfLine(program.lineCount(), -1) {
    if (ofHandProgram()) {
        const QList<ModuleObject*> statements = source->cmobjs();
        originals.reserve(statements.size());
        for (ModuleObject* const statement : statements) {
            originals.append(statement);
        }
    }
}

bool LumoExecutor::Run::ofHandProgram() const {
    return mode == handRun && !isStep;
}

LumoExecutor::LumoExecutor(ModuleObject* lumo)
    : QObject(lumo), waiter_(waitLoop, schedule_), resume_(m(key::program), this) {
    runDepth = 0;
    pulseTimer.setTimerType(Qt::PreciseTimer);
    schedule_.setPerformer([this](const PortStep& step) { writePort(step); });
    connectTree();
}

LumoExecutor::~LumoExecutor() {
    quit();
}

void LumoExecutor::connectTree() {
    KordService* const service = kordservice();  // first: it makes the robot's nodes, the host's among them
    connect(m(key::triggerStart), &ModuleObject::changed, this, &LumoExecutor::start);
    connect(m(key::triggerPause), &ModuleObject::changed, this, &LumoExecutor::pause);
    connect(m(key::triggerOnce), &ModuleObject::changed, this, &LumoExecutor::runOnce);
    connect(m(key::robotPower), &ModuleObject::changed, this, &LumoExecutor::estop);
    for (const QString& kind : {QStringLiteral("j"), QStringLiteral("l"), QStringLiteral("c")}) {
        connect(service->commandNode(QStringLiteral("move.") + kind), &ModuleObject::changed, this,
                [this, kind](const QVariant& result) { handleMove(kind, result.toInt()); });
    }
    connect(&pulseTimer, &QTimer::timeout, this, &LumoExecutor::pulseStep);
    for (const QLatin1String permission : {key::robotMode, key::weldSwitch, key::handWeldSwitch}) {
        connect(m(permission), &ModuleObject::changed, this, &LumoExecutor::onPermission);
    }
    connect(&schedule_, &Schedule::pendingChanged, this, &LumoExecutor::activityChanged);
    connect(&waiter_, &Waiter::waitingChanged, this, &LumoExecutor::activityChanged);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &LumoExecutor::quit);
    connect(m()->root(), &ModuleObject::removed, this, &LumoExecutor::onRemoved);
}

int LumoExecutor::pendingSteps() const {
    return schedule_.pendingSteps() + (pulseTimer.isActive() ? 1 : 0);
}

void LumoExecutor::start(const QVariant& var) {
    const int line = lineFrom(var);
    qDebug() << "start" << line;
    if (quitting_) {
        return;  // the application ends every wait, also that of a page for the closing before its start
    }
    const int mode = hand_or_signalbing;
    const ModuleObject* const program = m(mode == stationRun ? key::stationProgram : key::program);
    const QString reason = refusal(line, program);
    if (!reason.isEmpty()) {
        warn(reason);
        return;
    }
    Run run(program, mode, aborts_);
    if (refuseCircle(run, line, run.program.lineCount())) {
        return;
    }
    run.inWeld = run.ofHandProgram() && resume_.liesInWeld(line);
    resume_.suspend();
    run_ = &run;
    changeDepth(+1);
    setState(word::busy);
    if (!isAborted()) {
        walk(run, line);
    }
    endRun();
}

void LumoExecutor::runOnce(const QVariant& var, const QVariant& /*old*/, QObject* context) {
    if (quitting_) {
        return;
    }
    const int line = lineFrom(var);
    const ModuleObject* const program = m(key::program);
    QString reason = refusal(line, program);
    if (reason.isEmpty() && context && !isMoveStatement(program->c(line))) {
        reason = tr("单步只能运行运动指令");
    }
    if (!reason.isEmpty()) {
        warn(reason);
        return;
    }
    Run run(program, hand_or_signalbing, aborts_);
    run.isStep = true;
    if (refuseCircle(run, line, line + 1)) {
        return;
    }
    run_ = &run;
    changeDepth(+1);
    setState(word::busy);
    if (!isAborted()) {
        step(run, line);
    }
    endRun();
}

QString LumoExecutor::refusal(int line, const ModuleObject* program) const {
    if (!isIdle() || depth_ > 0) {
        return tr("当前不是空闲状态");
    }
    if (line < 0 || program->c(line)->isNull()) {
        return tr("未选中启动行");
    }
    if (m(key::robotPower)->getString() != word::on) {
        return tr("机器人未上电");
    }
    if (m(key::robotState)->getString() != word::idle) {
        return tr("机器人正在运行中");
    }
    return QString();
}

bool LumoExecutor::refuseCircle(const Run& run, int from, int to) const {
    const int line = run.program.firstBadCircle(from, to);
    if (line < 0) {
        return false;
    }
    warn(circleText(run.program.circleFaultAt(line), line));
    return true;
}

void LumoExecutor::walk(Run& run, int line) {
    queueLine = line;
    queueNeeded = true;
    forgetMotions();
    weldCut_ = false;
    kordservice()->command(this, command::reset, static_cast<const ModuleObject*>(nullptr));
    if (!isAborted()) {
        switchOffByHand();
    }
    if (!isAborted()) {
        settleBeforeMoving();
    }
    line_ = line;
    if (!isAborted()) {
        takeUp(run, line);
    }
    if (!isAborted()) {
        stopped_.reset();  // the run has what is left of it
        stopKept_ = false;
    }
    int i = line;
    for (; i < run.program.lineCount() && !isAborted() && isBusy(); ++i) {
        if (!run.program.isExecuted(i)) {
            continue;
        }
        line_ = i;
        inStatement_ = true;
        if (run.mode == handRun) {
            m(key::executeLine)->setValue(this, i);
        }
        m(key::currentLine)->setValue(this, i);
        if (isAborted()) {
            return;
        }
        const int code = execProgram(i);
        qDebug() << "execute ----" << i;
        if (isAborted()) {
            return;
        }
        if (code != 0) {
            failRun(code);
            return;
        }
    }
    if (!isAborted()) {
        inStatement_ = false;
        resume_.hold(run.original(line_));  // a stop in the closing leaves the last line
        endWeldOfWalk(i == run.program.lineCount());
    }
}

bool LumoExecutor::litByHand() {
    return isLitByHand();
}

void LumoExecutor::switchOffByHand() {
    for (const I_PORT output : takeLitByHand()) {
        writePort({output, 0.0, PortStep::Role::SwitchOff});
    }
}

void LumoExecutor::endWeldOfWalk(bool reachedEnd) {
    settleCutWeld();
    if (isAborted()) {
        return;
    }
    // Asks the laser too, not only the flag: others may write that.
    const bool flagged = m(key::weldOpen)->getBool(false);
    if (weld_ != Weld::Dark || (reachedEnd && flagged)) {
        closeLaser();
    }
    // Where somebody wrote the state the walk ends like a pause, and the weld can be resumed.
    if (reachedEnd && flagged) {
        setWeldFlag(false);
    }
}

void LumoExecutor::step(Run& run, int line) {
    forgetMotions();
    kordservice()->command(this, command::reset, static_cast<const ModuleObject*>(nullptr));
    if (!isAborted()) {
        switchOffByHand();
    }
    if (!isAborted()) {
        settleBeforeMoving();
    }
    if (isAborted() || !run.program.isExecuted(line)) {
        return;
    }
    line_ = line;
    inStatement_ = true;
    m(key::executeLine)->setValue(this, line);
    if (isAborted()) {
        return;
    }
    ModuleObject* const stmt = run.program.statement(line);
    const int code = addCmd(stmt);
    if (code != 0) {
        failRun(code);
        return;
    }
    if (isAborted()) {
        return;
    }
    kordservice()->command(this, command::enough, static_cast<const ModuleObject*>(nullptr));
    if (!isAborted()) {
        waitMoveing(stmt, QStringLiteral("runOnce"));
    }
}

int LumoExecutor::execProgram(int line) {
    if (!run_) {
        return 0;
    }
    ModuleObject* const stmt = run_->program.statement(line);
    const QString type = stmt->c(field::type, false)->getString(QString());
    m(key::currentType)->setValue(this, type);
    qDebug() << "exec program" << line << type;
    if (isAborted()) {
        return 0;
    }
    if (run_->program.isMove(line)) {
        if (queueLine >= 0 && line >= queueLine && queueNeeded) {
            const int code = moveAll(line);
            if (code != 0 || isAborted()) {
                return code;
            }
        }
        storeCurrentMoveData(stmt, type);
        return isAborted() ? 0 : waitMoveing(stmt, QStringLiteral("start"));
    }
    if (type == statement::param) {
        changeAOParamUpdate(stmt);
        return 0;
    }
    if (type == statement::open) {
        return limitopenLaser(stmt);
    }
    if (type == statement::close) {
        return limitcloseLaser();
    }
    if (type == statement::setDO) {
        return setDO(stmt);
    }
    if (type == statement::waitDI) {
        return waitDI(stmt);
    }
    return type == statement::delay ? delay(stmt) : 0;
}

int LumoExecutor::moveAll(int line) {
    if (!run_) {
        return 0;
    }
    const RunProgram& program = run_->program;
    for (int i = line; i < program.lineCount(); ++i) {
        queueLine = i;
        if (!program.isMove(i) || !program.isExecuted(i)) {
            queueNeeded = true;
            break;
        }
        queueNeeded = false;
        const int code = addCmd(program.statement(i));
        if (code != 0 || isAborted()) {
            return code;
        }
    }
    kordservice()->command(this, command::enough, static_cast<const ModuleObject*>(nullptr));
    return 0;
}

int LumoExecutor::addCmd(ModuleObject* stmt) {
    const QString type = stmt->c(field::type, false)->getString(QString());
    if (type == statement::moveJ) {
        addMoveJCmd(stmt);
    } else if (type == statement::moveL) {
        addMoveLCmd(stmt);
    } else if (type == statement::moveC) {
        addMoveCCmd(stmt);
    } else if (type == statement::moveCC) {
        return addMoveCCCmd(stmt);
    }
    return 0;
}

void LumoExecutor::failRun(int code) {
    const QString circleError = run_ ? run_->circleError : QString();
    if (run_ && !isAborted()) {
        pause();
    }
    showMessage(QMessageBox::Critical, tr("运行错误"),
                circleError.isEmpty()
                    ? tr("机器人运动错误：-0x%1").arg(QString::number(-static_cast<qint64>(code), 16))
                    : circleError);
}

void LumoExecutor::endRun() {
    if (!isAborted() && !run_->isStep) {
        resume_.hold(run_->original(line_));
    }
    inStatement_ = false;
    queuedLast_ = nullptr;
    run_ = nullptr;
    line_ = -1;
    if (!isIdle()) {
        setState(word::idle);
    }
    changeDepth(-1);
}

void LumoExecutor::pause() {
    qDebug() << "pause";
    if (stopping_) {
        return;  // the stop does all that a pause would, and must not wait for its closing
    }
    const int mine = ++aborts_;
    changeDepth(+1);
    // The robot may still say "idle" just after motions were handed over.
    if (m(key::robotState)->getString() != word::idle || outstanding() > 0) {
        kordservice()->command(this, command::stop, static_cast<const ModuleObject*>(nullptr));
    }
    forgetMotions();
    waiter_.end(WaitEnd::Abort);
    keepStop();
    if (mine == aborts_) {  // else somebody who heard of this stopped everything meanwhile
        closeLaser();
    }
    setState(word::idle);
    changeDepth(-1);
}

void LumoExecutor::estop(const QVariant& var) {
    if (var.toString() == word::on) {
        return;
    }
    if (!isIdle() || (run_ && !isAborted())) {
        emergencyStop();
    } else if (pendingSteps() > 0 || closing_ == sequence_) {
        // The closing of a pause is still under way.
        const QScopedValueRollback<bool> stopping(stopping_, true);
        ++aborts_;
        waiter_.end(WaitEnd::Abort);
        shutDown();
    } else {
        switchOffByHand();
    }
}

void LumoExecutor::emergencyStop() {
    const QScopedValueRollback<bool> stopping(stopping_, true);
    ++aborts_;
    forgetMotions();
    waiter_.end(WaitEnd::Abort);
    kordservice()->command(this, command::stop, static_cast<const ModuleObject*>(nullptr));
    keepStop();
    shutDown();
    setState(word::idle);
}

void LumoExecutor::quit() {
    quitting_ = true;
    QMetaObject::invokeMethod(
        this, [this] { quitting_ = false; }, Qt::QueuedConnection);  // somebody goes on with the event loop
    if (depth_ > 0 || pendingSteps() > 0) {
        emergencyStop();
    } else {
        switchOffByHand();
    }
}

/// The subtree goes, and with it the ports: what is on has to be switched off while they can be read.
void LumoExecutor::onRemoved(const QString& name) {
    if (m()->root()->c(name) == m(key::lumo)) {
        quit();
    }
}

bool LumoExecutor::isIdle() const {
    return m(key::executeState)->getString() == word::idle;
}

bool LumoExecutor::isBusy() const {
    return m(key::executeState)->getString() == word::busy;
}

void LumoExecutor::setState(QLatin1String state) {
    m(key::executeState)->setValue(this, QString(state));
}

void LumoExecutor::changeDepth(int by) {
    depth_ += by;
    runDepth = depth_;
    emit activityChanged();
}

void LumoExecutor::warn(const QString& text) const {
    showMessage(QMessageBox::Warning, tr("运行错误"), text);
}

QString LumoExecutor::circleText(CircleFault fault, int line) {
    return (fault == CircleFault::Coincident ? tr("第 %1 行：整圆的点重合，无法确定圆")
                                             : tr("第 %1 行：整圆的三个点共线，无法确定圆"))
        .arg(line + 1);
}
