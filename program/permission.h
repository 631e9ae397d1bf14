#pragma once

namespace prog {

/// Whether the operating mode and the two weld switches permit welding: the weld switch always, outside of
/// automatic mode the hand-weld switch as well.
[[nodiscard]] constexpr bool weldingPermitted(bool isAutomatic, bool weldSwitch, bool handWeldSwitch) {
    return weldSwitch && (isAutomatic || handWeldSwitch);
}

}  // namespace prog
