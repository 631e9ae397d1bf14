// The executor's own time: the wait for a move compared with an event loop that waits for the same result,
// and the time for a line of long and short programs.

#include "sidebyside.h"
#include "weldcell.h"

#include "editor/programwidget.h"
#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "program/words.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include <cstdio>
#include <string>

namespace {

using namespace lumo;
using namespace prog;

constexpr int usualLines = 200;
/// A motion command whose result the executor does not wait for.
const QString bareMove = QStringLiteral("move.bare");

void dropDebug(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

/// A bare event loop, ended by the result of a motion.
class BareWait : public QObject {
public:
    /// `logged`: log each result as the executor does.
    explicit BareWait(bool logged) {
        if (logged) {
            connect(kordservice()->commandNode(bareMove), &ModuleObject::changed, &loop_,
                    [](const QVariant& code) { logW() << "the answer" << code.toInt(); });
        }
        connect(kordservice()->commandNode(bareMove), &ModuleObject::changed, &loop_, &QEventLoop::quit);
    }
    void untilAnswer() { loop_.exec(); }

private:
    QEventLoop loop_;
};

/// Adds up the executor's waits, from its activityChanged() at their beginning and end.
class WaitTimes : public QObject {
public:
    WaitTimes() { connect(executor, &LumoExecutor::activityChanged, this, &WaitTimes::note); }
    [[nodiscard]] double ns() const { return static_cast<double>(ns_); }
    [[nodiscard]] int count() const { return count_; }
    /// The executor also signals changes of depth, before the first wait and after the last.
    void begin() { notes_ = 0; }

private:
    void note() {
        const qint64 now = clock_.nsecsElapsed();
        const int number = notes_++;
        if (number > 0 && number % 2 == 0) {
            ns_ += now - begin_;
            ++count_;
        }
        begin_ = now;
    }

    QElapsedTimer clock_ = [] {
        QElapsedTimer clock;
        clock.start();
        return clock;
    }();
    qint64 ns_ = 0;
    qint64 begin_ = 0;
    int notes_ = 0;
    int count_ = 0;
};

void prepare(bench::WeldCell& cell, int lines) {
    if (m(key::program)->cmobjCount() != lines) {
        cell.load(bench::moveProgram(lines));
        QApplication::processEvents();
    }
}

/// One run of a program with moves; a unit is a move.
bench::Side moveLines(bench::WeldCell& cell, int lines) {
    bench::Side side = bench::once([&cell] { cell.run(); }, [&cell, lines] { prepare(cell, lines); });
    side.units = lines;
    return side;
}

/// The necessary work of a line with a move: write the line to the tree, order the motion, keep the resume
/// data, wait for the result.
void handOver(BareWait& wait, ModuleObject* statement, int line) {
    ModuleObject args(QStringLiteral("args"));
    args.append(nullptr, field::point)->copyFrom(nullptr, statement->c(field::point), true, false);
    args.set(nullptr, QStringLiteral("traj.speed"), statement->c(field::speed)->getDouble() / 1000.0);
    args.set(nullptr, QStringLiteral("traj.zone"), statement->c(field::zone)->getDouble() / 1000.0);
    kordservice()->command(nullptr, bareMove, &args);
    kordservice()->command(nullptr, command::enough, static_cast<const ModuleObject*>(nullptr));
    m(key::executeLine)->setValue(nullptr, line);
    m(key::currentLine)->setValue(nullptr, line);
    m(key::currentType)->setValue(nullptr, QString(statement::moveL));
    m(key::currentMoveType)->setValue(nullptr, QString(statement::moveL));
    m(key::currentStartPoint)->copyFrom(nullptr, kordservice()->get(nullptr, key::posture), true, false);
    m(key::currentProgram)->append(nullptr, statement::moveL)->copyFrom(nullptr, statement, true, false);
    wait.untilAnswer();
}

bench::Side handOvers(bench::WeldCell& cell, BareWait& wait, int lines) {
    bench::Side side = bench::once(
        [&wait] {
            int line = 0;
            for (ModuleObject* const statement : m(key::program)->cmobjs()) {
                handOver(wait, statement, line++);
            }
        },
        [&cell, lines] {
            prepare(cell, lines);
            kordservice()->command(nullptr, command::reset, static_cast<const ModuleObject*>(nullptr));
        });
    side.units = lines;
    return side;
}

/// As the executor does: orders all moves, then releases them.
void handOverBatch() {
    const ModuleObject args;
    for (int i = 0; i < usualLines; ++i) {
        kordservice()->command(nullptr, bareMove, &args);
    }
    kordservice()->command(nullptr, command::enough, static_cast<const ModuleObject*>(nullptr));
}

/// The wait for a move inside runs, compared with a bare wait.
void compareWaits(benchmark::State& state, bench::WeldCell& cell, bool logged, double target) {
    constexpr int rounds = 31;
    BareWait bare(logged);
    prepare(cell, usualLines);
    cell.run();
    std::vector<double> ratios, times, bareTimes;
    for ([[maybe_unused]] auto iteration : state) {
        for (int round = 0; round < rounds; ++round) {
            WaitTimes waits;
            waits.begin();
            cell.run();
            if (waits.count() != usualLines) {
                state.SkipWithError("a run did not wait once for each move");
                return;
            }
            QElapsedTimer clock;
            handOverBatch();
            clock.start();
            for (int i = 0; i < usualLines; ++i) {
                bare.untilAnswer();
            }
            times.push_back(waits.ns() / usualLines);
            bareTimes.push_back(static_cast<double>(clock.nsecsElapsed()) / usualLines);
            ratios.push_back(times.back() / bareTimes.back());
        }
        bench::reportRatios(state, ratios, times, bareTimes, target);
    }
}

/// With the page visible or not, because painting takes most of the time and would hide other costs.
void addLength(bench::WeldCell& cell, int lines, int rounds, bool shown) {
    constexpr int fewLines = 1000;
    bench::Plan plan;
    plan.target = 1.3;
    plan.rounds = rounds;
    bench::add(("executor: a line of " + std::to_string(lines) +
                (shown ? " queued, run, marked and shown" : " queued, run and marked") + " / a line of " +
                std::to_string(fewLines))
                   .c_str(),
               [&cell, lines, plan, shown](benchmark::State& state) {
                   ProgramWidget page;
                   page.resize(914, 658);
                   page.setVisible(shown);
                   bench::sideBySide(state, moveLines(cell, lines), moveLines(cell, fewLines), plan);
               });
}

}  // namespace

int main(int argc, char** argv) {
    qInstallMessageHandler(dropDebug);
    QApplication app(argc, argv);
    bench::WeldCell cell;
    kordservice()->offerCommand(bareMove, true);
    constexpr double target = 1.5;
    bench::add("executor: the wait of a move / bare nested event loop that the same answer ends",
               [&](benchmark::State& state) { compareWaits(state, cell, false, target); });
    bench::add("executor: the wait of a move / the same loop that logs the answer",
               [&](benchmark::State& state) { compareWaits(state, cell, true, target); });
    bench::Plan plan;
    plan.target = target;
    bench::add("executor: a line that moves / its hand-over, records and log and a bare nested event loop",
               [&](benchmark::State& state) {
                   BareWait bare(true);
                   bench::sideBySide(state, moveLines(cell, usualLines), handOvers(cell, bare, usualLines),
                                     plan);
               });
    addLength(cell, 10000, 7, true);
    addLength(cell, 100000, 3, false);
    return bench::runFigures(argc, argv);
}
