#pragma once

class QObject;

namespace lumo {

/// Forgets where a paused program would go on: the next start begins at line 0 with the laser off.
void resetResumeData(QObject* sender);

}  // namespace lumo
