#include "runner/libraryrun.h"

#include "json/jsonfile.h"
#include "json/jsonwriter.h"
#include "runner/junitmerge.h"
#include "workcell/commandline.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace run {

namespace {

constexpr int badInput = 2;
const QString limitsSuffix = QStringLiteral(".limits.json");
const QString scenarioSuffix = QStringLiteral(".scenario.json");

/// What a project's process left behind.
struct ProjectRun {
    QString project;  ///< relative to the folder
    int status = badInput;
    QString errors;       ///< what it printed on standard error
    QString output;       ///< on standard output
    QJsonObject summary;  ///< empty when nothing was run
    QByteArray junit;
};

/// "lap_seam/lap_seam" of "lap_seam/lap_seam.json".
QString withoutSuffix(const QString& project) {
    return project.chopped(int(qstrlen(".json")));
}

QByteArray contentOf(const QString& file) {
    QFile read(file);
    return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray();
}

/// The caller's options for one project, without what concerns all of them together.
QStringList argumentsFor(const Options& options, const QString& file) {
    QStringList arguments;
    for (const QString& given : options.given) {
        const QString name = given.section(QLatin1Char('='), 0, 0);
        if (name != QLatin1String("--summary") && name != QLatin1String("--junit") &&
            name != QLatin1String("--quiet")) {
            arguments.append(given);
        }
    }
    if (options.valueOf(QStringLiteral("check"))) {
        return arguments;
    }
    arguments << QStringLiteral("--quiet")
              << QStringLiteral("--limits=") + withoutSuffix(file) + limitsSuffix;
    const QString scenario = withoutSuffix(file) + scenarioSuffix;
    if (QFileInfo::exists(scenario)) {
        arguments << QStringLiteral("--scenario=") + scenario;
    }
    return arguments;
}

ProjectRun runProject(const Options& options, const QString& project, const QString& folder) {
    const QString file = QDir(options.library).filePath(project);
    const QString summary = QDir(folder).filePath(QStringLiteral("summary.json"));
    const QString junit = QDir(folder).filePath(QStringLiteral("junit.xml"));
    QStringList arguments = argumentsFor(options, file);
    if (!options.valueOf(QStringLiteral("check"))) {
        arguments << QStringLiteral("--summary=") + summary << QStringLiteral("--junit=") + junit;
    }
    QFile::remove(summary);
    QFile::remove(junit);
    ProjectRun run;
    run.project = project;
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), arguments << QStringLiteral("--") << file);
    process.waitForFinished(-1);
    run.errors = QString::fromUtf8(process.readAllStandardError());
    run.output = QString::fromUtf8(process.readAllStandardOutput());
    if (process.exitStatus() == QProcess::NormalExit && process.error() != QProcess::FailedToStart) {
        run.status = process.exitCode();
    } else {
        run.errors += QStringLiteral("the runner failed: %1\n").arg(process.errorString());
    }
    mendo::FileProblem ignored;  // a run that was refused leaves no summary
    const std::optional<mendo::JsonText> text = mendo::readJsonFile(summary, &ignored);
    run.summary = text ? text->value().toObject() : QJsonObject();
    run.junit = contentOf(junit);
    return run;
}

QString lineOf(const ProjectRun& run) {
    const QString result = run.status == 0 ? QStringLiteral("passed") : QStringLiteral("FAILED");
    QString line = QStringLiteral("%1  %2").arg(result, run.project);
    if (run.summary.isEmpty()) {
        return line + QStringLiteral(": not run");
    }
    const int seams = run.summary.value(QStringLiteral("seams")).toArray().size();
    line += QStringLiteral(": %1, %2 s, %3 %4")
                .arg(run.summary.value(QStringLiteral("reason")).toString(),
                     QString::number(run.summary.value(QStringLiteral("seconds")).toDouble(), 'f', 1))
                .arg(seams)
                .arg(seams == 1 ? QStringLiteral("seam") : QStringLiteral("seams"));
    const int violations = run.summary.value(QStringLiteral("violations")).toArray().size();
    return violations == 0 ? line : line + QStringLiteral(", limits violated: %1").arg(violations);
}

