#include "devices/porttest.h"

#include "equipment/handlit.h"
#include "equipment/handswitch.h"
#include "equipment/ports.h"
#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "module/host.h"
#include "program/signalcheck.h"
#include "program/words.h"
#include "widgets/way.h"

#include <QTimer>

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

QString nameOf(I_PORT port) {
    return m(key::port)->c(static_cast<int>(port))->c(field::name)->getString();
}

bool isOutput(I_PORT port) {
    return portInfo(port).kind == word::portOutput;
}

/// The lock that must be open for a test; nothing for an output without one.
std::optional<I_PORT> lockOf(I_PORT output) {
    if (output == DO_WIRE_PULLBACK) {
        return DO_WIRE_SAFETY_LOCK;
    }
    const Device* const device = deviceOf(output);
    return device ? std::make_optional(device->lock) : std::nullopt;
}

/// Also with a port that is out of use: its wiring may still be there.
bool isShared(I_PORT output) {
    const QString own = PortTarget::of(nameOf(output)).key();
    for (int other = 0; other < portCount; ++other) {
        const auto port = static_cast<I_PORT>(other);
        if (port != output && isOutput(port) && !nameOf(port).isEmpty() &&
            PortTarget::of(nameOf(port)).key() == own) {
            return true;
        }
    }
    return false;
}

bool isBusy() {
    return isRunning() || m(key::executeState)->getString() != word::idle ||
           (executor && executor->pendingSteps() > 0);
}

}  // namespace

TestBar testBar(I_PORT output, bool isSaved) {
    if (output == DO_LASER_ENABLE || output == DO_LASER_SAFETY_LOCK) {
        return TestBar::Laser;
    }
    if (!isSaved) {
        return TestBar::NotSaved;
    }
    if (!portEnabled(output) || nameOf(output).isEmpty()) {
        return TestBar::OutOfUse;
    }
    if (isShared(output)) {
        return TestBar::Shared;
    }
    if (isBusy()) {
        return TestBar::Running;
    }
    const std::optional<I_PORT> lock = lockOf(output);
    if (lock && !portState(*lock)) {
        return TestBar::Locked;
    }
    return portState(output) && !isLitByHand(output) ? TestBar::AlreadyOn : TestBar::None;
}

QString testBarText(TestBar bar) {
    switch (bar) {
        case TestBar::Laser:
            return TestButton::tr("激光只能在设备页上，在其保护之下打开。");
        case TestBar::OutOfUse:
            return TestButton::tr("端口未启用或未分配。");
        case TestBar::NotSaved:
            return TestButton::tr("请先按“确认”保存更改，然后再测试。");
        case TestBar::Shared:
            return TestButton::tr("另一个输出也分配到同一信号，请先改正分配。");
        case TestBar::Running:
            return TestButton::tr("程序运行时不能测试。");
        case TestBar::Locked:
            return TestButton::tr("保护已锁定，请先在设备页上解锁。");
        case TestBar::AlreadyOn:
            return TestButton::tr("输出已打开。");
        case TestBar::None:
            break;
    }
    return TestButton::tr("按住时打开，松开即关闭。");
}

namespace {

/// What a button says that cannot be pressed.
QString shortText(TestBar bar) {
    switch (bar) {
        case TestBar::OutOfUse:
            return TestButton::tr("未启用");
        case TestBar::NotSaved:
            return TestButton::tr("未保存");
        case TestBar::Shared:
            return TestButton::tr("重复分配");
        case TestBar::Running:
            return TestButton::tr("运行中");
        case TestBar::Locked:
            return TestButton::tr("已锁定");
        case TestBar::AlreadyOn:
            return TestButton::tr("已打开");
        case TestBar::Laser:
        case TestBar::None:
            break;
    }
    return TestButton::tr("测试");
}

}  // namespace

TestButton::TestButton(I_PORT output, QWidget* parent) : HoldButton(parent), output_(output) {
    setAutoRepeat(false);
    setText(shortText(TestBar::None));
    connect(this, &HoldButton::held, this, &TestButton::switchOutput);
}

QSize TestButton::sizeHint() const {
    int widest = 0;
    for (const TestBar bar : {TestBar::OutOfUse, TestBar::NotSaved, TestBar::Shared, TestBar::Running,
                              TestBar::Locked, TestBar::AlreadyOn, TestBar::None}) {
        widest = std::max(widest, fontMetrics().horizontalAdvance(shortText(bar)));
    }
    const QSize own = HoldButton::sizeHint();
    return {own.width() + widest - fontMetrics().horizontalAdvance(text()), own.height()};
}

TestButton::~TestButton() {
    switchOff();
}

void TestButton::refresh(bool isSaved) {
    isSaved_ = isSaved;
    TestBar bar = testBar(output_, isSaved);
    // A test that something else has ended: only a new press begins another one.
    if (isTesting_ && (bar != TestBar::None || !isLitByHand(output_))) {
        letGo();
    }
    if (bar == TestBar::None && !isTesting_ && isLitByHand(output_)) {
        bar = TestBar::AlreadyOn;  // at the device page, which has the button for it
    }
    setEnabled(bar == TestBar::None);
    setText(shortText(bar));
    setToolTip(testBarText(bar));
}

void TestButton::switchOutput(bool on) {
    on ? switchOn() : switchOff();
}

void TestButton::switchOn() {
    constexpr int longestMs = 30000;
    if (testBar(output_, isSaved_) != TestBar::None || isLitByHand(output_) || portState(output_)) {
        letGo();
        return;
    }
    isTesting_ = true;
    const int mine = ++test_;
    QTimer::singleShot(longestMs, this, [this, mine] {
        if (mine == test_) {
            letGo();
        }
    });
    switchByHand(this, output_, true);  // last: a listener of the write may delete the page
}

/// What has been switched off meanwhile may have been switched on by a program.
void TestButton::switchOff() {
    if (!isTesting_) {
        return;
    }
    isTesting_ = false;
    if (isLitByHand(output_)) {
        switchOffPort(nullptr, output_);  // of a lock, its device first
    }
}

}  // namespace lumo
