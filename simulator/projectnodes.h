#pragma once

class QObject;

namespace sim {

/// Fills the host's lists of tools and work objects with those of an example cell.
void fillProjectNodes(QObject* sender);

}  // namespace sim
