#include "executor/lumoexecutor.h"

#include "equipment/handlit.h"
#include "executor/driver.h"
#include "program/words.h"

using namespace prog;

namespace {

bool isStepOf(const QString& caller) {
    return caller == QLatin1String("runOnce");
}

}  // namespace

LumoExecutor* executor = nullptr;

LumoExecutor::LumoExecutor(ModuleObject* lumo)
    : QObject(lumo), driver_(std::make_unique<lumo::Driver>(this)) {
    connect(m(key::triggerStart), &ModuleObject::changed, this, &LumoExecutor::start);
    connect(m(key::triggerPause), &ModuleObject::changed, this, &LumoExecutor::pause);
    connect(m(key::triggerOnce), &ModuleObject::changed, this, &LumoExecutor::runOnce);
    connect(m(key::robotPower), &ModuleObject::changed, this, &LumoExecutor::estop);
    for (const QString& kind : {QStringLiteral("j"), QStringLiteral("l"), QStringLiteral("c")}) {
        connect(kordservice()->commandNode(QStringLiteral("move.") + kind), &ModuleObject::changed, this,
                [this, kind](const QVariant& result) { handleMove(kind, result.toInt()); });
    }
    connect(driver_.get(), &lumo::Driver::activityChanged, this, &LumoExecutor::activityChanged);
}

LumoExecutor::~LumoExecutor() {
    driver_->quit();
}

QVariantMap LumoExecutor::waiting() const {
    return driver_->waiting();
}

int LumoExecutor::pendingSteps() const {
    return driver_->laser().pendingSteps();
}

int LumoExecutor::depth() const {
    return driver_->depth();
}

bool LumoExecutor::litByHand() {
    return lumo::isLitByHand();
}

bool LumoExecutor::finished() const {
    return driver_->isFinished();
}

bool LumoExecutor::reachedEnd() const {
    return driver_->reachedEnd();
}

int LumoExecutor::startLine() const {
    return finished() ? 0 : m(key::currentLine)->getInt();
}

lumo::Outlook LumoExecutor::outlook(int line) const {
    return driver_->outlook(line);
}

lumo::ResumeView LumoExecutor::resumeView(int line) const {
    return driver_->resumeView(line);
}

QVariantMap LumoExecutor::startAt(int line) const {
    return outlook(line).map();
}

int LumoExecutor::execProgram(int line) {
    return driver_->execProgram(line);
}

int LumoExecutor::moveAll(int line) {
    return driver_->motions().queueBatch(line);
}

int LumoExecutor::addCmd(ModuleObject* stmt) {
    return driver_->motions().queue(stmt);
}

void LumoExecutor::addMoveJCmd(ModuleObject* stmt) {
    driver_->motions().queueMoveJ(stmt);
}

void LumoExecutor::addMoveLCmd(ModuleObject* stmt) {
    driver_->motions().queueMoveL(stmt);
}

void LumoExecutor::addMoveCCmd(ModuleObject* stmt) {
    driver_->motions().queueMoveC(stmt);
}

int LumoExecutor::addMoveCCCmd(ModuleObject* stmt) {
    return driver_->motions().queueMoveCC(stmt);
}

int LumoExecutor::waitMoveing(ModuleObject* stmt, const QString& caller) {
    return driver_->motions().await(stmt, isStepOf(caller));
}

bool LumoExecutor::IsLastMoveBeforeStop(ModuleObject* stmt, const QString& caller) const {
    return !isStepOf(caller) &&
           isLastBeforeClose(stmt->indexInPmobj(), stmt->pmobj()->size(), kindsIn(stmt->pmobj()));
}

void LumoExecutor::storeCurrentMoveData(ModuleObject* stmt, const QString& type) {
    driver_->motions().storeCurrent(stmt, type);
}

ModuleObject* LumoExecutor::findNearestForwardParam(ModuleObject* stmt) const {
    return driver_->motions().openBefore(stmt);
}

bool LumoExecutor::weldingPermitted() {
    return lumo::weldingPermitted();
}

int LumoExecutor::limitopenLaser(ModuleObject* stmt) {
    const Statement open = Statement::from(stmt ? stmt : ModuleObject::null());
    driver_->laser().openIfPermitted(stmt ? &open : nullptr);
    return 0;
}

int LumoExecutor::limitcloseLaser() {
    driver_->laser().closeIfPermitted();
    return 0;
}

int LumoExecutor::openLaser() {
    driver_->laser().open();
    return 0;
}

int LumoExecutor::closeLaser() {
    driver_->laser().close();
    return 0;
}

void LumoExecutor::changeAOParamUpdate(ModuleObject* stmt) {
    if (stmt) {
        driver_->laser().takeOver(Statement::from(stmt).set);
    }
}

void LumoExecutor::changeAOParam() {
    driver_->laser().writeParameters();
}

int LumoExecutor::setDO(ModuleObject* stmt) {
    driver_->cell().setDO(Statement::from(stmt));
    return 0;
}

int LumoExecutor::waitDI(ModuleObject* stmt) {
    driver_->cell().waitDI(Statement::from(stmt));
    return 0;
}

int LumoExecutor::delay(ModuleObject* stmt) {
    driver_->cell().delay(Statement::from(stmt));
    return 0;
}

void LumoExecutor::runOnce(const QVariant& var, const QVariant& /*old*/, QObject* context) {
    driver_->runOnce(var, context != nullptr);
}

void LumoExecutor::start(const QVariant& var) {
    driver_->start(var);
}

void LumoExecutor::pause() {
    driver_->pause();
}

void LumoExecutor::estop(const QVariant& var) {
    driver_->estop(var);
}

void LumoExecutor::handleMove(const QString& type, int code) {
    driver_->motions().onResult(type, code);
}
