// How long the program editor takes for a long program, beside a plain table that is filled with the
// same texts and sized once; and what a move of the running-line marker costs in a short and in a long one.

#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "module/globals.h"
#include "support/executorbench.h"

#include <QApplication>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>

namespace {

/// Processor time, which other programs do not lengthen.
double millisecondsOf(const std::function<void()>& work) {
    const std::clock_t begin = std::clock();
    work();
    return 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

double median(QVector<double> values) {
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

QJsonObject move(int number) {
    const QJsonObject frame{{"name", "tool0"}, {"trans", QJsonArray{0, 0, 0}}};
    return {{"type", "moveL"},
            {"point", QJsonObject{{"trans", QJsonArray{0.001 * number, 0.2, 0.3}}}},
            {"speed", 20},
            {"zone", 2},
            {"toolset", QJsonObject{{"end", frame}, {"ref", frame}}},
            {"note", QString()},
            {"execute", true}};
}

/// Every tenth line starts or stops welding, the others move.
QJsonArray program(int lines) {
    QJsonArray statements;
    for (int line = 0; line < lines; ++line) {
        if (line % 20 == 0) {
            statements.append(QJsonObject{{"type", "open"},
                                          {"index", 0},
                                          {"weldspeed", "20"},
                                          {"laserPower", "50"},
                                          {"laserDutyCycle", "50"},
                                          {"wireEnable", false},
                                          {"execute", true}});
        } else if (line % 20 == 10) {
            statements.append(QJsonObject{{"type", "close"}, {"execute", true}});
        } else {
            statements.append(move(line));
        }
    }
    return statements;
}

/// The texts of `source` in a table without anything else, with columns of the same width.
double plainTable(const ProgramTable& source) {
    QTableWidget plain(0, source.columnCount());
    plain.resize(source.size());
    plain.setFont(source.font());
    plain.verticalHeader()->hide();
    plain.verticalHeader()->setMinimumSectionSize(source.verticalHeader()->minimumSectionSize());
    for (int column = 0; column < source.columnCount(); ++column) {
        plain.setColumnWidth(column, source.columnWidth(column));
    }
    plain.show();
    QApplication::processEvents();
    return millisecondsOf([&plain, &source] {
        plain.setRowCount(source.rowCount());
        for (int row = 0; row < source.rowCount(); ++row) {
            for (int column = 0; column < source.columnCount(); ++column) {
                plain.setItem(row, column, new QTableWidgetItem(source.item(row, column)->text()));
            }
        }
        plain.resizeRowsToContents();
    });
}

/// Microseconds for one move of the marker, on average of walks over the last `walk` lines.
double markerMove(test::ExecutorBench& bench, int lines, int walk) {
    m("lumo.program")->loadJson(nullptr, program(lines));
    bench.time.advance(1000);
    constexpr int moves = 2000;
    ModuleObject* const line = m("lumo.execute.line");
    const double ms = millisecondsOf([&] {
        for (int i = 0; i < moves; ++i) {
            line->setValue(nullptr, lines - walk + i % walk);
            bench.time.settle();
        }
    });
    return 1000.0 * ms / moves;
}

}  // namespace

int main(int argc, char** argv) {
    sim::VirtualTime::install();
    QApplication app(argc, argv);
    test::ExecutorBench bench;
    bench.reset();
    isEnable_moveorder = true;
    ProgramWidget page;
    page.resize(914, 658);
    page.show();
    QApplication::processEvents();
    const auto* table = page.findChild<ProgramTable*>();

    constexpr int lines = 10000;
    constexpr int rounds = 5;
    QVector<double> opening, plain;
    const QJsonArray longProgram = program(lines);
    for (int round = 0; round < rounds; ++round) {
        m("lumo.program")->loadJson(nullptr, QJsonArray());
        opening << millisecondsOf([&] { m("lumo.program")->loadJson(nullptr, longProgram); });
        plain << plainTable(*table);
    }
    std::printf("opening %d lines: editor %.0f ms, plain table %.0f ms, ratio %.2f\n", lines, median(opening),
                median(plain), median(opening) / median(plain));

    constexpr int shortWalk = 10;
    const double inShort = markerMove(bench, shortWalk, shortWalk);
    const double inLong = markerMove(bench, lines, shortWalk);
    const double through = markerMove(bench, lines, lines);
    std::printf(
        "marker move: %.0f us in %d lines; in %d lines %.0f us, ratio %.2f, and %.0f us where it never was\n",
        inShort, shortWalk, lines, inLong, inLong / inShort, through);
    return 0;
}
