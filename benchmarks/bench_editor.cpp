// Time of the program editor for a long program, compared with a plain table that is filled with the same
// texts (updates off) and sized once; cost of changing a line and of moving the marker.

#include "sidebyside.h"
#include "weldcell.h"

#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "module/globals.h"
#include "program/words.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>

#include <ctime>
#include <memory>
#include <vector>

namespace {

constexpr int lines = 10000;

/// The editor, and a plain table of the same width and texts.
struct Tables {
    explicit Tables(bench::WeldCell& weldCell) : cell(weldCell) {
        isEnable_moveorder = true;
        page.resize(914, 658);
        page.show();
        QApplication::processEvents();
        table = page.findChild<ProgramTable*>();
    }

    void open(const QJsonArray& program) {
        cell.load(program);
        QApplication::processEvents();
    }

    /// An empty table with the look of the editor's.
    void renewPlain() {
        plain = std::make_unique<QTableWidget>(0, table->columnCount());
        plain->resize(table->size());
        plain->setFont(table->font());
        plain->verticalHeader()->hide();
        plain->verticalHeader()->setMinimumSectionSize(table->verticalHeader()->minimumSectionSize());
        for (int column = 0; column < table->columnCount(); ++column) {
            plain->setColumnWidth(column, table->columnWidth(column));
        }
        plain->show();
        QApplication::processEvents();
    }

    void fillPlain() {
        plain->setUpdatesEnabled(false);
        plain->setRowCount(table->rowCount());
        for (int row = 0; row < table->rowCount(); ++row) {
            for (int column = 0; column < table->columnCount(); ++column) {
                plain->setItem(row, column, new QTableWidgetItem(table->item(row, column)->text()));
            }
        }
        plain->resizeRowsToContents();
        plain->setUpdatesEnabled(true);
    }

    bench::WeldCell& cell;
    ProgramWidget page;
    ProgramTable* table = nullptr;
    std::unique_ptr<QTableWidget> plain;
};

/// Includes painting.
bench::Side opening(Tables& tables) {
    static const QJsonArray program = bench::weldProgram(lines);
    return bench::once([&tables] { tables.open(program); }, [&tables] { tables.open(QJsonArray()); });
}

bench::Side plainOpening(Tables& tables) {
    return bench::once(
        [&tables] {
            tables.fillPlain();
            QApplication::processEvents();
        },
        [&tables] {
            if (tables.table->rowCount() != lines) {
                tables.open(bench::weldProgram(lines));
            }
            tables.renewPlain();
        });
}

/// A row with a move in the middle, a different one each time.
int nextRow() {
    static int row = lines / 2;
    row = row + 20 < lines ? row + 20 : 1;
    return row;
}

bench::Side changedLine(Tables& tables) {
    return bench::each([&tables, speed = 0]() mutable {
        const int row = nextRow() + 1;
        m(prog::key::program)->c(row)->set(nullptr, QStringLiteral("speed"), ++speed % 90 + 10);
        tables.table->changeStatement(row);
    });
}

bench::Side sizedRow(Tables& tables) {
    return bench::each([&tables] { tables.plain->resizeRowToContents(nextRow() + 1); });
}

/// The marker moves over the last ten lines of a program.
bench::Side markerWalk(bench::WeldCell& cell, int length) {
    constexpr int walk = 10;
    const auto moveTo = [length](int place) {
        m(prog::key::executeLine)->setValue(nullptr, length - walk + place % walk);
        QApplication::processEvents();
    };
    bench::Side side;
    side.run = [moveTo](int count) {
        for (int place = 0; place < count; ++place) {
            moveTo(place);
        }
    };
    side.prepare = [&cell, length, moveTo] {
        if (m(prog::key::program)->cmobjCount() != length) {
            cell.load(bench::weldProgram(length));
        }
        for (int place = 0; place < walk; ++place) {  // warm-up: does what loading has postponed
            moveTo(place);
        }
    };
    return side;
}

/// Processor time of each frame, in ms, while a long program is scrolled on a large screen by `step` px a
/// frame.
std::vector<double> frameTimes(Tables& tables, int step) {
    constexpr int frames = 600;
    constexpr double msPerS = 1000.0;
    tables.page.resize(1696, 976);
    tables.open(bench::weldProgram(lines));
    QScrollBar* const bar = tables.table->verticalScrollBar();
    bar->setValue(0);
    QApplication::processEvents();
    std::vector<double> times;
    for (int frame = 0; frame < frames; ++frame) {
        const std::clock_t before = std::clock();
        bar->setValue((bar->value() + step) % bar->maximum());
        QApplication::processEvents();
        times.push_back(static_cast<double>(std::clock() - before) * msPerS / CLOCKS_PER_SEC);
    }
    return times;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    bench::WeldCell cell;
    Tables tables(cell);
    bench::Plan plan;
    plan.rounds = 9;
    bench::add("editor: opening 10000 lines / filling and sizing a plain table",
               [&](benchmark::State& state) {
                   bench::sideBySide(state, opening(tables), plainOpening(tables), plan);
               });
    bench::Plan linePlan;
    bench::add("editor: a changed line / sizing its row in a plain table", [&](benchmark::State& state) {
        tables.open(bench::weldProgram(lines));
        tables.renewPlain();
        tables.fillPlain();
        bench::sideBySide(state, changedLine(tables), sizedRow(tables), linePlan);
    });
    bench::Plan markerPlan;
    markerPlan.target = 1.3;
    markerPlan.rounds = 15;
    markerPlan.blockMs = 20.0;
    bench::add("editor: a move of the marker in 10000 lines / in 100", [&](benchmark::State& state) {
        bench::sideBySide(state, markerWalk(cell, lines), markerWalk(cell, 100), markerPlan);
    });
    constexpr double frameMs = 1000.0 / 60;
    constexpr int quickScroll = 60;  // px a frame: 3600 px/s
    constexpr int page = 800;
    constexpr double mostPaintMs = 4.0;
    const auto addFrames = [&tables](const char* name, int step, double mostMs) {
        bench::add(name, [&tables, step, mostMs](benchmark::State& state) {
            constexpr double most = 0.99;
            for ([[maybe_unused]] auto iteration : state) {
                bench::report(state, bench::quantile(frameTimes(tables, step), most), "ms", mostMs);
            }
        });
    };
    addFrames("editor: a frame of scrolling 10000 lines at 1920x1080, p99", quickScroll, frameMs);
    addFrames("editor: painting a page of lines not seen before at 1920x1080, p99", page, mostPaintMs);
    return bench::runFigures(argc, argv);
}
