// Time from the panel's start to its first paint, and to the paint of the package's page, compared with an
// empty window; processor time of the idle panel with the drives off.

#include "childrun.h"
#include "sidebyside.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace {

/// A temporary home without preferences.
class Home {
public:
    Home() {
        char name[] = "/tmp/lumo-bench-XXXXXX";
        folder_ = mkdtemp(name);
    }
    ~Home() { std::filesystem::remove_all(folder_); }
    Home(const Home&) = delete;
    Home& operator=(const Home&) = delete;

    [[nodiscard]] std::vector<std::string> environment(const std::string& platform,
                                                       const std::string& screen) const {
        return {"HOME=" + folder_,
                "XDG_CONFIG_HOME=" + folder_ + "/config",
                "XDG_DATA_HOME=" + folder_ + "/data",
                "XDG_RUNTIME_DIR=" + folder_,
                "LC_ALL=C.UTF-8",
                "QT_QPA_PLATFORM=" + platform,
                "DISPLAY=" + screen};
    }

private:
    std::string folder_;
};

/// Ends at the first paint that shows a widget of the class `shown`; of any window without one.
bench::Call withPlugin(const std::string& program, std::vector<std::string> environment,
                       const std::string& shown = {}) {
    environment.emplace_back("QT_QPA_GENERIC_PLUGINS=firstpaint" + (shown.empty() ? shown : ":" + shown));
    environment.emplace_back("QT_PLUGIN_PATH=" PLUGINS);
    return {bench::built(program), {}, std::move(environment)};
}

/// A paint of the panel: the first one, or the first that shows a widget of a class.
struct Paint {
    const char* name;
    const char* shown;
    double target;  ///< empty windows
};

/// Starts panel and empty window alternately, each to its paint.
void compareStarts(benchmark::State& state, const std::vector<std::string>& environment,
                   double bench::Spent::*time, const Paint& paint) {
    constexpr int rounds = 21;
    const bench::Call panel = withPlugin("lumo-panel", environment, paint.shown);
    const bench::Call empty = withPlugin("emptywindow", environment);
    bench::run(panel);  // loads the libraries into memory
    std::vector<double> ratios, panelNs, emptyNs;
    for ([[maybe_unused]] auto iteration : state) {
        for (int round = 0; round < rounds; ++round) {
            const bench::Spent first = bench::run(round % 2 == 0 ? panel : empty);
            const bench::Spent second = bench::run(round % 2 == 0 ? empty : panel);
            if (first.status != 0 || second.status != 0) {
                state.SkipWithError("no first paint");
                return;
            }
            panelNs.push_back(1e9 * (round % 2 == 0 ? first : second).*time);
            emptyNs.push_back(1e9 * (round % 2 == 0 ? second : first).*time);
            ratios.push_back(panelNs.back() / emptyNs.back());
        }
        bench::reportRatios(state, ratios, panelNs, emptyNs, paint.target);
    }
}

/// Percent of a core, some time after the start.
void measureIdle(benchmark::State& state, const std::vector<std::string>& environment, double target) {
    constexpr unsigned settleS = 5;
    constexpr unsigned watchS = 25;
    for ([[maybe_unused]] auto iteration : state) {
        const pid_t panel = bench::begin({bench::built("lumo-panel"), {}, environment});
        sleep(settleS);
        const double before = bench::processorTime(panel);
        sleep(watchS);
        const double used = bench::processorTime(panel) - before;
        bench::end(panel);
        if (before <= 0.0) {
            state.SkipWithError("the panel did not start");
            return;
        }
        bench::report(state, 100.0 * used / watchS, "% of a core", target);
    }
}

void addFigures(const std::string& where, const std::vector<std::string>& environment) {
    constexpr double idleTarget = 2.0;
    constexpr Paint paints[] = {{"first paint", "", 3.0}, {"the package's page", "LumoWidget", 4.2}};
    constexpr std::pair<const char*, double bench::Spent::*> times[] = {
        {"wall clock", &bench::Spent::wallS}, {"processor time", &bench::Spent::processorS}};
    for (const Paint& paint : paints) {
        for (const auto& [unit, time] : times) {
            const std::string name =
                std::string("start: panel to ") + paint.name + " / empty window, " + unit + ", " + where;
            bench::add(name.c_str(), [environment, paint, time = time](benchmark::State& state) {
                compareStarts(state, environment, time, paint);
            });
        }
    }
    bench::add(("idle: the panel with its page shown and the drives off, " + where).c_str(),
               [environment](benchmark::State& state) { measureIdle(state, environment, idleTarget); });
}

}  // namespace

int main(int argc, char** argv) {
    const Home home;
    const bench::Screen screen;
    addFigures("offscreen", home.environment("offscreen", ""));
    if (!screen.name().empty()) {
        addFigures("X server", home.environment("xcb", screen.name()));
    }
    return bench::runFigures(argc, argv);
}
