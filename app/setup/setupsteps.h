#pragma once

#include <QString>
#include <QVector>

namespace app {

/// A step of the first setup, as the tree has it now.
struct SetupStep {
    QString title;
    QString hint;    ///< what to do
    QString button;  ///< object name of the package's button that leads there; empty: nothing to press
    bool done = false;
};

/// Ports, a parameter set, the tool, the first point, the first weld. `hasWelded`: a run has welded
/// something.
[[nodiscard]] QVector<SetupStep> setupSteps(bool hasWelded);

}  // namespace app
