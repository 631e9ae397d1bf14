#pragma once

#include "module/host.h"

class QComboBox;

namespace lumo {

/// The two selectors of the top bar differ in a small table alone: `isTool` is the welding tool
/// (`end` of the tool set), otherwise it is the work object (`ref`).

/// Adds the start-up entry and the host's entries, and makes the one in force current.
void fillToolsetSelector(QComboBox* combo, bool isTool);
/// Makes the name current, as a new last entry where there is none yet. An empty name selects nothing.
/// Returns whether the current entry changed, which runs what is connected to it.
bool selectToolsetName(QComboBox* combo, const QString& name);
/// Puts the current entry into `lumo.toolset` and hands the tool set to the robot. An entry that the
/// host does not know sets the name alone.
void applyToolsetSelector(QObject* sender, const QComboBox* combo, bool isTool);

}  // namespace lumo

/// Converts a tool or work object of the host (mm, degrees, kg, kg mm²) to one of the package (m, rad,
/// kg, kg m²). Numbers that `source` lacks are 0.
void getToolsAndWobjsParam(bool isTool, ModuleObject* source, ModuleObject* target);
