#include "conform/options.h"
#include "conform/report.h"
#include "conform/session.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "simulator/time/virtualtime.h"
#include "workcell/commandline.h"

#include <QApplication>
#include <QSaveFile>
#include <QTimer>

namespace {

constexpr int broken = 1;
constexpr int badUsage = 2;

int fail(const QString& text) {
    workcell::printError("lumo-conform", text);
    return badUsage;
}

void printLine(const QString& text) {
    workcell::print(text + QLatin1Char('\n'));
    std::fflush(stdout);
}

std::vector<conform::Check> selected(const conform::Options& options) {
    std::vector<conform::Check> checks;
    for (const conform::Check& check : conform::allChecks()) {
        if (options.only.isEmpty() || options.only.contains(QLatin1String(check.id))) {
            checks.push_back(check);
        }
    }
    return checks;
}

bool writeJunit(const QString& file, const QByteArray& text) {
    QSaveFile output(file);
    return output.open(QIODevice::WriteOnly) && output.write(text) == text.size() && output.commit();
}

int run(const conform::Options& options) {
    conform::Session session(options);
    QString error;
    if (!session.prepare(&error)) {
        return fail(error);
    }
    std::vector<conform::Judged> all;
    for (const conform::Check& check : selected(options)) {
        all.push_back(session.judge(check));
        printLine(conform::judgedText(all.back()));
    }
    if (options.only.isEmpty()) {
        for (const conform::Figure& figure : session.measureTimes()) {
            printLine(conform::figureText(figure));
        }
    }
    printLine(conform::countText(all));
    if (!options.junit.isEmpty() && !writeJunit(options.junit, conform::junitText(options.backend, all))) {
        return fail(QStringLiteral("--junit %1 cannot be written").arg(options.junit));
    }
    return conform::isAnyBroken(all) ? broken : 0;
}

int answer(const conform::Options& options) {
    if (options.help) {
        workcell::print(conform::usage());
        return 0;
    }
    if (options.version) {
        printLine(QStringLiteral("lumo-conform " LUMO_VERSION));
        return 0;
    }
    if (options.list) {
        for (const conform::Check& check : conform::allChecks()) {
            printLine(QString::fromLatin1(check.id).leftJustified(19) + QString::fromUtf8(check.rule));
        }
        return 0;
    }
    int status = 0;
    QTimer::singleShot(0, QCoreApplication::instance(),
                       [&] { QCoreApplication::exit(status = run(options)); });
    QCoreApplication::exec();
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    conform::Options options;
    const QString reason = conform::readOptions(workcell::decodedArguments(argc, argv), &options);
    if (!reason.isEmpty()) {
        return fail(reason);
    }
    if (options.isSimulator()) {
        sim::VirtualTime::install();
    }
    int programOnly = 1;  // no options of Qt's own
    const QApplication application(programOnly, argv);
    mendo::LogHub::instance()->setConsole(false);
    return answer(options);
}
