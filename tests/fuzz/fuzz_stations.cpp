// Stations: read, shown, their inputs sampled and their outputs switched.

#include "binding/station.h"
#include "fuzz/settings.h"
#include "module/keys.h"

namespace {

using lumo::StationSignal;

void sample(const ModuleObject* stations) {
    for (const ModuleObject* station : stations->cmobjs()) {
        fuzz::use(lumo::samplePeriodMs(station->c(lumo::field::time)->getString()));
        for (const StationSignal which : {StationSignal::StartInput, StationSignal::StopInput}) {
            const lumo::SignalSource source = lumo::readSource(station, which);
            fuzz::use(lumo::kindText(which, source));
            fuzz::use(lumo::sourceText(source));
            fuzz::use(lumo::edgeText(station, which));
            fuzz::use(lumo::inputLevel(nullptr, source));
        }
        for (const StationSignal which : {StationSignal::StartOutput, StationSignal::StopOutput})
            lumo::switchOutput(nullptr, lumo::readSource(station, which), true);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Bench bench;
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));
    fuzz::readSettings(bench, lumo::Settings::Stations, lumo::key::signalsConfig, input, QJsonArray(),
                       sample);
    return 0;
}
