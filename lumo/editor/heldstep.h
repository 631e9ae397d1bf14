#pragma once

#include <QObject>
#include <QTimer>

class ProgramTable;
class RunControls;

namespace lumo {

class HoldButton;

/// Steps through the points of the program while a button is held: forward to the next move below the
/// selected line, or back to the one above, as a single step with the laser off. Letting the button go stops
/// the robot. At the point it stays; the next press goes on.
class HeldStep : public QObject {
    Q_OBJECT
public:
    HeldStep(ProgramTable* table, RunControls* run, QObject* parent);

    /// `by`: +1 or -1.
    void follow(HoldButton* button, int by);

private:
    void held(int by, bool on);
    [[nodiscard]] int pointFrom(int row, int by) const;
    void begin();
    void stop();

    ProgramTable* table_;
    RunControls* run_;
    QTimer hold_;         ///< from the press until the step begins
    int by_ = 0;          ///< of the button that is held
    bool isDue_ = false;  ///< the step is asked for and has not begun
};

}  // namespace lumo
