#pragma once

#include <QVariantMap>

namespace lumo {

/// What an accepted start of the hand program at a line would do, and why.
struct Outlook {
    bool permitted = false;  ///< mode and switches permit welding: "open" and "close" statements are executed
    bool inWeld = false;   ///< the line lies in the weld that was left open: its moves have the weld's speed
    bool reopens = false;  ///< both: the laser is switched on before the first statement
    bool restOfArc = false;   ///< the line's arc was stopped: only what is left of it is run
    bool goesBack = false;    ///< the tool left the position of the stop: it goes back there first, laser off
    double distanceMm = 0.0;  ///< from there to the tool

    /// For programs that load the package: the members by their names.
    [[nodiscard]] QVariantMap map() const {
        return {{QStringLiteral("permitted"), permitted}, {QStringLiteral("inWeld"), inWeld},
                {QStringLiteral("reopens"), reopens},     {QStringLiteral("restOfArc"), restOfArc},
                {QStringLiteral("goesBack"), goesBack},   {QStringLiteral("distanceMm"), distanceMm}};
    }
};

}  // namespace lumo
