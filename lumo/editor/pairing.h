#pragma once

#include "module/host.h"

#include <QVector>

namespace lumo {

/// Where a program starts and stops welding: positions of its "open" and "close" statements, whether
/// they are executed or not.
struct WeldPairs {
    QVector<int> opens;
    QVector<int> closes;

    /// Starts and stops alternate, beginning with a start and ending with a stop.
    [[nodiscard]] bool match() const;
};

[[nodiscard]] WeldPairs weldPairs(const ModuleObject* program);

}  // namespace lumo
