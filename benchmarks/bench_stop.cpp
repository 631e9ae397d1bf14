// Stop latency on the wall clock: from a loss of power or a pause, at a random moment in another thread, to
// the write that disables the laser. Idle, and with a busy panel: the page is painted thirty times a second,
// pages change, messages open and close. The latency includes waiting for the event loop; the executor's own
// part is a separate figure.
//
// The time of a pause's power ramp is subtracted.

#include "sidebyside.h"
#include "weldcell.h"

#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "panel/lumowidget.h"
#include "program/words.h"
#include "widgets/messagebox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QJsonObject>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <random>
#include <string>
#include <thread>

namespace {

using namespace lumo;
using namespace prog;
using SteadyClock = std::chrono::steady_clock;

constexpr int samplesWanted = 10000;  // of each of four figures
constexpr double targetMs = 10.0;
constexpr int rampDownMs = 10;
constexpr int maxDelayUs = 45000;  // longer than a weld of the program below

void dropDebug(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

double msSince(SteadyClock::time_point since) {
    return std::chrono::duration<double, std::milli>(SteadyClock::now() - since).count();
}

/// Welds with all waits with the laser on: dwell, moves, delay, power ramp-down.
QJsonArray program() {
    QJsonArray statements;
    for (int weld = 0; weld < 100; ++weld) {
        statements.append(QJsonObject{{"type", "open"}, {"index", 0}, {"execute", true}});
        for (const QJsonValue move : bench::moveProgram(3)) {
            statements.append(move);
        }
        statements.append(QJsonObject{{"type", "delay"}, {"delaytime", 9}});
        statements.append(QJsonObject{{"type", "close"}, {"execute", true}});
    }
    return statements;
}

/// A thread that emits a signal at a random moment after each call of arm().
class RandomMoments {
public:
    explicit RandomMoments(std::function<void(SteadyClock::time_point)> come)
        : come_(std::move(come)), thread_([this] { work(); }) {}
    ~RandomMoments() {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            ends_ = true;
        }
        changed_.notify_one();
        thread_.join();
    }

    void arm() {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            armed_ = true;
        }
        changed_.notify_one();
    }

private:
    void work() {
        std::mt19937 engine(1);
        std::uniform_int_distribution<int> delayUs(0, maxDelayUs);
        std::unique_lock<std::mutex> lock(mutex_);
        while (!ends_) {
            changed_.wait(lock, [this] { return armed_ || ends_; });
            changed_.wait_for(lock, std::chrono::microseconds(delayUs(engine)), [this] { return ends_; });
            if (armed_ && !ends_) {
                armed_ = false;
                come_(SteadyClock::now());
            }
        }
    }

    std::function<void(SteadyClock::time_point)> come_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool armed_ = false;
    bool ends_ = false;
    std::thread thread_;
};

enum class Stop { PowerLoss, Pause };

/// In ms.
struct Latencies {
    std::vector<double> whole;     ///< from the random moment
    std::vector<double> executor;  ///< from the executor's notification
};

/// Stops and restarts the run at random moments, until enough stops have met an enabled laser.
class Stops : public QObject {
public:
    Stops(bench::WeldCell& cell, Stop stop) : cell_(cell), stop_(stop) {}

    Latencies measure() {
        cell_.robot.written = [this](const QString& name, int bias, int value) {
            onWritten(name, bias, value);
        };
        RandomMoments moments([this](SteadyClock::time_point now) {
            QMetaObject::invokeMethod(
                this, [this, now] { come(now); }, Qt::QueuedConnection);
        });
        while (latencies_.whole.size() < samplesWanted) {
            m(key::robotPower)->setValue(this, QStringLiteral("on"));
            moments.arm();
            cell_.run();
            finish();
        }
        cell_.robot.written = nullptr;
        return latencies_;
    }

private:
    void come(SteadyClock::time_point cameAt) {
        came_ = true;
        counts_ = enabled_;  // only stops with the laser on count
        cameAt_ = cameAt;
        toldAt_ = SteadyClock::now();
        if (stop_ == Stop::PowerLoss) {
            m(key::robotPower)->setValue(this, QStringLiteral("off"));
        } else {
            m(key::triggerPause)->trigger();
        }
    }

    void onWritten(const QString& name, int bias, int value) {
        constexpr int laserEnable = 3;
        if (name != QLatin1String("LUMO_DO") || bias != laserEnable) {
            return;
        }
        enabled_ = value != 0;
        if (!enabled_ && counts_) {
            counts_ = false;
            const double rampMs = stop_ == Stop::Pause ? rampDownMs : 0.0;
            latencies_.whole.push_back(msSince(cameAt_) - rampMs);
            latencies_.executor.push_back(msSince(toldAt_) - rampMs);
        }
    }

