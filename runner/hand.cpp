#include "runner/hand.h"

#include "mendo/modulemanager.h"
#include "runner/stationpage.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace run {

using mendo::ModuleObject;

namespace {

constexpr int handRun = 0;
constexpr int singleStep = 2;

const QString currentLine = QStringLiteral("lumo.current.line");
const QString weldOpen = QStringLiteral("lumo.current.openmiddlecolse");
const QString programPath = QStringLiteral("lumo.program");
const QString pauseTrigger = QStringLiteral("lumo.execute.trigger.pause");

/// A value as the tree keeps it: whole numbers as integers.
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

/// The time of a write that may return only when what it causes is over.
class Hand::Pressing {
public:
    explicit Pressing(Hand* hand) : hand_(hand) { ++hand_->pressing_; }
    ~Pressing() {
        --hand_->pressing_;
        emit hand_->released();
    }
    Pressing(const Pressing&) = delete;
    Pressing& operator=(const Pressing&) = delete;

private:
    Hand* hand_;
};

bool Hand::isIdle() {
    return m(QStringLiteral("lumo.execute.state"))->getString() == QLatin1String("idle");
}

void Hand::write(const QString& path, const QVariant& value) {
    m(path)->setValue(this, value);
}

// Reading JSON into the nodes does what the page does with detached copies of them.
void Hand::loadProject(const QJsonValue& content) {
    QJsonValue program = content.isUndefined() ? QJsonValue(QJsonArray()) : content;
    if (content.isArray()) {
        QJsonArray statements = content.toArray();
        const auto toolset = std::find_if(
            statements.begin(), statements.end(),
            [](const QJsonValue& element) { return element.toObject().contains(QStringLiteral("end")); });
        if (toolset != statements.end()) {
            m(QStringLiteral("lumo.toolset"))->loadJson(this, *toolset);
            statements.erase(toolset);
        }
        program = statements;
    }
    m(programPath)->loadJson(this, program);
}

void Hand::resetResumeData() {
    write(currentLine, 0);
    write(QStringLiteral("lumo.current.programtype"), 0);
    write(QStringLiteral("lumo.current.programmovetype"), 0);
    m(QStringLiteral("lumo.current.startpoint"))->clear(this, true, false);
    m(QStringLiteral("lumo.current.pausepoint"))->clear(this, true, false);
    write(weldOpen, false);
}

void Hand::setWeld(bool on) {
    write(QStringLiteral("lumo.allWeldBtnstatus.weldbtn"), on);
}

void Hand::setHandWeld(bool on) {
    write(QStringLiteral("lumo.allWeldBtnstatus.handweldbtn"), on);
}

void Hand::setMonitoring(bool on) {
    stationPage_->setMonitoring(on);
}

int Hand::lineCount() {
    return m(programPath)->cmobjCount();
}

void Hand::insertStatement(int line, const QJsonObject& statement) {
    const Pressing pressing(this);
    auto* record = new ModuleObject(ModuleObject::generateId(m(programPath)));
    record->loadJson(this, statement);
    m(programPath)->insert(this, record, true, line);
}

void Hand::removeStatement(int line) {
    const Pressing pressing(this);
    m(programPath)->remove(this, mIndex(line));
}

void Hand::moveStatement(int line, int to) {
    const Pressing pressing(this);
    m(programPath)->reorder(this, line, to);
}

void Hand::enableStatement(int line, bool on) {
    const Pressing pressing(this);
    m(programPath)->c(line)->set(this, QStringLiteral("execute"), on);
}

void Hand::prepareRun(int line) {
    resetResumeData();
    *runMode_ = handRun;
    write(QStringLiteral("lumo.processTime"), 0);
    write(currentLine, line);
}

void Hand::prepareStep() {
    *runMode_ = singleStep;
    write(weldOpen, false);
}

void Hand::press(const QString& trigger, int runMode, int line) {
    *runMode_ = runMode;
    const Pressing pressing(this);
    write(trigger, line);
}

void Hand::start(int line) {
    press(QStringLiteral("lumo.execute.trigger.start"), handRun, line);
}

void Hand::once(int line) {
    press(QStringLiteral("lumo.execute.trigger.once"), singleStep, line);
}

void Hand::resume() {
    start(m(currentLine)->getInt());
}

void Hand::pause() {
    const Pressing pressing(this);
    m(pauseTrigger)->trigger();
}

void Hand::set(const QString& path, const QJsonValue& value) {
    const Pressing pressing(this);
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
