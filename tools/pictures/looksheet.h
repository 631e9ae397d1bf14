#pragma once

#include <QString>

namespace pictures {

/// Draws the look on one sheet for docs/look.md: colours, type, controls, the seam, icons. False when the
/// picture cannot be written. The package's library must be loaded: its style sheet dresses the controls.
bool writeLookSheet(const QString& fileName);

}  // namespace pictures
