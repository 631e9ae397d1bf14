// The port file as the simulated cell reads it.

#include "fuzz/bench.h"
#include "simulator/wiring.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Bench bench;
    const QString name = QStringLiteral("lumo_port.json");
    bench.write(name, QByteArray(reinterpret_cast<const char*>(data), int(size)));

    const fuzz::Budget budget(size);
    fuzz::use(sim::readWiring(name));
    return 0;
}
