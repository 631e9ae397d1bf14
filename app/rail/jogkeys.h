#pragma once

#include "simulator/jog.h"

#include <QVector>
#include <QWidget>

namespace app {

class HoldButton;

/// "J1" or "RX".
QString jogAxisName(sim::JogFrame frame, int axis);
/// One millimetre in metres, or one degree in radians, as the axis needs it.
double jogUnit(sim::JogFrame frame, int axis);

/// The twelve jog keys, minus and plus for each axis.
class JogKeys : public QWidget {
    Q_OBJECT
public:
    explicit JogKeys(QWidget* parent = nullptr);

    /// Sets the axis names and releases held keys.
    void setFrame(sim::JogFrame frame);
    void release();

signals:
    /// When a key is pressed or released; `direction` is -1 or 1.
    void held(int axis, int direction, bool on);

protected:
    void changeEvent(QEvent* event) override;

private:
    void fit();

    QVector<HoldButton*> keys_;
};

}  // namespace app
