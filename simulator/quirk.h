#pragma once

#include <QString>

namespace sim {

/// How a simulated controller misbehaves.
enum class Quirk {
    Bunch,      ///< holds a result back for the next one: two in one pass of the event loop
    Sync,       ///< tells the result 0 inside the motion command, none when the motion is done
    Late,       ///< tells the result 0 for a stopped motion, 300 ms after the stop
    Double,     ///< tells every result twice, 1 ms apart
    WrongKind,  ///< writes move.j's results to move.l's node, move.l's to move.c's, move.c's to move.j's
    SlowState,  ///< tells the robot state 50 ms late
    NoResult,   ///< carries out the next motion ordered, but tells no result of it
    FailAtEnd,  ///< moves the next motion ordered to its target, then reports FailedAtEnd
};

}  // namespace sim
