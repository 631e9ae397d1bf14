// Precision of the executor's times on the wall clock, compared with Qt's precise timer in the same process:
// idle, and while the panel's page is painted thirty times a second.
//
// An error is a delay in ms: of a power step, relative to the laser's enabling or the beginning of the
// closing; of the end of a wait, relative to its beginning. The host's clock counts whole milliseconds, so an
// error may be one millisecond larger than the bare timer's.

#include "sidebyside.h"
#include "weldcell.h"

#include "panel/lumowidget.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonObject>

#include <cmath>
#include <cstdio>
#include <string>

namespace {

constexpr int rampMs = 500;
constexpr int shortRampMs = 100;  ///< for the figures of closings
constexpr int stepMs = 20;
constexpr int preFlowMs = 90;
constexpr int delayMs = 37;
constexpr int delays = 12;
constexpr int closeDelayMs = 60;
constexpr int postFlowMs = 80;
constexpr double resolutionMs = 1.0;

void dropDebug(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

/// Errors of one method, in ms.
struct Errors {
    std::vector<double> steps;     ///< steps of ramps
    std::vector<double> waits;     ///< ends of single waits
    std::vector<double> closings;  ///< ends of three consecutive waits
};

class Stopwatch {
public:
    Stopwatch() { clock_.start(); }
    [[nodiscard]] double ms() const { return 1e-6 * static_cast<double>(clock_.nsecsElapsed()); }

private:
    QElapsedTimer clock_;
};

/// Opens a weld, switches outputs with delays in between, and closes.
QJsonArray program() {
    QJsonArray statements{QJsonObject{{"type", "open"}, {"index", 0}, {"execute", true}}};
    const QJsonObject output{{"type", "setDO"}, {"DO_type", "IO"}, {"doName", "DO1"}, {"value", "true"}};
    statements.append(output);
    for (int i = 0; i < delays; ++i) {
        statements.append(QJsonObject{{"type", "delay"}, {"delaytime", delayMs}});
        statements.append(output);
    }
    statements.append(QJsonObject{{"type", "close"}, {"execute", true}});
    return statements;
}

/// Opens a weld and closes it.
QJsonArray closing() {
    return {QJsonObject{{"type", "open"}, {"index", 0}, {"execute", true}},
            QJsonObject{{"type", "close"}, {"execute", true}}};
}

void setRamps(bench::WeldCell& cell, int ms) {
    for (const char* field : {"increase_time", "decrease_time", "stay_time"}) {
        cell.setParam(field, ms);
    }
}

/// Computes the errors of a run from the commands to the robot.
class Watcher {
public:
    Watcher(Errors& errors, int ramp) : errors_(errors), ramp_(ramp) {}

    void note(const QString& name, int bias, int value) {
        const double now = clock_.ms();
        if (name == QLatin1String("LUMO_AO_1")) {
            noteStep(now);
        } else if (name == QLatin1String("DO1")) {
            if (outputMs_ > 0.0) {
                errors_.waits.push_back(now - outputMs_ - delayMs);
            }
            outputMs_ = now;
        } else if (name == QLatin1String("LUMO_DO")) {
            noteSwitch(bias, value, now);
        }
    }

private:
    enum Output { Gas = 0, Laser = 3, PullBack = 8 };

    void noteSwitch(int bias, int value, double now) {
        if (bias == Gas && value == 1) {
            gasMs_ = now;
        } else if (bias == Gas) {
            errors_.closings.push_back(now - rampBeginMs_ - ramp_ - closeDelayMs - postFlowMs);
        } else if (bias == Laser && value == 1) {
            errors_.waits.push_back(now - gasMs_ - preFlowMs);
            beginRamp(now);
        } else if (bias == PullBack && value == 1) {
            beginRamp(now);
        }
    }

    void beginRamp(double now) {
        rampBeginMs_ = now;
        step_ = 0;
    }

    void noteStep(double now) {
        // The first write of an opening precedes the laser's enabling; the last writes of a closing follow
        // its ramp.
        if (rampBeginMs_ > 0.0 && ++step_ <= ramp_ / stepMs) {
            errors_.steps.push_back(now - rampBeginMs_ - step_ * stepMs);
        }
    }

    Errors& errors_;
    const int ramp_;
    Stopwatch clock_;
    double gasMs_ = 0.0;
    double rampBeginMs_ = 0.0;
    double outputMs_ = 0.0;
    int step_ = 0;
};

void runProgram(bench::WeldCell& cell, Errors& errors, int ramp) {
    Watcher watcher(errors, ramp);
    cell.robot.written = [&watcher](const QString& name, int bias, int value) {
        watcher.note(name, bias, value);
    };
    cell.run();
    cell.robot.written = nullptr;
}

void waitFor(int ms) {
    QEventLoop loop;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(ms);
    loop.exec();
}

void bareRamp(Errors& errors) {
    QEventLoop loop;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    const Stopwatch clock;
    int step = 0;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        ++step;
        errors.steps.push_back(clock.ms() - step * stepMs);
        if (step == rampMs / stepMs) {
            loop.quit();
        }
    });
    timer.start(stepMs);
    loop.exec();
}

