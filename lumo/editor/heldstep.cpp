#include "editor/heldstep.h"

#include "editor/programtable.h"
#include "editor/runcontrols.h"
#include "module/globals.h"
#include "program/statement.h"
#include "program/words.h"
#include "widgets/holdbutton.h"

using namespace prog;

namespace lumo {

namespace {

constexpr int singleStep = 2;
/// A press that is shorter is a tap.
constexpr int tapMs = 200;

}  // namespace

HeldStep::HeldStep(ProgramTable* table, RunControls* run, QObject* parent)
    : QObject(parent), table_(table), run_(run) {
    hold_.setSingleShot(true);
    hold_.setInterval(tapMs);
    connect(&hold_, &QTimer::timeout, this, &HeldStep::begin);
}

void HeldStep::follow(HoldButton* button, int by) {
    connect(button, &HoldButton::held, this, [this, by](bool on) { held(by, on); });
}

void HeldStep::held(int by, bool on) {
    if (on) {
        by_ = by;
        hold_.start();
    } else {
        hold_.stop();
        stop();
    }
}

void HeldStep::begin() {
    const int row = pointFrom(table_->selectedRow(), by_);
    if (row < 0 || isRunning()) {
        return;
    }
    table_->selectOnly(row);
    isDue_ = true;
    run_->moveToPoint();
    QMetaObject::invokeMethod(
        this, [this] { isDue_ = false; }, Qt::QueuedConnection);
}

/// The next line that moves and is executed; -1 for none.
int HeldStep::pointFrom(int row, int by) const {
    const ModuleObject* const program = ProgramTable::program();
    for (int next = row + by; next >= 0 && next < program->cmobjCount(); next += by) {
        const ModuleObject* const line = program->c(next);
        if (isMove(line->c(field::type)->getString()) && isExecuted(line)) {
            return next;
        }
    }
    return -1;
}

/// A step that has not begun yet begins first, and is stopped at once. One that has come to its point, or was
/// refused, leaves nothing to stop.
void HeldStep::stop() {
    const bool isStepping = isRunning() && hand_or_signalbing == singleStep;
    if (!isDue_ && !isStepping) {
        return;
    }
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (isRunning() && hand_or_signalbing == singleStep) {
                run_->pause();
            }
        },
        Qt::QueuedConnection);
}

}  // namespace lumo
