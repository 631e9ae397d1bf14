#include "module/globals.h"

#include "module/host.h"
#include "program/words.h"

int hand_or_signalbing = 0;
bool isEnable_moveorder = false;
bool isnew_pWgt = false;
const prog::ArmModel* lumo_arm = nullptr;
bool lumo_recovery = false;

namespace lumo {

int runDepth = 0;

bool isRunning() {
    return m(prog::key::executeState)->getString(prog::word::idle) != prog::word::idle || runDepth > 0;
}

}  // namespace lumo
