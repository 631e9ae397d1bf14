#include "runner/treeoperator.h"

#include "mendo/modulemanager.h"
#include "program/words.h"
#include "runner/project.h"
#include "runner/stationpage.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace run {

using mendo::ModuleObject;

namespace {

/// A value as the tree stores it: whole numbers as integers.
QVariant scalar(const QJsonValue& value) {
    if (value.isNull()) {
        return {};
    }
    const double number = value.toDouble();
    if (value.isDouble() && number == std::trunc(number) &&
        std::abs(number) <= std::numeric_limits<int>::max()) {
        return int(number);
    }
    return value.toVariant();
}

}  // namespace

/// Counts a write until it returns.
class TreeOperator::Writing {
public:
    explicit Writing(TreeOperator* owner) : owner_(owner) { ++owner_->writing_; }
    ~Writing() {
        --owner_->writing_;
        emit owner_->written();
    }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

private:
    TreeOperator* owner_;
};

bool TreeOperator::isIdle() {
    return m(prog::key::executeState)->getString() == prog::word::idle;
}

void TreeOperator::write(QLatin1String path, const QVariant& value) {
    m(path)->setValue(this, value);
}

// The page copies nodes that it has read elsewhere; loading the JSON gives the same nodes.
void TreeOperator::loadProject(const QJsonValue& content) {
    QJsonValue program = content.isUndefined() ? QJsonValue(QJsonArray()) : content;
    if (content.isArray()) {
        QJsonArray statements = content.toArray();
        const auto toolset = std::find_if(
            statements.begin(), statements.end(),
            [](const QJsonValue& element) { return element.toObject().contains(prog::field::end); });
        if (toolset != statements.end()) {
            m(prog::key::toolset)->loadJson(this, *toolset);
            statements.erase(toolset);
        }
        program = statements;
    }
    m(prog::key::program)->loadJson(this, program);
}

void TreeOperator::loadProject(const Project& project) {
    const QJsonValue toolset = project.toolset();
    if (!toolset.isUndefined()) {
        m(prog::key::toolset)->loadJson(this, toolset);
    }
    m(prog::key::program)->loadList(this, project.statementCount(), [&project](int line) {
        return project.statement(line);
    });
}

void TreeOperator::resetResumeData() {
    write(prog::key::currentLine, 0);
    write(prog::key::currentType, 0);
    write(prog::key::currentMoveType, 0);
    m(prog::key::currentStartPoint)->clear(this, true, false);
    m(prog::key::currentPausePoint)->clear(this, true, false);
    write(prog::key::weldOpen, false);
}

void TreeOperator::setUpRuns(double overlapMm, const std::optional<double>& dryPercent) {
    if (overlapMm > 0.0) {
        write(prog::key::executeOverlap, overlapMm);
    }
    if (dryPercent) {
        write(prog::key::executeDrySpeed, *dryPercent);
        write(prog::key::executeDry, true);
    }
}

void TreeOperator::setWeld(bool on) {
    write(prog::key::weldSwitch, on);
}

void TreeOperator::setHandWeld(bool on) {
    write(prog::key::handWeldSwitch, on);
}

void TreeOperator::setMonitoring(bool on) {
    stationPage_->setMonitoring(on);
}

int TreeOperator::lineCount() {
    return m(prog::key::program)->cmobjCount();
}

void TreeOperator::insertStatement(int line, const QJsonObject& statement) {
    const Writing writing(this);
    auto* record = new ModuleObject(ModuleObject::generateId(m(prog::key::program)));
    record->loadJson(this, statement);
    m(prog::key::program)->insert(this, record, true, line);
}

void TreeOperator::removeStatement(int line) {
    const Writing writing(this);
    m(prog::key::program)->remove(this, mIndex(line));
}

void TreeOperator::moveStatement(int line, int to) {
    const Writing writing(this);
    m(prog::key::program)->reorder(this, line, to);
}

void TreeOperator::enableStatement(int line, bool on) {
    const Writing writing(this);
    m(prog::key::program)->c(line)->set(this, prog::field::execute, on);
}

void TreeOperator::prepareRun(int line) {
    resetResumeData();
    *runMode_ = prog::runmode::byHand;
    write(prog::key::processTime, 0);
    write(prog::key::currentLine, line);
}

void TreeOperator::prepareStep() {
    *runMode_ = prog::runmode::singleStep;
    write(prog::key::weldOpen, false);
}

void TreeOperator::trigger(QLatin1String trigger, int runMode, int line, QObject* sender) {
    *runMode_ = runMode;
    const Writing writing(this);
    m(trigger)->setValue(sender, line);
}

void TreeOperator::start(int line) {
    trigger(prog::key::triggerStart, prog::runmode::byHand, line, this);
}

void TreeOperator::startStation(int line) {
    trigger(prog::key::triggerStart, prog::runmode::byStation, line, this);
}

void TreeOperator::once(int line, bool withSender) {
    trigger(prog::key::triggerOnce, prog::runmode::singleStep, line, withSender ? this : nullptr);
}

void TreeOperator::resume() {
    start(m(prog::key::currentLine)->getInt());
}

void TreeOperator::pause() {
    const Writing writing(this);
    m(prog::key::triggerPause)->trigger();
}

void TreeOperator::set(const QString& path, const QJsonValue& value) {
    const Writing writing(this);
    ModuleObject* node = m(path);
    if (value.isArray() || value.isObject()) {
        if (node->isNull()) {
            m()->root()->set(this, path, QVariant());
            node = m(path);
        }
        node->loadJson(this, value);
    } else {
        m()->root()->set(this, path, scalar(value));
    }
}

}  // namespace run
