// What reading the registers at their period costs while nobody touches anything: the share of one core
// that the whole page takes, over virtual time and over the wall clock, with each page in front and with
// the panel hidden. Ends with 1 when a share is over the limit.

#include "panel/pagebench.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace {

constexpr double limitPercent = 1.0;

/// Percent of one core while the page goes on for `ms`: processor time, which other programs do not
/// lengthen.
double shareOf(test::PageBench& bench, qint64 ms) {
    const std::clock_t begin = std::clock();
    bench.time.advance(ms);
    const double usedMs = 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    return 100.0 * usedMs / static_cast<double>(ms);
}

/// Median of some stretches of virtual time, in which no tick is lost and none waited for.
double shareOfVirtualTime(test::PageBench& bench) {
    constexpr int rounds = 7;
    constexpr qint64 roundMs = 10 * 60 * 1000;
    QVector<double> shares;
    for (int round = 0; round < rounds; ++round) {
        shares << shareOf(bench, roundMs);
    }
    std::sort(shares.begin(), shares.end());
    return shares.at(rounds / 2);
}

/// In step with the wall clock: sleeping and waking up count too.
double shareOfWallTime(test::PageBench& bench) {
    constexpr qint64 stretchMs = 5000;
    bench.time.setPace(1.0);
    const double share = shareOf(bench, stretchMs);
    bench.time.setPace(0.0);
    return share;
}

/// A controller with far more registers than the ports use.
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

bool report(const char* name, test::PageBench& bench) {
    const double virtualShare = shareOfVirtualTime(bench);
    const double wallShare = shareOfWallTime(bench);
    std::printf("%-22s %.3f %% of one core over virtual time, %.3f %% over wall time\n", name, virtualShare,
                wallShare);
    return virtualShare < limitPercent && wallShare < limitPercent;
}

}  // namespace

int main(int argc, char** argv) {
    sim::VirtualTime::install();
    QApplication app(argc, argv);
    test::PageBench bench;
    addRegisters();

    struct Page {
        const char* name;
        const char* button;
    };
    constexpr Page pages[] = {{"editor in front", "btnProject"},
                              {"monitor in front", "btnMonitor"},
                              {"device panel in front", "btnDeviceControl"}};
    bool within = true;
    for (const Page& page : pages) {
        bench.click(page.button);
        within &= report(page.name, bench);
    }
    bench.page->hide();
    within &= report("panel hidden", bench);
    std::printf("limit %.1f %%: %s\n", limitPercent, within ? "kept" : "NOT kept");
    return within ? 0 : 1;
}
