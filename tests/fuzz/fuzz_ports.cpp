// Port assignments: read, and every port written and read back.

#include "devices/ports.h"
#include "fuzz/settings.h"
#include "module/keys.h"

namespace {

void drive(const ModuleObject* rows) {
    for (int row = 0; row < rows->size(); ++row) {
        const auto port = static_cast<I_PORT>(row);
        fuzz::use(portEnabled(port));
        fuzz::use(portState(port));
        fuzz::use(portPercent(port));
        setPortDO(nullptr, port, true);
        setPortAO(nullptr, port, 0.5);
        switchOffPort(nullptr, port);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Bench bench;
    static const QJsonValue usual = m(lumo::key::port)->exportToJson();
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));
    fuzz::readSettings(bench, lumo::Settings::Ports, lumo::key::port, input, usual, drive);
    return 0;
}
