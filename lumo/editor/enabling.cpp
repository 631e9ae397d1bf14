#include "editor/enabling.h"

#include "module/globals.h"
#include "module/host.h"
#include "program/words.h"

#include <QWidget>

using namespace prog;

namespace lumo {

namespace {

void enableAll(const QList<QWidget*>& buttons, bool enable) {
    for (QWidget* button : buttons) {
        button->setEnabled(enable);
    }
}

QString drivePower() {
    return m(key::robotPower)->getString();
}

}  // namespace

EnablingRules::EnablingRules(EditorButtons buttons) : buttons_(std::move(buttons)) {}

void EnablingRules::enableBatch(bool enable) {
    buttons_.batchSpeed->setEnabled(enable);
    buttons_.batchZone->setEnabled(enable);
}

void EnablingRules::enablePause(bool byRule) {
    pauseByRule_ = byRule;
    buttons_.pause->setEnabled(byRule || running_);
}

void EnablingRules::running(bool anything) {
    running_ = anything;
    enablePause(pauseByRule_);
}

void EnablingRules::refreshUIEnable(bool enable) {
    if (isEnable_moveorder) {
        enableAll(buttons_.statementGroup, enable);
        enableAll(buttons_.editingGroup, enable);
        enablePause(!enable);
    }
}

void EnablingRules::refreshMoveOrderEnable(bool enable) {
    const QString power = drivePower();
    if (power == word::off) {
        enableAll(buttons_.statementGroup, enable);
    }
    if (!enable && power == word::on) {
        enableAll(buttons_.statementGroup, false);
    }
    enableAll(buttons_.runTools, enable);
    enablePause(enable);
}

void EnablingRules::rcPower(const QString& power, bool multiSelection) {
    if (power == word::on) {
        enableAll(buttons_.statementGroup, false);
        enableAll(buttons_.editingGroup, false);
    } else if (power == word::off) {
        if (isEnable_moveorder) {
            enableAll(buttons_.statementGroup, true);
        }
        enableAll(buttons_.editingGroup, true);
        enableBatch(multiSelection);
    }
}

void EnablingRules::executorState(const QString& state) {
    if (state == word::busy) {
        refreshUIEnable(false);
    } else if (state == word::idle && drivePower() == word::off) {
        refreshUIEnable(true);
        enableBatch(false);
    }
}

void EnablingRules::enterMultiSelection() {
    refreshUIEnable(false);
    enablePause(false);
    enableBatch(true);
    buttons_.multi->setEnabled(true);
}

void EnablingRules::leaveMultiSelection() {
    refreshUIEnable(true);
    enablePause(true);
    buttons_.multi->setEnabled(true);
    enableBatch(false);
}

}  // namespace lumo
