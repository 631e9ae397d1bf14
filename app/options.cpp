#include "app/options.h"

#include "workcell/commandline.h"

#include <QDir>
#include <QFileInfo>

#include <cmath>

namespace app {

namespace {

using workcell::Option;

QString readFolder(const QString& text, QString* path) {
    *path = QFileInfo(text).absoluteFilePath();
    return !text.isEmpty() && QFileInfo(text).isDir() ? QString() : QStringLiteral("is no folder");
}

QString readProject(const QString& text, QString* path) {
    const QFileInfo file(text);
    *path = file.absoluteFilePath();
    return file.isFile() && file.isReadable() ? QString() : QStringLiteral("is no file that can be read");
}

QString readExample(const QString& text, QString* name) {
    *name = text;
    const bool isName = !text.isEmpty() && !text.contains(QLatin1Char('/'));
    return isName ? QString() : QStringLiteral("is no example");
}

QString readWatts(const QString& text, std::optional<double>* watts) {
    bool isNumber = false;
    *watts = text.toDouble(&isNumber);
    return isNumber && std::isfinite(**watts) && **watts > 0 ? QString()
                                                             : QStringLiteral("is no power above 0");
}

QString readSize(const QString& text, int* mb) {
    constexpr int most = 1024;
    bool isNumber = false;
    *mb = text.toInt(&isNumber);
    return isNumber && *mb >= 0 && *mb <= most ? QString()
                                               : QStringLiteral("is no number from 0 to %1").arg(most);
}

QString readOutput(const QString& text, QString* path) {
    const QFileInfo file(text);
    *path = file.absoluteFilePath();
    const bool canBeWritten = !text.isEmpty() && !file.isDir() && file.dir().exists();
    return canBeWritten ? QString() : QStringLiteral("is no file that can be written");
}

QString readName(const QString& text, QString* name) {
    *name = text;
    return text.isEmpty() ? QStringLiteral("names nothing") : QString();
}

std::vector<Option> optionTable(Options* o) {
    return {
        workcell::languageOption(&o->language, "language of the panel; remembered (at first: the system's)"),
        {"settings", "DIR",
         "folder of projects and settings files; remembered (at first: the current\n"
         "folder in a checkout, else the user's data folder)",
         [o](const QString& text) { return readFolder(text, &o->settings); }},
        {"open", "PROJECT", "open a project, as the Open button does",
         [o](const QString& text) { return readProject(text, &o->project); }},
        {"example", "NAME",
         "open a copy of an example (lap_seam, flange, box_stitch, stations) with its\n"
         "settings; not remembered",
         [o](const QString& text) { return readExample(text, &o->example); }},
        {"rated-power", "WATTS", "power of the laser source at 100 %, for the heat of seams; remembered",
         [o](const QString& text) { return readWatts(text, &o->ratedWatts); }},
        {"controller", "NAME", "a robot that is not simulated: NAME:ARGUMENT or FILE.so:ARGUMENT",
         [o](const QString& text) { return readName(text, &o->controller); }},
        {"io", "NAME", "inputs and outputs that are not simulated, named likewise",
         [o](const QString& text) { return readName(text, &o->device); }},
        {"vcd", "FILE", "write the cell's signals as a value change dump at the end",
         [o](const QString& text) { return readOutput(text, &o->vcd); }},
        {"flight-size", "MIB", "size of the flight recorder's file (64; 0: none)",
         [o](const QString& text) { return readSize(text, &o->flightMb); }},
        workcell::flag("version", "print the version and end", &o->version),
        workcell::flag("help", "print this and end", &o->help),
    };
}

}  // namespace

std::optional<Options> parseOptions(const QStringList& arguments, QString* error) {
    Options options;
    *error = workcell::readArguments(arguments, optionTable(&options), nullptr);
    const bool hasOwn = !(options.settings.isEmpty() && options.project.isEmpty());
    if (error->isEmpty() && !options.example.isEmpty() && hasOwn) {
        *error = QStringLiteral("--example brings its own project and settings");
    }
    return error->isEmpty() ? std::make_optional(options) : std::nullopt;
}

QString versionText() {
    return QStringLiteral("lumo-panel " LUMO_VERSION "\n");
}

QString usage() {
    constexpr int helpColumn = 23;
    Options ignored;
    return QStringLiteral(
               "Usage: lumo-panel [options]\n\n"
               "Opens the operator panel on a simulated robot and weld cell.\n\nOptions:\n") +
           workcell::helpText(optionTable(&ignored), helpColumn) +
           QStringLiteral(
               "\nExit status: 0 closed; 1 the panel could not be opened, or the dump not written; 2 bad\n"
               "usage; 3 no display can be opened.\n");
}

}  // namespace app
