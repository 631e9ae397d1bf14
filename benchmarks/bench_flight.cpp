// What the flight recorder costs: its share of a processor core while a program runs, and a run with it
// beside one without.

#include "sidebyside.h"

#include "flight/recorder.h"
#include "flight/ringfile.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include "childrun.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <ctime>

namespace {

constexpr char project[] = EXAMPLES "/lap_seam/lap_seam.json";

double processorS() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

bench::Call call(const QString& folder, bool recorded) {
    bench::Call made{bench::built("lumo-run"), {"--quiet"}, {"LC_ALL=C.UTF-8"}};
    if (recorded) {
        made.arguments.insert(made.arguments.end(), {"--flight", folder.toStdString() + "/run.ring"});
    }
    made.arguments.emplace_back(project);
    return made;
}

/// Runs with and without, alternately, of the same stations over an hour.
void measureRun(benchmark::State& state) {
    constexpr double most = 1.6;
    constexpr int rounds = 9;
    const QTemporaryDir folder;
    const std::string stations = EXAMPLES "/stations";
    const auto hour = [&](bool recorded) {
        bench::Call made = call(folder.path(), recorded);
        made.arguments.pop_back();
        made.arguments.insert(made.arguments.end(),
                              {"--stations", stations, "--scenario", stations + "/scenario.json"});
        return bench::run(made).processorS;
    };
    for ([[maybe_unused]] auto iteration : state) {
        std::vector<double> ratios, with, without;
        hour(true);  // makes the file
        for (int round = 0; round < rounds; ++round) {
            with.push_back(hour(true) * 1e9);
            without.push_back(hour(false) * 1e9);
            ratios.push_back(with.back() / without.back());
        }
        bench::reportRatios(state, ratios, with, without, most);
        // Of an hour that the cell works: what is left when the run without is taken away.
        constexpr double hourS = 3600.0, percent = 100.0;
        state.counters["share_of_core_percent"] =
            (bench::median(with) - bench::median(without)) * 1e-9 / hourS * percent;
    }
}

/// A second of a moving robot: a hundred postures, number by number as a controller writes them, and a
/// write of a register each tenth of a second with its answer.
void moveForASecond(int second) {
    constexpr int postures = 100, writeEvery = 10;
    mendo::ModuleObject* const posture = kordservice()->dataNode(prog::key::posture);
    for (int i = 0; i < postures; ++i) {
        for (const QLatin1String list : {prog::field::trans, prog::field::rot, prog::field::near}) {
            for (int axis = 0; axis < 6; ++axis) {
                posture->c(list)->set(nullptr, mIndex(axis), second + 0.001 * i + axis, true);
            }
        }
        posture->trigger();
        if (i % writeEvery == 0) {
            const QVariantHash args{{"name", "LUMO_DO"}, {"type", "bit"}, {"bias", 2}, {"value", i % 2}};
            kordservice()->execCommand(nullptr, prog::command::registerWrite, args);
            kordservice()->commandNode(prog::command::registerWrite)->setValue(nullptr, 0);
        }
    }
}

double secondsOf(int moves) {
    const double before = processorS();
    for (int second = 0; second < moves; ++second) {
        moveForASecond(second);
    }
    return processorS() - before;
}

void measureShare(benchmark::State& state) {
    constexpr double mostPercent = 1.0, percent = 100.0;
    constexpr int moves = 200, rounds = 11;
    const QTemporaryDir folder;
    flight::RingProblem problem;
    const auto ring = flight::RingFile::open(folder.filePath("bench.ring"), 64 << 20, &problem);
    for ([[maybe_unused]] auto iteration : state) {
        std::vector<double> shares;
        for (int round = 0; ring && round < rounds; ++round) {
            const double without = secondsOf(moves);
            const flight::Recorder recorder(ring.get(), {});
            shares.push_back((secondsOf(moves) - without) / moves * percent);
        }
        if (shares.empty()) {
            state.SkipWithError("no ring file");
            return;
        }
        bench::report(state, bench::median(shares), "% of a core", mostPercent);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    bench::add("flight: share of a core while the robot moves", measureShare);
    bench::add("flight: an hour of the stations recorded / not", measureRun);
    return bench::runFigures(argc, argv);
}
