#include "executor/dryrun.h"

#include "equipment/dryguard.h"
#include "equipment/ports.h"
#include "module/host.h"
#include "program/words.h"

using namespace prog;

namespace lumo {

void DryRun::begin() {
    isUnderWay_ = true;
    setDryGuard(true);
    m(key::executeDryRun)->setValue(sender_, true);
}

void DryRun::end() {
    if (!isUnderWay_) {
        return;
    }
    light(false);
    isUnderWay_ = false;
    setDryGuard(false);
    m(key::executeDryRun)->setValue(sender_, false);
}

void DryRun::light(bool on) {
    if (isUnderWay_ && isLit_ != on) {
        isLit_ = on;
        setPortDO(sender_, DO_RED_LIGHT, on);
    }
}

}  // namespace lumo
