#include "panel/keypad.h"

#include "kord/controllermanager.h"
#include "program/words.h"

#include <QPointer>
#include <QTimer>

using namespace prog;

namespace lumo {

namespace {

constexpr int longPressMs = 3000;
/// A key released with more than this left of the long press was down for at most 500 ms.
constexpr int clickMarginMs = 2499;

/// Measures how long a key is down. It is the value of the key's entry in the tree.
class KeyTimer : public QTimer {
    Q_OBJECT
public:
    explicit KeyTimer(ModuleObject* entry) : QTimer(entry) {
        setTimerType(Qt::PreciseTimer);
        setInterval(longPressMs);
        connect(this, &QTimer::timeout, entry, [this, entry] {
            longPress_ = true;
            entry->set(entry, QStringLiteral("pressing"), true);
        });
    }

    /// Ends the press. Returns whether it was a click.
    bool release() {
        const bool click = !longPress_ && remainingTime() > clickMarginMs;
        stop();
        longPress_ = false;
        return click;
    }

private:
    bool longPress_ = false;
};

KeyTimer* timerOf(const ModuleObject* entry) {
    return qobject_cast<KeyTimer*>(entry->value().value<QObject*>());
}

}  // namespace

Keypad::Keypad(QObject* parent)
    : QObject(parent),
      report_(kord::ControllerManager::cmdItemMobj(QStringLiteral("endtool.keypad.state_change"),
                                                   QStringLiteral("notify"))) {
    connect(report_, &ModuleObject::changed, this, &Keypad::forward);
}

Keypad::~Keypad() {
    // No report of the keys' release will be heard any more.
    const QList<ModuleObject*> entries = m(key::keypad)->cmobjs();
    for (const ModuleObject* entry : entries) {
        if (KeyTimer* timer = timerOf(entry)) {
            timer->release();
        }
    }
}

void Keypad::forward() {
    const QPointer<Keypad> self(this);
    const QList<ModuleObject*> keys = report_->cmobjs();
    for (const ModuleObject* reported : keys) {
        ModuleObject* entry = m(key::keypad)->c(reported->name());
        if (entry->isNull()) {
            continue;
        }
        if (reported->getBool()) {
            keyUp(entry);
        } else {
            keyDown(entry);
        }
        if (!self) {
            return;  // a listener of the key deleted the page
        }
    }
}

void Keypad::keyDown(ModuleObject* entry) {
    KeyTimer* timer = timerOf(entry);
    if (!timer) {
        timer = new KeyTimer(entry);
        entry->setValue(this, QVariant::fromValue<QObject*>(timer));
    }
    timer->start();
}

void Keypad::keyUp(ModuleObject* entry) {
    KeyTimer* timer = timerOf(entry);
    if (timer && timer->release()) {
        entry->set(this, QStringLiteral("clicked"), true);
    }
}

}  // namespace lumo

#include "keypad.moc"
