#include "app/appearance.h"
#include "app/examples/examplelibrary.h"
#include "app/menu/menutools.h"
#include "app/noticebar.h"
#include "app/options.h"
#include "app/panel.h"
#include "app/preferences.h"
#include "app/quitsignals.h"
#include "app/scope/scopeexport.h"
#include "app/scope/signalrecorder.h"
#include "app/startsteps.h"
#include "gantu/package.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/time/pacedtime.h"
#include "workcell/commandline.h"
#include "workcell/outside.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>
#include <QScreen>
#include <QTimer>

#include <unistd.h>
#include <cstdlib>
#include <optional>
#include <vector>

namespace {

constexpr int failed = 1;
constexpr int badUsage = 2;
constexpr int noDisplay = 3;
constexpr QSize size(1280, 800);

/// Prints an error and returns the exit status.
int fail(const QString& text, int status) {
    workcell::printError("lumo-panel", text);
    return status;
}

int print(const QString& text) {
    workcell::print(text);
    return 0;
}

/// Prints Qt's warnings and errors. Exits without a core dump when there is no display.
void onQtMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg) {
        fail(QStringLiteral("no display can be opened"), noDisplay);
        std::_Exit(noDisplay);
    }
    if (workcell::isComplaint(type, text)) {
        fail(text, failed);
    }
}

/// Sets language and working directory and remembers what is given as options. `lost` is set to a remembered
/// folder that could not be entered.
bool prepare(const app::Options& options, QString* lost) {
    if (!app::enterWorkFolder(options.settings, app::Preferences::folder(), lost)) {
        return false;
    }
    QString language = options.language.isEmpty() ? app::Preferences::language() : options.language;
    if (language.isEmpty()) {
        language = app::languageOf(QLocale::system().name());
    }
    if (!options.language.isEmpty()) {
        app::Preferences::rememberLanguage(language);
    }
    if (!options.settings.isEmpty() && options.example.isEmpty()) {
        app::Preferences::rememberFolder(QDir::currentPath());
    }
    if (options.ratedWatts) {
        app::Preferences::rememberRatedWatts(*options.ratedWatts);
    }
    app::installLanguage(language);
    return true;
}

/// Sets settings and project to the operator's copy of the chosen example. On failure returns false and
/// writes the reason to `problem`.
bool takeExample(app::Options* options, QString* problem) {
    const app::ExampleLibrary library = app::ExampleLibrary::ofThisProgram();
    if (!library.names().contains(options->example)) {
        *problem = QStringLiteral("--example %1 is none of %2")
                       .arg(options->example, library.names().join(QStringLiteral(", ")));
        return false;
    }
    options->settings = library.copyForOperator(options->example, problem);
    options->project = library.project(options->example);
    if (options->settings.isEmpty()) {
        *problem = QStringLiteral("%1 cannot be written").arg(*problem);
    }
    return !options->settings.isEmpty();
}

