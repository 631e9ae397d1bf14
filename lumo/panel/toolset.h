#pragma once

#include "module/host.h"

class QComboBox;

namespace lumo {

// The two selectors of the top bar. `isTool`: the welding tool (`end` of the tool set); otherwise the work
// object (`ref`).

/// Adds the package's own entry and the host's entries, and selects the one in force.
void fillToolsetSelector(QComboBox* combo, bool isTool);
/// Selects a name, appending an entry if there is none. An empty name selects nothing. Returns whether the
/// current entry changed, that is whether the selector has emitted its signal.
bool selectToolsetName(QComboBox* combo, const QString& name);
/// Writes the current entry to `lumo.toolset` and sends the tool set to the robot. An entry that the host
/// does not know sets only the name.
void applyToolsetSelector(QObject* sender, const QComboBox* combo, bool isTool);

}  // namespace lumo

/// Converts a tool or work object of the host (mm, degrees, kg, kg mm²) to one of the package (m, rad,
/// kg, kg m²). Numbers that `source` lacks are 0.
void getToolsAndWobjsParam(bool isTool, ModuleObject* source, ModuleObject* target);
