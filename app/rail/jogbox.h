#pragma once

#include "simulator/jog.h"

#include <QWidget>

class QLabel;

namespace sim {
class Controller;
}

namespace app {

class SegmentedControl;
class JogKeys;
class PostureTable;

/// Jogs the robot while the drive is on and no program runs: a joint, or the tool along and about its own
/// axes or those of the base; in steps or while a key is held.
class JogBox : public QWidget {
    Q_OBJECT
public:
    /// Make it after the package's page, which makes the node of the program's state.
    explicit JogBox(sim::Controller* controller, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void fit();
    void onHeld(int axis, int direction, bool on);
    void refreshFrame();
    void refreshKeys();
    void endJog();
    QString obstacle() const;
    static QString reason(sim::JogAnswer answer);

    sim::Controller* controller_;
    SegmentedControl* frame_;
    SegmentedControl* step_;
    SegmentedControl* speed_;
    PostureTable* posture_;
    JogKeys* keys_;
    QLabel* answer_;
};

}  // namespace app
