// What the executor adds to the robot's own time: an awaited move beside an event loop that waits for the
// same answer, and whether long programs cost more a line than short ones.

#include "sidebyside.h"
#include "weldcell.h"

#include "editor/programwidget.h"

#include <QApplication>
#include <QEventLoop>

#include <string>

namespace {

void dropDebug(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

/// One run of a program of moves; a unit is a move.
bench::Side awaitedMoves(bench::WeldCell& cell, int lines) {
    bench::Side side = bench::once([&cell] { cell.run(); },
                                   [&cell, lines] {
                                       if (m("lumo.program")->cmobjCount() != lines) {
                                           cell.load(bench::moveProgram(lines));
                                           QApplication::processEvents();
                                       }
                                   });
    side.units = lines;
    return side;
}

/// A loop that a timer ends at its next turn, as the robot's answer ends the wait of a move.
bench::Side nestedLoops(QEventLoop& loop, QTimer& answer) {
    return bench::each([&loop, &answer] {
        answer.start(0);
        loop.exec();
    });
}

void addLength(bench::WeldCell& cell, int lines, int rounds) {
    constexpr int fewLines = 1000;
    bench::Plan plan;
    plan.target = 1.3;
    plan.rounds = rounds;
    bench::add(("executor: a line of " + std::to_string(lines) + " queued, run and marked / a line of " +
                std::to_string(fewLines))
                   .c_str(),
               [&cell, lines, plan](benchmark::State& state) {
                   ProgramWidget page;
                   page.resize(914, 658);
                   page.show();
                   bench::sideBySide(state, awaitedMoves(cell, lines), awaitedMoves(cell, fewLines), plan);
               });
}

}  // namespace

int main(int argc, char** argv) {
    qInstallMessageHandler(dropDebug);
    QApplication app(argc, argv);
    bench::WeldCell cell;
    QEventLoop loop;
    QTimer answer;
    answer.setSingleShot(true);
    QObject::connect(&answer, &QTimer::timeout, &loop, &QEventLoop::quit);

    bench::Plan plan;
    plan.target = 1.5;
    bench::add("executor: a move queued, awaited and gone on from / bare nested event loop",
               [&](benchmark::State& state) {
                   bench::sideBySide(state, awaitedMoves(cell, 200), nestedLoops(loop, answer), plan);
               });
    addLength(cell, 10000, 5);
    addLength(cell, 100000, 3);
    return bench::runFigures(argc, argv);
}
