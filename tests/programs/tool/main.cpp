// Runs cases of whole programs and compares their traces with the expected ones (docs/runner.md).

#include "tracecompare.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>

#include <cstdio>

namespace {

struct Outcome {
    int status = -1;
    QByteArray trace, errors;
};

/// A file of a case; empty where there is none.
QByteArray contentOf(const QDir& folder, const char* name) {
    QFile file(folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The words of a file; what follows a '#' is a comment.
QStringList wordsOf(const QDir& folder, const char* name) {
    QString text = QString::fromUtf8(contentOf(folder, name));
    return text.remove(QRegularExpression("#[^\n]*")).split(QRegularExpression("\\s+"), Qt::SkipEmptyParts);
}

Outcome runCase(const QString& runner, const QDir& folder) {
    QStringList arguments{wordsOf(folder, "project").value(0, "project.json"), "--quiet", "--trace", "-"};
    if (folder.exists("scenario.json")) {
        arguments += {"--scenario", "scenario.json"};
    }
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.start(runner, arguments + wordsOf(folder, "options"));
    process.waitForFinished(-1);
    const bool ended =
        process.error() == QProcess::UnknownError && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}

/// Empty when the case passed or its expected trace was written.
QByteArray judge(const QString& runner, const QDir& folder, bool accept) {
    const Outcome outcome = runCase(runner, folder);
    QSet<QByteArray> kinds{"command", "output", "motion", "message", "done"};
    for (const QString& kind : wordsOf(folder, "kinds")) {
        kinds.insert(kind.toUtf8());
    }
    const QByteArrayList lines = linesOfKinds(outcome.trace, kinds);
    const QByteArray last = lines.value(lines.size() - 1);
    const QByteArray errors = "\nStandard error:\n" + outcome.errors;
    const bool isFinished = last.contains("\"kind\":\"done\",\"reason\":\"finished\"");
    const bool isQuit = last.contains("\"reason\":\"quit\"");  // 0 or 1: whether a run was under way
    if (outcome.status != (isFinished ? 0 : 1) && !(isQuit && outcome.status == 0)) {
        return "exit status " + QByteArray::number(outcome.status) + " does not go with the trace" + errors;
    }
    // Warnings of the runner, and what a sanitizer complains of.
    if (outcome.errors != contentOf(folder, "errors")) {
        return "standard error is not what the case expects" + errors;
    }
    if (accept) {
        QFile file(folder.filePath("expected.jsonl"));
        const bool written = file.open(QIODevice::WriteOnly) && file.write(lines.join('\n') + '\n') > 0;
        return written && file.flush() ? QByteArray() : QByteArray("expected.jsonl could not be written");
    }
    QByteArrayList expected = contentOf(folder, "expected.jsonl").split('\n');
    expected.removeLast();  // behind the last line's end
    return compareTraces(expected, lines);
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOption(
        {"runner", "The runner.", "LUMO-RUN", QCoreApplication::applicationDirPath() + "/../bin/lumo-run"});
    parser.addOption({"accept", "Writes the expected traces anew, to be read before they are kept."});
    parser.addPositionalArgument("FOLDER", "The cases.", "FOLDER...");
    parser.process(application);
    if (parser.positionalArguments().isEmpty()) {
        parser.showHelp(2);
    }
    bool passed = true;
    for (const QString& name : parser.positionalArguments()) {
        const QByteArray fault = judge(parser.value("runner"), QDir(name), parser.isSet("accept"));
        passed = passed && fault.isEmpty();
        std::printf("%s: %s\n%s", qPrintable(name), fault.isEmpty() ? "as expected" : "FAILED",
                    fault.constData());
    }
    return passed ? 0 : 1;
}
