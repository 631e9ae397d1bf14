#pragma once

#include "module/host.h"

#include <QObject>

namespace lumo {

/// Turns the reports of the pendant's keys into `clicked` and `pressing` of `lumo.keypad`.
///
/// The controller reports a key that is down as false. A key that is released within 500 ms is a click. A key
/// held for 3 s is a long press, repeated every 3 s, and its release is no click. Nothing sets `clicked` or
/// `pressing` back to false: readers follow the writes.
class Keypad : public QObject {
    Q_OBJECT
public:
    explicit Keypad(QObject* parent);
    ~Keypad() override;

private:
    void forward();
    void keyDown(ModuleObject* entry);
    void keyUp(ModuleObject* entry);

    ModuleObject* report_;  ///< the controller's node, with one child for each key
};

}  // namespace lumo