    /// Waits for a stop that comes after the program's end, and for the rest of a closing.
    void finish() {
        while (!came_ || executor->depth() > 0 || executor->pendingSteps() > 0) {
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        came_ = false;
        counts_ = false;
    }

    bench::WeldCell& cell_;
    Stop stop_;
    Latencies latencies_;
    SteadyClock::time_point cameAt_, toldAt_;
    bool enabled_ = false;
    bool came_ = false;
    bool counts_ = false;
};

/// Changes pages and opens messages, as a busy operator does.
class BusyPanel : public QObject {
public:
    explicit BusyPanel(QStackedWidget* center) : page_(new LumoWidget) {
        center->resize(1280, 800);
        center->addWidget(page_);
        center->setCurrentWidget(page_);
        center->show();
        every(33, [this] { page_->update(); });
        every(110, [this] { changePage(); });
        every(170, [this] { changeMessage(); });
    }
    ~BusyPanel() override {
        closeMessages();
        delete page_;
    }

private:
    template <typename Deed>
    void every(int ms, Deed deed) {
        auto* const timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, deed);
        timer->start(ms);
    }

    void changePage() {
        static const char* const buttons[] = {"btnPort", "btnParamCfg",      "btnMonitor",
                                              "btnBind", "btnDeviceControl", "btnProject"};
        const char* const name = buttons[turn_++ % (sizeof buttons / sizeof buttons[0])];
        page_->findChild<QAbstractButton*>(QString::fromLatin1(name))->click();
    }

    void changeMessage() {
        if (!closeMessages()) {
            showMessage(QMessageBox::Information, QString(), QStringLiteral("message"));
        }
    }

    static bool closeMessages() {
        bool closed = false;
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* const window : windows) {
            if (auto* const box = qobject_cast<QMessageBox*>(window)) {
                box->done(QMessageBox::Ok);
                closed = true;
            }
        }
        return closed;
    }

    LumoWidget* page_;
    int turn_ = 0;
};

struct Figure {
    Stop stop;
    const char* name;
};

/// One figure for each quantile of the latencies, which are measured once.
void addFigures(bench::WeldCell& cell, const Figure& figure, bool busy, Latencies& latencies) {
    const auto fill = [&cell, figure, busy, &latencies] {
        if (latencies.whole.empty()) {
            std::unique_ptr<BusyPanel> panel;
            if (busy) {
                panel = std::make_unique<BusyPanel>(cell.center());
            }
            latencies = Stops(cell, figure.stop).measure();
        }
    };
    constexpr std::pair<const char*, double> quantiles[] = {
        {"p50", 0.5}, {"p99", 0.99}, {"p99.9", 0.999}, {"worst", 1.0}};
    for (const auto& quantile : quantiles) {
        const std::string name = std::string("stop: ") + figure.name + " to laser off, " + quantile.first +
                                 (busy ? ", panel at work" : ", idle");
        bench::add(name.c_str(), [fill, &latencies, quantile](benchmark::State& state) {
            fill();
            char unit[64];
            std::snprintf(unit, sizeof unit, "ms; of it in the executor %.3f ms",
                          bench::quantile(latencies.executor, quantile.second));
            for ([[maybe_unused]] auto iteration : state) {
                const bool isAsked = quantile.second == 0.999;
                bench::report(state, bench::quantile(latencies.whole, quantile.second), unit,
                              isAsked ? targetMs : 0.0, isAsked ? bench::Bound::AtMost : bench::Bound::None);
            }
            state.counters["count"] = static_cast<double>(latencies.whole.size());
        });
    }
}

}  // namespace

int main(int argc, char** argv) {
    qInstallMessageHandler(dropDebug);
    QApplication app(argc, argv);
    bench::WeldCell cell;
    cell.setParam("increase_time", 4);
    cell.setParam("stay_time", 6);
    cell.setParam("decrease_time", rampDownMs);
    cell.robot.answerMs = 3;
    cell.load(program());
    Latencies latencies[4];
    int next = 0;
    for (const bool busy : {false, true}) {
        addFigures(cell, {Stop::PowerLoss, "a loss of power"}, busy, latencies[next++]);
        addFigures(cell, {Stop::Pause, "a pause"}, busy, latencies[next++]);
    }
    return bench::runFigures(argc, argv);
}
