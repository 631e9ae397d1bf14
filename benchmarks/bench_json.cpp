// Time for loading and saving programs of the data tree, compared with QJsonDocument, which parses and writes
// the same bytes.

#include "sidebyside.h"

#include "json/jsonwriter.h"
#include "mendo/modulemanager.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <malloc.h>
#include <array>
#include <string>

namespace {

using mendo::ModuleObject;

constexpr std::array<int, 4> sizes = {100, 1000, 10000, 100000};

/// The statements of the examples, repeated.
QJsonArray statements(int count) {
    QJsonArray known;
    for (const char* name : {"box_stitch", "flange", "lap_seam"}) {
        const QString file = QStringLiteral(EXAMPLES "/%1/%1.json").arg(QLatin1String(name));
        for (const QJsonValue statement : mendo::ModuleManager::readFromJson(file).toArray()) {
            if (statement.toObject().contains(QLatin1String("type"))) {
                known.append(statement);
            }
        }
    }
    if (known.isEmpty()) {
        qFatal("the examples hold no statements: " EXAMPLES);
    }
    QJsonArray program;
    for (int line = 0; line < count; ++line) {
        program.append(known.at(line % known.size()));
    }
    return program;
}

/// A project file's bytes, their QJsonDocument, and a node with the same content.
struct Project {
    explicit Project(int lines)
        : count(lines),
          text(QJsonDocument(statements(lines)).toJson()),
          document(QJsonDocument::fromJson(text)),
          node(m()->root()->append(nullptr, QStringLiteral("program%1").arg(lines))) {}

    void load() { node->loadJson(nullptr, QJsonDocument::fromJson(text).array()); }
    void parse() { document = QJsonDocument::fromJson(text); }
    void save() {
        benchmark::DoNotOptimize(mendo::JsonWriter(mendo::JsonWriter::Layout::Document).node(node).take());
    }
    void write() { benchmark::DoNotOptimize(document.toJson()); }

    const int count;
    const QByteArray text;
    QJsonDocument document;
    ModuleObject* const node;
};

/// An operation on a project; a unit is a statement.
bench::Side side(Project& project, void (Project::*operation)()) {
    bench::Side made = bench::each([&project, operation] { (project.*operation)(); });
    made.units = project.count;
    return made;
}

bench::Plan plan(const Project& project, double target) {
    constexpr int large = 10000;
    bench::Plan made;
    made.target = target;
    made.rounds = project.count < large ? 31 : project.count == large ? 15 : 7;
    return made;
}

void addComparison(const std::string& name, const bench::Side& work, const bench::Side& reference,
                   const bench::Plan& plan) {
    bench::add(("tree: " + name).c_str(), [work, reference, plan](benchmark::State& state) {
        bench::sideBySide(state, work, reference, plan);
    });
}

/// Bytes allocated on the heap.
double heap() {
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

/// Memory of a loaded program, compared with the QJsonDocument of the same bytes.
void measureMemory(benchmark::State& state, Project& project) {
    constexpr double target = 3.3;
    for ([[maybe_unused]] auto iteration : state) {
        project.document = QJsonDocument();
        project.node->clear(nullptr);
        const double before = heap();
        project.document = QJsonDocument::fromJson(project.text);
        const double withDocument = heap();
        project.load();
        const double withBoth = heap();
        bench::report(state, (withBoth - withDocument) / (withDocument - before), "", target);
        state.counters["bytes"] = (withBoth - withDocument) / project.count;
        state.counters["document_bytes"] = (withDocument - before) / project.count;
    }
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    std::array<Project, sizes.size()> projects{Project(sizes[0]), Project(sizes[1]), Project(sizes[2]),
                                               Project(sizes[3])};
    constexpr double target = 2.2;
    for (Project& project : projects) {
        const std::string lines = std::to_string(project.count) + " statements";
        project.load();
        addComparison("load " + lines + " / parse", side(project, &Project::load),
                      side(project, &Project::parse), plan(project, target));
        addComparison("save " + lines + " / write", side(project, &Project::save),
                      side(project, &Project::write), plan(project, target));
        bench::add(("tree: memory of " + lines + " / document").c_str(),
                   [&project](benchmark::State& state) { measureMemory(state, project); });
    }
    // Linear time: a statement of a long program takes as long as one of a short program, except for cache
    // misses, which QJsonDocument's parser has, too.
    constexpr double linear = 1.5;
    Project& small = projects[1];
    Project& large = projects[3];
    addComparison("load a statement of 100000 / of 1000", side(large, &Project::load),
                  side(small, &Project::load), plan(large, linear));
    addComparison("save a statement of 100000 / of 1000", side(large, &Project::save),
                  side(small, &Project::save), plan(large, linear));
    return bench::runFigures(argc, argv);
}