/// The package reads settings and language only once in a process, so another one replaces this process.
int becomeAnother(const QString& program, const QStringList& arguments) {
    std::vector<QByteArray> texts{QFile::encodeName(program)};
    for (const QString& argument : arguments) {
        texts.push_back(QFile::encodeName(argument));
    }
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (QByteArray& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    execv(pointers.front(), pointers.data());
    return fail(QStringLiteral("%1 cannot be started again").arg(program), failed);
}

/// The options that name the same controller again.
QStringList controllerOptions(const app::Options& options) {
    QStringList arguments;
    if (!options.controller.isEmpty()) {
        arguments << QStringLiteral("--controller") << options.controller;
    }
    if (!options.device.isEmpty()) {
        arguments << QStringLiteral("--io") << options.device;
    }
    return arguments;
}

/// The options that bring a panel back to where it is: the same example or project, the folder is remembered.
QStringList presentOptions(const app::Options& options, const app::Panel& panel) {
    if (!options.example.isEmpty()) {
        return {QStringLiteral("--example"), options.example};
    }
    QStringList arguments;
    if (!options.settings.isEmpty()) {
        arguments << QStringLiteral("--settings") << options.settings;
    }
    const QString project = panel.projectFile();
    if (QFileInfo(project).isFile()) {
        arguments << QStringLiteral("--open") << QFileInfo(project).absoluteFilePath();
    }
    return arguments;
}

/// The panel ends, and another one is to begin with these options.
void endForAnother(std::optional<QStringList>* another, const QStringList& arguments) {
    *another = arguments;
    QCoreApplication::quit();
}

/// On a screen hardly larger than the panel, and where the operator has left it so.
bool isMaximised(const QSize& room) {
    return room.width() <= size.width() || room.height() <= size.height() || app::Preferences::maximised();
}

/// The size that it will have on the screen.
void resize(QWidget* window) {
    const QSize room = window->screen()->availableSize();
    window->resize(isMaximised(room) ? room : size);
}

void show(QWidget* window) {
    if (isMaximised(window->screen()->availableSize())) {
        window->showMaximized();
    } else {
        window->show();
    }
}

/// After the panel's first paint, too, and later than the rest: its sheet would delay it.
void offerSetupSoon(app::Panel* panel) {
    constexpr int afterMs = 1200;
    QTimer::singleShot(afterMs, panel, [panel] { panel->menu()->offerSetup(); });
}

/// Writes the recorded signals (at most the last ten minutes) to a VCD file.
bool writeSignals(const app::Panel& panel, const QString& fileName) {
    QSaveFile file(fileName);
    QString error;
    const app::SignalRecorder& recorder = *panel.recorder();
    if (file.open(QIODevice::WriteOnly) && app::writeVcd(&file, recorder, recorder.all(), &error) &&
        file.flush() && file.commit()) {  // commit() does not report a failing flush
        return true;
    }
    fail(QStringLiteral("--vcd %1: %2").arg(fileName, error.isEmpty() ? file.errorString() : error), failed);
    return false;
}

/// What replaces this process by another one.
void followRestarts(app::Panel* panel, const app::Options& options, std::optional<QStringList>* another) {
    QObject::connect(panel, &app::Panel::exampleChosen, panel, [another](const QString& name) {
        endForAnother(another, {QStringLiteral("--example"), name});
    });
    QObject::connect(panel, &app::Panel::languageChosen, panel, [=](const QString& language) {
        endForAnother(another,
                      QStringList{QStringLiteral("--language"), language} + presentOptions(options, *panel));
    });
    QObject::connect(panel, &app::Panel::restartAsked, panel,
                     [=] { endForAnother(another, presentOptions(options, *panel)); });
}

/// Fills the frame with the package's page, and with the project that is to be opened.
bool fill(app::Panel* panel, const app::Options& options) {
    QString error;
    if (!panel->open(gantu::findLibrary(prog::key::lumo), &error)) {
        fail(error, failed);
        return false;
    }
    panel->setRatedPower(app::Preferences::ratedWatts());
    panel->keepEdits();
    panel->setFlightSize(options.flightMb);
    // Where the page's paint takes long, or none comes.
    constexpr int recordWithinMs = 300;
    QTimer::singleShot(recordWithinMs, panel, &app::Panel::record);
    if (options.example.isEmpty()) {
        offerSetupSoon(panel);
    }
    if (!options.project.isEmpty() && !panel->openProject(options.project)) {
        fail(QStringLiteral("--open: the page has no way to open a project"), failed);
    }
    return true;
}

/// Runs the panel until it quits. `another` is set to the options of the panel that is to follow.
///
/// The frame, with emergency stop and drive power, is on the screen before the package is loaded, and its
/// page before what stands beside it.
int run(app::Options options, sim::PacedTime* time, std::optional<QStringList>* another) {
    const app::QuitSignals quitSignals;
    QString problem;
    if (!options.example.isEmpty() && !takeExample(&options, &problem)) {
        return fail(problem, badUsage);
    }
    QString lost;
    if (!prepare(options, &lost)) {
        return fail(QStringLiteral("the folder of projects and settings cannot be entered"), failed);
    }
    app::installStyle();
    workcell::Outside outside;
    if (!outside.load(options.controller, options.device, &problem)) {
        return fail(problem, badUsage);
    }
    sim::Controller::Options controller;
    outside.addTo(&controller);
    app::Panel panel(controller, outside.names());
    panel.window()->setChosenFactor(app::Preferences::factor());
    resize(panel.window());
    panel.makeFrame();
    QObject::connect(&panel, &app::Panel::speedChosen, time, &sim::PacedTime::setFactor);
    followRestarts(&panel, options, another);
    if (!lost.isEmpty()) {
        panel.window()->notices()->report({lost, {}, {{mendo::FileProblem::Kind::NoSuchFolder}}});
    }
    const auto fillFrame = [&] {
        const bool isFilled = fill(&panel, options);
        if (!isFilled) {
            QCoreApplication::exit(failed);
        }
        return isFilled;
    };
    const auto complete = [&panel] {
        panel.complete();
        return true;
    };
    const app::StartSteps steps(panel.window(), {fillFrame, complete});
    show(panel.window());
    mendo::ModuleManager::setOutermostLoop(1);
    const int status = QApplication::exec();
    return options.vcd.isEmpty() || writeSignals(panel, options.vcd) ? status : failed;
}

}  // namespace

int main(int argc, char** argv) {
    QString error;
    const std::optional<app::Options> options =
        app::parseOptions(workcell::decodedArguments(argc, argv), &error);
    if (!options) {
        return fail(error, badUsage);
    }
    if (options->help) {
        return print(app::usage());
    }
    if (options->version) {
        return print(app::versionText());
    }
    QCoreApplication::setOrganizationName(QStringLiteral("lumo"));
    QCoreApplication::setApplicationName(QStringLiteral("lumo-panel"));
    int programOnly = 1;  // without the arguments, which Qt would take for its own options
    sim::PacedTime* const time = sim::PacedTime::install();
    qInstallMessageHandler(onQtMessage);
    std::optional<QStringList> another;
    QString program;
    int status = 0;
    {
        const QApplication application(programOnly, argv);
        qInstallMessageHandler(nullptr);
        program = QApplication::applicationFilePath();
        status = run(*options, time, &another);
    }
    return another ? becomeAnother(program, *another + controllerOptions(*options)) : status;
}
