#pragma once

#include "simulator/jog.h"

#include <QWidget>

class QLabel;

namespace sim {
class Controller;
}

namespace app {

class Choice;
class JogKeys;
class PostureTable;

/// Moves the robot by hand, while the drive is on and no program runs: a joint, or the tool along and
/// about its own axes or those of the base; by steps, or as long as a key is held.
class JogBox : public QWidget {
    Q_OBJECT
public:
    /// The package's page has been made: the program's state is there to be followed.
    explicit JogBox(sim::Controller* controller, QWidget* parent = nullptr);

private:
    void onHeld(int axis, int direction, bool on);
    void refreshFrame();
    void refreshKeys();
    void endJog();
    QString obstacle() const;
    static QString reason(sim::JogAnswer answer);

    sim::Controller* controller_;
    Choice* frame_;
    Choice* step_;
    Choice* speed_;
    PostureTable* posture_;
    JogKeys* keys_;
    QLabel* answer_;
};

}  // namespace app
