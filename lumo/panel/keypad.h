#pragma once

#include "module/host.h"

#include <QObject>

namespace lumo {

/// Turns the reports of the pendant's keys into `clicked` and `pressing` of `lumo.keypad`.
///
/// The controller reports a key that is down as false. A key let go within 500 ms is a click; one held
/// for 3 s is a long press, again every 3 s while it is held, and no click when it is let go. Nothing
/// sets `clicked` or `pressing` back to false: every write counts.
class Keypad : public QObject {
    Q_OBJECT
public:
    explicit Keypad(QObject* parent);
    ~Keypad() override;

private:
    void forward();
    void keyDown(ModuleObject* entry);
    void keyUp(ModuleObject* entry);

    ModuleObject* report_;  ///< of the controller; one child for each key
};

}  // namespace lumo
