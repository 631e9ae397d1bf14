#pragma once

#include "module/host.h"
#include "program/words.h"

namespace lumo {

/// Whether a weld counts as open, in a run or left by a stop.
[[nodiscard]] inline bool isWeldFlagged() {
    return m(prog::key::weldOpen)->getBool(false);
}

inline void setWeldFlag(QObject* sender, bool open) {
    m(prog::key::weldOpen)->setValue(sender, open);
}

}  // namespace lumo
