// Parameter sets: read, and the sequences of the laser planned with them.

#include "editor/statementtext.h"
#include "executor/laserplan.h"
#include "fuzz/settings.h"
#include "module/keys.h"

namespace {

void plan(const ModuleObject* sets) {
    for (int index = 0; index < sets->size(); ++index) {
        const LaserParams params = LaserParams::from(sets->c(index));
        fuzz::use(openingPlan(params, rampStepMs()));
        fuzz::use(closingPlan(params, rampStepMs()));
        fuzz::use(gasOffPlan(params.postFlowMs));
        ModuleObject number;
        number.setValue(nullptr, index);
        fuzz::use(index2cn(&number));
        fuzz::use(laserPower2cn(&number));
        fuzz::use(laserDutyCycle2cn(&number));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Bench bench;
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));
    fuzz::readSettings(bench, lumo::Settings::Params, lumo::key::param, input, QJsonArray(), plan);
    return 0;
}
