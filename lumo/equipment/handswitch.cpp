#include "equipment/handswitch.h"

#include "equipment/handlit.h"
#include "equipment/ports.h"

namespace lumo {

/// A listener of a write may stop everything. So an output is recorded before it is switched on: a stop
/// inside the write finds it in the record and writes its zeros. These may reach the controller before the
/// write does; so they are written again afterwards, and the set points are left out.
void switchByHand(const QPointer<QObject>& page, I_PORT output, bool on, const SetPoints& setPoints) {
    const bool lights = on && portEnabled(output);
    const auto wasStopped = [output, lights] { return lights && !isLitByHand(output); };
    noteByHand(output, lights);
    setPortDO(page, output, on);
    for (const auto& [analogue, fraction] : setPoints) {
        if (wasStopped()) {
            break;
        }
        setPortAO(page, analogue, fraction);
    }
    if (wasStopped()) {
        for (const I_PORT off : outputsOf(output)) {
            clearPort(page, off);
        }
    }
}

}  // namespace lumo
