// Time for checking a program of the tree, compared with opening the same program's file.

#include "sidebyside.h"

#include "mendo/modulemanager.h"
#include "program/check.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <string>

namespace {

using mendo::ModuleObject;

constexpr std::array<int, 3> sizes = {1000, 10000, 100000};

QJsonArray readList(const char* name) {
    return mendo::ModuleManager::readFromJson(
               QStringLiteral(EXAMPLES "/flange/%1.json").arg(QLatin1String(name)))
        .toArray();
}

/// The statements of an example, repeated.
QJsonArray statements(int count) {
    QJsonArray known = readList("flange");
    known.removeLast();  // the tool set
    QJsonArray program;
    for (int line = 0; line < count; ++line) {
        program.append(known.at(line % known.size()));
    }
    return program;
}

/// A program as a file's bytes and as a node of the tree.
struct Program {
    explicit Program(int lines)
        : count(lines),
          text(QJsonDocument(statements(lines)).toJson()),
          node(m()->root()->append(nullptr, QStringLiteral("program%1").arg(lines))) {
        open();
    }

    void open() { node->loadJson(nullptr, QJsonDocument::fromJson(text).array()); }
    void check() {
        benchmark::DoNotOptimize(prog::checkProgram(node, QJsonValue(sets), QJsonValue(ports), cell));
    }

    const int count;
    const QByteArray text;
    ModuleObject* const node;
    const QJsonArray sets = readList("lumo_param");
    const QJsonArray ports = readList("lumo_port");
    const prog::CellFacts cell;
};

bench::Side side(Program& program, void (Program::*operation)()) {
    bench::Side made = bench::each([&program, operation] { (program.*operation)(); });
    made.units = program.count;
    return made;
}

/// The shortest of several checks, in ms.
void measureCheck(benchmark::State& state, Program& program, double targetMs) {
    constexpr int rounds = 15;
    constexpr double nsPerMs = 1e6;
    for ([[maybe_unused]] auto iteration : state) {
        qint64 best = std::numeric_limits<qint64>::max();
        for (int round = 0; round < rounds; ++round) {
            QElapsedTimer timer;
            timer.start();
            program.check();
            best = std::min(best, timer.nsecsElapsed());
        }
        bench::report(state, double(best) / nsPerMs, "ms", targetMs);
    }
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    std::array<Program, sizes.size()> programs{Program(sizes[0]), Program(sizes[1]), Program(sizes[2])};
    constexpr double msPerLine = 0.005;
    constexpr double ofOpening = 0.5;
    for (Program& program : programs) {
        const std::string lines = std::to_string(program.count) + " lines";
        bench::add(("check: " + lines).c_str(), [&program](benchmark::State& state) {
            measureCheck(state, program, msPerLine * program.count);
        });
        bench::add(("check: " + lines + " / open them").c_str(), [&program](benchmark::State& state) {
            bench::Plan plan;
            plan.target = ofOpening;
            plan.rounds = 7;
            bench::sideBySide(state, side(program, &Program::check), side(program, &Program::open), plan);
        });
    }
    return bench::runFigures(argc, argv);
}
