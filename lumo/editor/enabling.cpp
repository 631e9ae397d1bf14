#include "editor/enabling.h"

#include "module/globals.h"
#include "module/host.h"
#include "module/keys.h"

#include <QWidget>

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

void EnablingRules::refreshUIEnable(bool enable) {
    if (isEnable_moveorder) {
        enableAll(buttons_.statementGroup, enable);
        enableAll(buttons_.editingGroup, enable);
        buttons_.pause->setEnabled(!enable);
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
    buttons_.pause->setEnabled(false);
    enableBatch(true);
    buttons_.multi->setEnabled(true);
}

void EnablingRules::leaveMultiSelection() {
    refreshUIEnable(true);
    buttons_.pause->setEnabled(true);
    buttons_.multi->setEnabled(true);
    enableBatch(false);
}

}  // namespace lumo
