#include "runner/options.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <cmath>
#include <limits>

namespace run {

namespace {

using Handler = bool (*)(Options&, const QString&, QString*);

/// One option: its name, what stands for its value ("" for a switch), help and reader.
struct Option {
    const char* name;
    const char* value;
    const char* help;
    Handler read;
};

bool oneOf(const QString& text, const QStringList& words, QString* reason) {
    if (words.contains(text)) {
        return true;
    }
    *reason = QStringLiteral("is none of %1").arg(words.join(QStringLiteral(", ")));
    return false;
}

bool onOff(const QString& text, bool* value, QString* reason) {
    *value = text == QLatin1String("on");
    return oneOf(text, {QStringLiteral("on"), QStringLiteral("off")}, reason);
}

/// A whole number from `least`; one too large for an int becomes the largest int.
bool wholeNumber(const QString& text, int least, int* value, QString* reason) {
    const bool digits = !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
    bool fits = false;
    const int number = text.toInt(&fits);
    *value = fits ? number : std::numeric_limits<int>::max();
    if (digits && *value >= least) {
        return true;
    }
    *reason = QStringLiteral("is no number from %1").arg(least);
    return false;
}

bool fileName(const QString& text, QString* path, QString* reason) {
    if (text.isEmpty()) {
        *reason = QStringLiteral("names no file");
        return false;
    }
    *path = QFileInfo(text).absoluteFilePath();
    return true;
}

bool point(const QString& text, std::vector<double>* numbers) {
    for (const QString& part : text.split(QLatin1Char(','))) {
        bool ok = false;
        numbers->push_back(part.trimmed().toDouble(&ok));
        if (!ok || !std::isfinite(numbers->back())) {
            return false;
        }
    }
    return numbers->size() == 6;
}

bool readOnce(Options& o, const QString& text, QString* why) {
    o.once = 1;
    return wholeNumber(text, 1, &*o.once, why);
}

bool readScenario(Options& o, const QString& text, QString* why) {
    o.scenarioName = text;
    return fileName(text, &o.scenario, why);
}

bool readLine(Options& o, const QString& text, QString* why) {
    o.lineGiven = true;
    return wholeNumber(text, 1, &o.line, why);
}

bool readSettings(Options& o, const QString& text, QString* why) {
    o.settingsName = text;
    return fileName(text, &o.settings, why);
}

bool readVcd(Options& o, const QString& text, QString* why) {
    o.vcdName = text;
    return fileName(text, &o.vcd, why);
}

bool readTrace(Options& o, const QString& text, QString* why) {
    o.traceName = text;
    if (text != QLatin1String("-")) {
        return fileName(text, &o.trace, why);
    }
    o.trace = text;
    return true;
}

bool readStations(Options& o, const QString& text, QString* why) {
    o.stationsName = text;
    return fileName(text, &o.stations, why);
}

bool readPoint(Options& o, const QString& text, QString* why) {
    o.point.clear();
    if (point(text, &o.point)) {
        return true;
    }
    *why = QStringLiteral("is not of the form X,Y,Z,RX,RY,RZ");
    return false;
}

const Option optionRows[] = {
    {"settings", "DIR",
     "folder of the settings files, the package's working directory\n(default: the project's folder)",
     readSettings},
    {"language", "cn|en|ru", "language of the panel (en)",
     [](Options& o, const QString& v, QString* why) {
         o.language = v;
         return oneOf(v, {QStringLiteral("cn"), QStringLiteral("en"), QStringLiteral("ru")}, why);
     }},
    {"mode", "auto|manual", "operating mode of the robot (auto)",
     [](Options& o, const QString& v, QString* why) {
         o.mode = v;
         return oneOf(v, {QStringLiteral("auto"), QStringLiteral("manual")}, why);
     }},
    {"power", "on|off", "drive power (on)",
     [](Options& o, const QString& v, QString* why) { return onOff(v, &o.power, why); }},
    {"weld", "on|off", "the welding switch (on)",
     [](Options& o, const QString& v, QString* why) { return onOff(v, &o.weld, why); }},
    {"hand-weld", "on|off", "the hand welding switch (off)",
     [](Options& o, const QString& v, QString* why) { return onOff(v, &o.handWeld, why); }},
    {"line", "N", "line to start at, from 1 (1)", readLine},
    {"once", "N", "a single step of line N instead of a run", readOnce},
    {"axes", "6|7", "axes of the robot (6)",
     [](Options& o, const QString& v, QString* why) {
         o.axes = v.toInt();
         return oneOf(v, {QStringLiteral("6"), QStringLiteral("7")}, why);
     }},
    {"no-write-multi", "", "a controller that cannot write several registers at once",
     [](Options& o, const QString&, QString*) { return !(o.writeMulti = false); }},
    {"scenario", "FILE", "what happens to the cell, and when", readScenario},
    {"stations", "DIR", "monitor the stations of this folder instead of running a project", readStations},
    {"ack", "MS", "answer message boxes after that long (0: at once)",
     [](Options& o, const QString& v, QString* why) { return wholeNumber(v, 0, &o.ackMs, why); }},
    {"until", "MS", "give up after that much virtual time (3600000)",
     [](Options& o, const QString& v, QString* why) { return wholeNumber(v, 0, &o.untilMs, why); }},
    {"realtime", "", "run at the pace of the wall clock",
     [](Options& o, const QString&, QString*) { return o.realtime = true; }},
    {"trace", "FILE", "write the trace; \"-\" for standard output", readTrace},
    {"posture", "", "trace the robot's posture: every 10 ms while it moves, at results",
     [](Options& o, const QString&, QString*) { return o.posture = true; }},
    {"vcd", "FILE", "write the signals as a value change dump", readVcd},
    {"quiet", "", "neither progress nor table",
     [](Options& o, const QString&, QString*) { return o.quiet = true; }},
    {"point", "X,Y,Z,RX,RY,RZ", "print the record of a point (mm, degrees) and end", readPoint},
    {"version", "", "print the version and end",
     [](Options& o, const QString&, QString*) { return o.version = true; }},
    {"help", "", "print this and end", [](Options& o, const QString&, QString*) { return o.help = true; }},
};

const Option* findOption(const QString& name) {
    const auto found = std::find_if(std::begin(optionRows), std::end(optionRows),
                                    [&name](const Option& o) { return name == QLatin1String(o.name); });
    return found == std::end(optionRows) ? nullptr : found;
}

/// Reads the option at `index` of the arguments, which moves on to its value; the reason when it is wrong.
QString readOption(Options& options, const QStringList& arguments, int& index) {
    const QString argument = arguments[index];
    const int equals = argument.indexOf(QLatin1Char('='));
    const QString name = argument.mid(2, equals < 0 ? -1 : equals - 2);
    const Option* option = argument.startsWith(QLatin1String("--")) ? findOption(name) : nullptr;
    if (!option) {
        return QStringLiteral("unknown option %1, see --help").arg(argument);
    }
    const bool wantsValue = *option->value != '\0';
    if (wantsValue && equals < 0 && index + 1 >= arguments.size()) {
        return QStringLiteral("--%1 needs a value: %2").arg(name, QLatin1String(option->value));
    }
    if (!wantsValue && equals >= 0) {
        return QStringLiteral("--%1 takes no value").arg(name);
    }
    QString value;
    if (wantsValue) {
        value = equals < 0 ? arguments[++index] : argument.mid(equals + 1);
    }
    QString why;
    if (option->read(options, value, &why)) {
        return {};
    }
    return QStringLiteral("--%1 %2 %3").arg(name, value.isEmpty() ? QStringLiteral("\"\"") : value, why);
}

/// Projects and settings of the stations are in one folder, and they start where their inputs say.
QString completeStations(Options& options, const QStringList& files) {
    if (!files.isEmpty()) {
        return QStringLiteral("--stations and a project exclude each other");
    }
    if (options.lineGiven || options.once) {
        return QStringLiteral("--stations and --%1 exclude each other")
            .arg(options.lineGiven ? QStringLiteral("line") : QStringLiteral("once"));
    }
    if (!QFileInfo(options.stations).isDir()) {
        return QStringLiteral("--stations %1 is no folder").arg(options.stationsName);
    }
    if (!options.settings.isEmpty() &&
        QDir(options.settings).canonicalPath() != QDir(options.stations).canonicalPath()) {
        return QStringLiteral("--settings %1 is not the folder of the stations").arg(options.settingsName);
    }
    options.settings = options.stations;
    return {};
}

/// What is wrong with the whole, and the folder that follows from the project.
QString complete(Options& options, const QStringList& files) {
    if (options.help || options.version || !options.point.empty()) {
        return {};
    }
    if (!options.stations.isEmpty()) {
        return completeStations(options, files);
    }
    if (files.size() != 1 || files.first().isEmpty()) {
        return QStringLiteral("expected one project file, got %1, see --help").arg(files.size());
    }
    if (options.once && options.lineGiven) {
        return QStringLiteral("--line and --once exclude each other");
    }
    options.projectName = files.first();
    options.project = QFileInfo(files.first()).absoluteFilePath();
    if (options.settings.isEmpty()) {
        options.settings = QFileInfo(options.project).absolutePath();
    } else if (!QFileInfo(options.settings).isDir()) {
        return QStringLiteral("--settings %1 is no folder").arg(options.settingsName);
    }
    return {};
}

}  // namespace

std::optional<Options> parseOptions(const QStringList& arguments, Problem* problem) {
    Options options;
    QStringList files;
    QString reason;
    bool optionsEnded = false;
    for (int i = 0; i < arguments.size() && reason.isEmpty(); ++i) {
        if (!optionsEnded && arguments[i] == QLatin1String("--")) {
            optionsEnded = true;
        } else if (!optionsEnded && arguments[i].startsWith(QLatin1Char('-')) && arguments[i].size() > 1) {
            reason = readOption(options, arguments, i);
        } else {
            files.append(arguments[i]);
        }
    }
    if (reason.isEmpty()) {
        reason = complete(options, files);
    }
    if (reason.isEmpty()) {
        return options;
    }
    *problem = Problem{QString(), 0, 0, reason};
    return std::nullopt;
}

QString Options::folder() const {
    return stations.isEmpty() ? QFileInfo(project).absolutePath() : stations;
}

QString versionText() {
    return QStringLiteral("lumo-run " LUMO_VERSION "\n");
}

QString usage() {
    QString text = QStringLiteral(
        "Usage: lumo-run [options] PROJECT.json\n"
        "       lumo-run [options] --stations DIR\n\n"
        "Runs a welding project, or the projects of stations that their inputs start, with the real\n"
        "package on a simulated robot and weld cell, without a screen and on virtual time, and says\n"
        "what happened.\n\nOptions:\n");
    for (const Option& option : optionRows) {
        const QString left =
            QStringLiteral("  --%1 %2").arg(QLatin1String(option.name), QLatin1String(option.value));
        QString help = QLatin1String(option.help);
        help.replace(QLatin1Char('\n'), QLatin1Char('\n') + QString(26, QLatin1Char(' ')));
        text += left.leftJustified(25) + QLatin1Char(' ') + help + QLatin1Char('\n');
    }
    return text +
           QStringLiteral(
               "\nExit status: 0 finished; 1 refused, stopped, failed, stalled or out of time; 2 bad usage\n"
               "or bad input.\n");
}

}  // namespace run
