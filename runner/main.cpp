#include "runner/libraryrun.h"
#include "runner/options.h"
#include "runner/pointrecord.h"
#include "runner/problem.h"
#include "runner/replay/replay.h"
#include "runner/session.h"
#include "runner/stress/stress.h"
#include "runner/tracediff.h"
#include "simulator/time/pacedtime.h"
#include "simulator/time/virtualtime.h"
#include "workcell/commandline.h"

#include <QApplication>

#include <algorithm>
#include <memory>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

constexpr int badInput = 2;

void onQtMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (workcell::isComplaint(type, text)) {
        run::printWarning(text);
    }
}

/// Qt's offscreen platform never deletes its screen: keep that out of the leak check.
std::unique_ptr<QApplication> makeApplication(int& argc, char** argv) {
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler qtsOwn;
#endif
    return std::make_unique<QApplication>(argc, argv);
}

/// A robot or a device outside of this process works on the wall clock.
bool isOnWallClock(const QStringList& arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](const QString& argument) {
        return argument.startsWith(QLatin1String("--controller")) ||
               argument.startsWith(QLatin1String("--io"));
    });
}

int answer(const QStringList& arguments) {
    run::Problem problem;
    const std::optional<run::Options> options = run::parseOptions(arguments, &problem);
    if (!options) {
        run::printError(problem.text());
        return badInput;
    }
    if (options->help) {
        workcell::print(run::usage());
        return 0;
    }
    if (options->version) {
        workcell::print(run::versionText());
        return 0;
    }
    if (options->diff) {
        return run::printTraceDiff(options->diff->at(0), options->diff->at(1));
    }
    if (!options->replay.isEmpty()) {
        return run::replay::Replay(*options).run();
    }
    if (!options->library.isEmpty()) {
        return run::runLibrary(*options);
    }
    if (options->point.empty()) {
        return options->stress ? run::runStress(*options) : run::Session(*options).run();
    }
    const std::optional<QByteArray> record = run::pointRecord(options->point, options->axes, &problem);
    if (!record) {
        run::printError(problem.text());
        return badInput;
    }
    workcell::print(QString::fromUtf8(*record) + QLatin1Char('\n'));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(onQtMessage);
    const QStringList arguments = workcell::decodedArguments(argc, argv);
    if (isOnWallClock(arguments)) {
        sim::PacedTime::install();
    } else {
        sim::VirtualTime::install();
    }
    int programOnly = 1;  // no options of Qt's own
    const std::unique_ptr<QApplication> application = makeApplication(programOnly, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return answer(arguments);
}
