// The stations file as the command line runner checks it, with the projects that it names.

#include "fuzz/bench.h"
#include "runner/stationlist.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Bench bench;
    bench.write(QStringLiteral("./lumo_signalsConfig.json"),
                QByteArray(reinterpret_cast<const char*>(data), int(size)));

    const fuzz::Budget budget(size);
    run::Problem problem;
    const QString here = QStringLiteral(".");
    if (const auto list = run::StationList::read(here, here, &problem)) {
        for (const run::Problem& warning : list->warnings(2))
            fuzz::use(warning.text());
    }
    return 0;
}
