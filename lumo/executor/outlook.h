#pragma once

namespace lumo {

/// What a start of the hand program at a line would find of a weld or an arc that was stopped.
struct Outlook {
    bool reopens = false;     ///< the line lies in the weld that was left open, and welding is permitted
    bool goesBack = false;    ///< the tool left the place of the stop: it goes back there first, dark
    double distanceMm = 0.0;  ///< how far it is away
};

}  // namespace lumo
