#pragma once

#include "program/geometry.h"
#include "widgets/messagebox.h"

namespace lumo {

/// What the executor tells the operator: the text of the message, and its advice.
struct RunMessage {
    QString text;
    Advice advice;

    void show(QMessageBox::Icon icon) const;

    /// Something is refused because a run, a step or the closing of a stop is under way, as the tree has it
    /// now.
    [[nodiscard]] static RunMessage notIdle();
    /// The program has no such line; `count`: of its lines.
    [[nodiscard]] static RunMessage noLine(int count);
    [[nodiscard]] static RunMessage noPower();
    [[nodiscard]] static RunMessage robotMoves();
    /// A step at a line that moves nothing.
    [[nodiscard]] static RunMessage noMove(int line);
    /// `ofHand`: of the program on the project page, also below.
    [[nodiscard]] static RunMessage circle(prog::CircleFault fault, int line, bool ofHand);
    /// A motion ended with a negative result. `line`: whose motion it was; -1 on the way back to where the
    /// program stopped.
    [[nodiscard]] static RunMessage motionError(int code, int line, bool ofHand);
    /// The robot says that it is back where the program stopped, but is not; `mm`: how far it is away.
    [[nodiscard]] static RunMessage notBack(double mm);
};

}  // namespace lumo
