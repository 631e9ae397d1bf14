#include "runner/options.h"
#include "runner/pointrecord.h"
#include "runner/problem.h"
#include "runner/session.h"
#include "simulator/time/virtualtime.h"

#include <QApplication>
#include <QTextCodec>

#include <cstdio>
#include <memory>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

constexpr int badInput = 2;

/// Trace output of the package's debug stream is nobody's business here; what Qt complains about is.
void onQtMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    // Said by the offscreen platform for every window, and wherever there is no login session.
    const bool noise = text.startsWith(QLatin1String("This plugin does not support")) ||
                       text.startsWith(QLatin1String("QStandardPaths:"));
    if (type != QtDebugMsg && type != QtInfoMsg && !noise) {
        run::printWarning(text);
    }
}

void print(const QString& text) {
    std::fputs(text.toUtf8().constData(), stdout);
}

/// Qt's offscreen platform leaves its screen behind, which a leak check is not to count as ours.
std::unique_ptr<QApplication> makeApplication(int& argc, char** argv) {
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler qtsOwn;
#endif
    return std::make_unique<QApplication>(argc, argv);
}

int answer(const QStringList& arguments) {
    run::Problem problem;
    const std::optional<run::Options> options = run::parseOptions(arguments, &problem);
    if (!options) {
        run::printError(problem.text());
        return badInput;
    }
    if (options->help) {
        print(run::usage());
        return 0;
    }
    if (options->version) {
        print(run::versionText());
        return 0;
    }
    if (options->point.empty()) {
        return run::Session(*options).run();
    }
    const std::optional<QByteArray> record = run::pointRecord(options->point, options->axes, &problem);
    if (!record) {
        run::printError(problem.text());
        return badInput;
    }
    print(QString::fromUtf8(*record) + QLatin1Char('\n'));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(onQtMessage);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));  // file names, in any locale
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QFile::decodeName(argv[i]));
    }
    sim::VirtualTime::install();
    int programOnly = 1;  // Qt's own options are none of ours
    const std::unique_ptr<QApplication> application = makeApplication(programOnly, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return answer(arguments);
}