/// One object for all projects: sums, and the projects' own summaries.
QByteArray summaryOf(const QString& folder, const std::vector<ProjectRun>& runs) {
    QString reason = QStringLiteral("finished");
    QJsonArray projects, failed;
    for (const ProjectRun& run : runs) {
        QJsonObject summary = run.summary;
        if (summary.isEmpty()) {
            summary.insert(QStringLiteral("reason"), QStringLiteral("refused"));
        }
        summary.insert(QStringLiteral("project"), run.project);
        const QString own = summary.value(QStringLiteral("reason")).toString();
        reason = reason == QLatin1String("finished") ? own : reason;
        projects.append(summary);
        if (run.status != 0) {
            failed.append(run.project);
        }
    }
    mendo::JsonWriter writer(mendo::JsonWriter::Layout::Document);
    writer.beginObject().key(QStringLiteral("folder")).string(QDir(folder).dirName());
    writer.key(QStringLiteral("reason")).string(reason);
    for (const char* key : {"lines", "seconds", "path_mm", "laser_on_s", "gas_s", "wire_s", "rejected"}) {
        double sum = 0.0;
        for (const ProjectRun& run : runs) {
            sum += run.summary.value(QLatin1String(key)).toDouble();
        }
        constexpr double perUnit = 1e6;
        writer.key(QLatin1String(key)).number(std::round(sum * perUnit) / perUnit);
    }
    writer.key(QStringLiteral("failed")).variant(failed.toVariantList());
    writer.key(QStringLiteral("projects")).beginArray();
    for (const QJsonValue project : projects) {
        writer.json(project);
    }
    return writer.endArray().endObject().take() + '\n';
}

bool writeOutput(const char* option, const QString& file, const QByteArray& content) {
    QFile out(file);
    const bool isOpen =
        file == QLatin1String("-") ? out.open(stdout, QIODevice::WriteOnly) : out.open(QIODevice::WriteOnly);
    if (isOpen && out.write(content) == content.size() && out.flush()) {
        return true;
    }
    printError(QStringLiteral("--%1 %2: %3").arg(QLatin1String(option), file, out.errorString()));
    return false;
}

/// Writes the files for all projects.
bool writeFiles(const Options& options, const std::vector<ProjectRun>& runs) {
    bool written = true;
    if (const auto file = options.valueOf(QStringLiteral("summary"))) {
        written = writeOutput("summary", *file, summaryOf(options.library, runs));
    }
    if (const auto file = options.valueOf(QStringLiteral("junit"))) {
        JunitMerge merge;
        for (const ProjectRun& run : runs) {
            merge.add(run.project, run.junit, run.errors);
        }
        written = writeOutput("junit", *file, merge.text()) && written;
    }
    return written;
}

}  // namespace

QStringList libraryProjects(const QString& folder) {
    const QDir root(folder);
    QStringList projects;
    QDirIterator limits(root.absolutePath(), {QLatin1Char('*') + limitsSuffix}, QDir::Files,
                        QDirIterator::Subdirectories);
    while (limits.hasNext()) {
        const QString file = limits.next();
        const QString project = file.chopped(limitsSuffix.size()) + QStringLiteral(".json");
        if (QFileInfo(project).isFile()) {
            projects.append(root.relativeFilePath(project));
        }
    }
    std::sort(projects.begin(), projects.end());
    return projects;
}

int runLibrary(const Options& options) {
    const QStringList projects = libraryProjects(options.library);
    if (projects.isEmpty()) {
        printError(QStringLiteral("%1: no project has a NAME.limits.json beside it").arg(options.library));
        return badInput;
    }
    const QTemporaryDir folder;
    std::vector<ProjectRun> runs;
    int status = 0;
    for (const QString& project : projects) {
        runs.push_back(runProject(options, project, folder.path()));
        const ProjectRun& run = runs.back();
        status = std::max(status, run.status);
        std::fputs(run.errors.toUtf8().constData(), stderr);
        workcell::print(run.output);
        if (!options.quiet && !options.valueOf(QStringLiteral("check"))) {
            workcell::print(lineOf(run) + QLatin1Char('\n'));
        }
        std::fflush(stdout);
    }
    if (!writeFiles(options, runs)) {
        return std::max(status, 1);
    }
    return status;
}

}  // namespace run
