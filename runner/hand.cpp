#include "runner/hand.h"

#include "mendo/modulemanager.h"
#include "runner/stationpage.h"

#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <limits>

namespace run {

using mendo::ModuleObject;

namespace {

constexpr int kHandRun = 0;
constexpr int kSingleStep = 2;

const QString kCurrentLine = QStringLiteral("lumo.current.line");
const QString kWeldOpen = QStringLiteral("lumo.current.openmiddlecolse");
const QString kPauseTrigger = QStringLiteral("lumo.execute.trigger.pause");

/// A value as the tree keeps it: whole numbers as integers.
QVariant scalar(const QJsonValue& value) {
    if (value.isNull())
        return {};
    const double number = value.toDouble();
    if (value.isDouble() && number == std::trunc(number) &&
        std::abs(number) <= std::numeric_limits<int>::max())
        return int(number);
    return value.toVariant();
}

}  // namespace

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
    m(QStringLiteral("lumo.program"))->loadJson(this, program);
}

void Hand::resetResumeData() {
    write(kCurrentLine, 0);
    write(QStringLiteral("lumo.current.programtype"), 0);
    write(QStringLiteral("lumo.current.programmovetype"), 0);
    m(QStringLiteral("lumo.current.startpoint"))->clear(this, true, false);
    m(QStringLiteral("lumo.current.pausepoint"))->clear(this, true, false);
    write(kWeldOpen, false);
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

void Hand::prepareRun(int line) {
    resetResumeData();
    *runMode_ = kHandRun;
    write(QStringLiteral("lumo.processTime"), 0);
    write(kCurrentLine, line);
}

void Hand::prepareStep() {
    *runMode_ = kSingleStep;
    write(kWeldOpen, false);
}

void Hand::press(const QString& trigger, int runMode, int line) {
    *runMode_ = runMode;
    ++pressing_;
    write(trigger, line);
    --pressing_;
    emit released();
}

void Hand::start(int line) {
    press(QStringLiteral("lumo.execute.trigger.start"), kHandRun, line);
}

void Hand::once(int line) {
    press(QStringLiteral("lumo.execute.trigger.once"), kSingleStep, line);
}

void Hand::resume() {
    start(m(kCurrentLine)->getInt());
}

void Hand::pause() {
    ++pressing_;
    m(kPauseTrigger)->trigger();
    --pressing_;
    emit released();
}

void Hand::set(const QString& path, const QJsonValue& value) {
    ++pressing_;
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
    --pressing_;
    emit released();
}

}  // namespace run
