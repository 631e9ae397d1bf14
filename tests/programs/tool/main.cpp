// Runs a case of a whole program and compares its trace with the expected one.

#include "tracecompare.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTextStream>

#include <cstdio>
#include <optional>

namespace {

constexpr int kFailed = 1;
constexpr int kUsage = 2;

struct Outcome {
    int status = 0;
    QByteArray trace;
    QByteArray errors;
};

std::optional<QByteArray> readFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

/// The words of a file; what follows a '#' is a comment.
QStringList readWords(const QString& path) {
    QStringList words;
    for (const QString& line :
         QString::fromUtf8(readFile(path).value_or(QByteArray())).split(QLatin1Char('\n'))) {
        const QRegularExpression space(QStringLiteral("\\s+"));
        words += line.section(QLatin1Char('#'), 0, 0).split(space, Qt::SkipEmptyParts);
    }
    return words;
}

QSet<QByteArray> comparedKinds(const QDir& folder) {
    QSet<QByteArray> kinds = {"command", "output", "motion", "message", "done"};
    for (const QString& kind : readWords(folder.filePath(QStringLiteral("kinds"))))
        kinds.insert(kind.toUtf8());
    return kinds;
}

/// A case has a project of its own, or a file "project" that names one elsewhere.
QString projectOf(const QDir& folder) {
    return readWords(folder.filePath(QStringLiteral("project"))).value(0, QStringLiteral("project.json"));
}

std::optional<Outcome> runCase(const QString& runner, const QDir& folder) {
    QStringList arguments = {projectOf(folder), QStringLiteral("--quiet"), QStringLiteral("--trace"),
                             QStringLiteral("-")};
    if (folder.exists(QStringLiteral("scenario.json")))
        arguments += {QStringLiteral("--scenario"), QStringLiteral("scenario.json")};
    arguments += readWords(folder.filePath(QStringLiteral("options")));
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.start(runner, arguments);
    if (!process.waitForStarted())
        return std::nullopt;
    process.waitForFinished(-1);
    const bool crashed = process.exitStatus() == QProcess::CrashExit;
    return Outcome{crashed ? -1 : process.exitCode(), process.readAllStandardOutput(),
                   process.readAllStandardError()};
}

/// The status that goes with the last line of a trace.
int expectedStatus(const QByteArrayList& lines) {
    return !lines.isEmpty() && lines.last().contains("\"kind\":\"done\",\"reason\":\"finished\"") ? 0
                                                                                                  : kFailed;
}

bool writeExpected(const QString& path, const QByteArrayList& lines) {
    QFile file(path);
    const QByteArray text = lines.join('\n') + '\n';
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
}

/// Empty when the case passed or its expected trace was written.
QByteArray judge(const QString& runner, const QDir& folder, bool accept) {
    const std::optional<Outcome> outcome = runCase(runner, folder);
    if (!outcome)
        return "the runner could not be started";
    const QByteArray errors =
        outcome->errors.isEmpty() ? QByteArray() : "\nStandard error:\n" + outcome->errors;
    const QByteArrayList actual = linesOfKinds(outcome->trace, comparedKinds(folder));
    if (outcome->status != expectedStatus(actual))
        return "exit status " + QByteArray::number(outcome->status) + " does not go with the trace" + errors;
    // Warnings of the runner, and what a sanitizer complains of.
    if (outcome->errors != readFile(folder.filePath(QStringLiteral("errors"))).value_or(QByteArray()))
        return "standard error is not what the case expects" + errors;
    const QString path = folder.filePath(QStringLiteral("expected.jsonl"));
    if (accept)
        return writeExpected(path, actual) ? QByteArray() : QByteArray("expected.jsonl could not be written");
    const std::optional<QByteArray> expected = readFile(path);
    if (!expected)
        return "there is no expected.jsonl; --accept writes one, to be read before it is kept";
    QByteArrayList lines = expected->split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    const QByteArray difference = compareTraces(lines, actual);
    return difference.isEmpty() ? difference : difference + errors;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    QString runner = QCoreApplication::applicationDirPath() + QStringLiteral("/../bin/lumo-run");
    const int at = arguments.indexOf(QStringLiteral("--runner"));
    if (at >= 0 && at + 1 < arguments.size()) {
        runner = arguments[at + 1];
        arguments.erase(arguments.begin() + at, arguments.begin() + at + 2);
    }
    const bool accept = arguments.removeAll(QStringLiteral("--accept")) > 0;
    if (arguments.isEmpty()) {
        std::fputs("Usage: program_case [--runner LUMO-RUN] [--accept] FOLDER...\n", stderr);
        return kUsage;
    }
    int status = 0;
    for (const QString& name : arguments) {
        const QByteArray fault = judge(runner, QDir(name), accept);
        std::printf("%s: %s\n", qPrintable(name),
                    fault.isEmpty() ? (accept ? "written" : "as expected") : "FAILED");
        if (!fault.isEmpty()) {
            std::printf("%s\n", fault.constData());
            status = kFailed;
        }
    }
    return status;
}