/// The same times on bare timers.
void runBare(Errors& errors) {
    const auto wait = [&errors](int ms) {
        const Stopwatch clock;
        waitFor(ms);
        errors.waits.push_back(clock.ms() - ms);
    };
    wait(preFlowMs);
    bareRamp(errors);
    for (int i = 0; i < delays; ++i) {
        wait(delayMs);
    }
    bareRamp(errors);
}

void closeBare(Errors& errors) {
    const Stopwatch clock;
    waitFor(shortRampMs);
    waitFor(closeDelayMs);
    waitFor(postFlowMs);
    errors.closings.push_back(clock.ms() - shortRampMs - closeDelayMs - postFlowMs);
}

/// Errors of both methods, measured once for all figures.
struct Measured {
    bool done = false;
    Errors executor;
    Errors bare;
};

void measure(bench::WeldCell& cell, Measured& measured) {
    if (measured.done) {
        return;
    }
    constexpr int rounds = 20;
    constexpr int closings = 100;
    setRamps(cell, rampMs);
    cell.load(program());
    for (int round = 0; round < rounds; ++round) {
        runProgram(cell, measured.executor, rampMs);
        runBare(measured.bare);
    }
    setRamps(cell, shortRampMs);
    cell.load(closing());
    Errors executor;
    for (int round = 0; round < closings; ++round) {
        runProgram(cell, executor, shortRampMs);
        closeBare(measured.bare);
    }
    measured.executor.closings = executor.closings;
    measured.done = true;
}

/// The absolute error.
std::vector<double> sizes(const std::vector<double>& errors) {
    std::vector<double> result;
    for (const double error : errors) {
        result.push_back(std::abs(error));
    }
    return result;
}

struct Figure {
    const char* name;
    std::vector<double> Errors::*errors;
};

void addFigures(const std::string& when, const std::function<void(Measured&)>& fill, Measured& measured) {
    constexpr Figure figures[] = {{"a ramp's step", &Errors::steps},
                                  {"a wait's end", &Errors::waits},
                                  {"the end of a closing", &Errors::closings}};
    constexpr std::pair<const char*, double> quantiles[] = {{"p50", 0.5}, {"p99", 0.99}, {"worst", 1.0}};
    for (const Figure& figure : figures) {
        for (const auto& quantile : quantiles) {
            bench::add(
                ("fidelity: " + std::string(figure.name) + ", " + quantile.first + ", " + when).c_str(),
                [fill, &measured, figure, quantile](benchmark::State& state) {
                    fill(measured);
                    const double bare = bench::quantile(sizes(measured.bare.*figure.errors), quantile.second);
                    const double own =
                        bench::quantile(sizes(measured.executor.*figure.errors), quantile.second);
                    char unit[64];
                    std::snprintf(unit, sizeof unit, "ms; bare timer %.2f ms", bare);
                    for ([[maybe_unused]] auto iteration : state) {
                        bench::report(state, own, unit, bare + resolutionMs,
                                      quantile.second < 1.0 ? bench::Bound::AtMost : bench::Bound::None);
                    }
                    state.counters["bare"] = bare;
                    state.counters["count"] = static_cast<double>((measured.executor.*figure.errors).size());
                });
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    qInstallMessageHandler(dropDebug);
    QApplication app(argc, argv);
    bench::WeldCell cell;
    cell.setParam("delay_before_blow", preFlowMs);
    cell.setParam("close_delay", closeDelayMs);
    cell.setParam("delay_after_blow", postFlowMs);
    Measured idle, painting;
    addFigures(
        "idle", [&cell](Measured& measured) { measure(cell, measured); }, idle);
    addFigures(
        "painting",
        [&cell](Measured& measured) {
            constexpr int frameMs = 33;
            cell.center()->resize(1280, 800);
            auto* page = new LumoWidget;
            cell.center()->addWidget(page);
            cell.center()->setCurrentWidget(page);
            cell.center()->show();
            QTimer frames;
            QObject::connect(&frames, &QTimer::timeout, page, QOverload<>::of(&QWidget::update));
            frames.start(frameMs);
            measure(cell, measured);
            delete page;
        },
        painting);
    return bench::runFigures(argc, argv);
}
