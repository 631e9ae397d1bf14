// The cost of reading the registers periodically while the panel is idle: percent of one core for the whole
// page, over virtual time and over the wall clock, with each page in front and with the panel hidden.

#include "sidebyside.h"

#include "panel/pagebench.h"

#include <QApplication>
#include <QTemporaryDir>

#include <ctime>
#include <string>
#include <vector>

namespace {

constexpr double limitPercent = 1.0;

/// Processor time during `ms`, in percent of one core.
double coreLoad(test::PageBench& page, qint64 ms) {
    const std::clock_t begin = std::clock();
    page.time.advance(ms);
    const double usedMs = 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    return 100.0 * usedMs / static_cast<double>(ms);
}

/// Median of several periods of virtual time, in which no tick is lost.
double loadOverVirtualTime(test::PageBench& page) {
    constexpr int rounds = 7;
    constexpr qint64 roundMs = 10 * 60 * 1000;
    std::vector<double> loads;
    for (int round = 0; round < rounds; ++round) {
        loads.push_back(coreLoad(page, roundMs));
    }
    return bench::median(loads);
}

/// On the wall clock, which includes sleeping and waking up.
double loadOverWallTime(test::PageBench& page) {
    constexpr qint64 stretchMs = 5000;
    page.time.setPace(1.0);
    const double load = coreLoad(page, stretchMs);
    page.time.setPace(0.0);
    return load;
}

/// Adds many registers that no port uses.
void addRegisters() {
    ModuleObject* values = kordservice()->dataNode(QStringLiteral("register.values"));
    constexpr int registers = 2000;
    for (int number = 0; number < registers; ++number) {
        values->set(nullptr, QStringLiteral("R%1.#0").arg(number), number);
    }
    for (int output = 0; output < 4; ++output) {
        values->set(nullptr, QStringLiteral("LUMO_AO_%1.#0").arg(output), 1000 * output);
    }
}

void addFigures(const std::string& name, test::PageBench& page, void (*show)(test::PageBench&)) {
    const auto addFigure = [&](const char* time, double (*load)(test::PageBench&)) {
        bench::add(("idle page: " + name + ", " + time).c_str(),
                   [&page, show, load](benchmark::State& state) {
                       show(page);
                       for ([[maybe_unused]] auto iteration : state) {
                           bench::report(state, load(page), "% of a core", limitPercent);
                       }
                   });
    };
    addFigure("virtual time", loadOverVirtualTime);
    addFigure("wall clock", loadOverWallTime);
}

}  // namespace

int main(int argc, char** argv) {
    sim::VirtualTime::install();
    QApplication app(argc, argv);
    const QTemporaryDir folder;
    QDir::setCurrent(folder.path());  // without settings files
    test::PageBench page;
    addRegisters();
    addFigures("editor in front", page, [](test::PageBench& shown) { shown.click("btnProject"); });
    addFigures("monitor in front", page, [](test::PageBench& shown) { shown.click("btnMonitor"); });
    addFigures("device panel in front", page,
               [](test::PageBench& shown) { shown.click("btnDeviceControl"); });
    addFigures("panel hidden", page, [](test::PageBench& shown) { shown.page->hide(); });
    return bench::runFigures(argc, argv);
}
