#pragma once

class QObject;

namespace lumo {

/// Deletes the position of a paused program: the next start begins at line 0 with the laser off.
void resetResumeData(QObject* sender);

}  // namespace lumo
