#pragma once

#include "simulator/jog.h"

#include <QVector>
#include <QWidget>

namespace app {

class HoldButton;

/// "J1" or "RX".
QString jogAxisName(sim::JogFrame frame, int axis);
/// Metres or radians of one millimetre or degree of an axis.
double jogUnit(sim::JogFrame frame, int axis);

/// The twelve jog keys: minus and plus of each axis.
class JogKeys : public QWidget {
    Q_OBJECT
public:
    explicit JogKeys(QWidget* parent = nullptr);

    /// Names the axes, and lets go of what is held.
    void setFrame(sim::JogFrame frame);
    void letGo();

signals:
    /// Only changes; `direction` is -1 or 1.
    void held(int axis, int direction, bool on);

private:
    QVector<HoldButton*> keys_;
};

}  // namespace app
