#include "runner/options.h"

#include "program/dryspeed.h"
#include "program/words.h"
#include "workcell/commandline.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>

namespace run {

namespace {

using workcell::Option;

const QString standardOutput = QStringLiteral("-");

QString readOnOff(const QString& text, bool* value) {
    QString word;
    const QString reason = workcell::readWord(text, {QStringLiteral("on"), QStringLiteral("off")}, &word);
    *value = word == QLatin1String("on");
    return reason;
}

bool areDigits(const QString& text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
}

/// A whole number from `least` that fits into 64 bits.
QString readWhole(const QString& text, qint64 least, qint64* value) {
    bool fits = false;
    *value = text.toLongLong(&fits);
    if (!areDigits(text) || (fits && *value < least)) {
        return QStringLiteral("is no number from %1").arg(least);
    }
    return fits ? QString()
                : QStringLiteral("is too large: at most %1").arg(std::numeric_limits<qint64>::max());
}

/// A whole number from `least` that fits into an int.
QString readNumber(const QString& text, int least, int* value) {
    qint64 number = 0;
    const QString reason = readWhole(text, least, &number);
    constexpr int most = std::numeric_limits<int>::max();
    if (reason.isEmpty() && number > most) {
        return QStringLiteral("is too large: at most %1").arg(most);
    }
    *value = int(number);
    return reason;
}

/// A line from 1. One too large for an int becomes the largest int, a line that no program has.
QString readLine(const QString& text, int* line) {
    bool fits = false;
    const int number = text.toInt(&fits);
    *line = fits ? number : std::numeric_limits<int>::max();
    return areDigits(text) && *line >= 1 ? QString() : QStringLiteral("is no number from 1");
}

QString readFile(const QString& text, QString* path, QString* name) {
    *name = text;
    *path = QFileInfo(text).absoluteFilePath();
    return text.isEmpty() ? QStringLiteral("names no file") : QString();
}

/// A file that is written; "-" for standard output.
QString readOutput(const QString& text, QString* path, QString* name) {
    const QString reason = readFile(text, path, name);
    if (text == standardOutput) {
        *path = text;
    }
    return reason;
}

QString readWatts(const QString& text, std::optional<double>* watts) {
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    *watts = number;
    return isNumber && std::isfinite(number) && number > 0.0 ? QString()
                                                             : QStringLiteral("is no number above 0");
}

QString readOverlap(const QString& text, double* mm) {
    bool isNumber = false;
    *mm = text.toDouble(&isNumber);
    return isNumber && *mm >= 0.0 && *mm <= prog::mostOverlapMm
               ? QString()
               : QStringLiteral("is no number from 0 to %1").arg(prog::mostOverlapMm);
}

/// Without a value the weld speed.
QString readDryRun(const QString& text, std::optional<double>* percent) {
    bool isNumber = text.isEmpty();
    *percent = text.isEmpty() ? prog::leastDryPercent : text.toDouble(&isNumber);
    return isNumber && **percent >= prog::leastDryPercent && **percent <= prog::mostDryPercent
               ? QString()
               : QStringLiteral("is no number from %1 to %2")
                     .arg(prog::leastDryPercent)
                     .arg(prog::mostDryPercent);
}

QString readAxes(const QString& text, int* axes) {
    QString word;
    const QString reason = workcell::readWord(text, {QStringLiteral("6"), QStringLiteral("7")}, &word);
    *axes = word.toInt();
    return reason;
}

QString readPoint(const QString& text, std::vector<double>* numbers) {
    constexpr std::size_t count = 6;
    numbers->clear();
    bool areNumbers = true;
    for (const QString& part : text.split(QLatin1Char(','))) {
        bool isNumber = false;
        numbers->push_back(part.trimmed().toDouble(&isNumber));
        areNumbers = areNumbers && isNumber && std::isfinite(numbers->back());
    }
    return areNumbers && numbers->size() == count ? QString()
                                                  : QStringLiteral("is not of the form X,Y,Z,RX,RY,RZ");
}

/// "NAME" or "NAME:ARGUMENT"; an argument that names a file becomes absolute.
QString readOutside(const QString& text, QString* name) {
    const QString argument = text.section(QLatin1Char(':'), 1);
    *name = QFileInfo::exists(argument) ? text.section(QLatin1Char(':'), 0, 0) + QLatin1Char(':') +
                                              QFileInfo(argument).absoluteFilePath()
                                        : text;
    return text.isEmpty() ? QStringLiteral("names nothing") : QString();
}

/// "result=MS,posture=MS,write=MS,start=MS,period=MS,corner=MM/S2", each optional.
QString readLatency(const QString& text, sim::Latency* latency) {
    const std::pair<QLatin1String, int*> parts[] = {
        {QLatin1String("result"), &latency->resultMs}, {QLatin1String("posture"), &latency->postureMs},
        {QLatin1String("write"), &latency->writeMs},   {QLatin1String("start"), &latency->startMs},
        {QLatin1String("period"), &latency->periodMs}, {QLatin1String("corner"), &latency->cornerMmPerS2}};
    for (const QString& part : text.split(QLatin1Char(','))) {
        const QString name = part.section(QLatin1Char('='), 0, 0);
        const auto known = std::find_if(std::begin(parts), std::end(parts),
                                        [&name](const auto& row) { return name == row.first; });
        const QString number = part.section(QLatin1Char('='), 1);
        if (known == std::end(parts) || !readNumber(number, 0, known->second).isEmpty()) {
            return QStringLiteral(
                "is not of the form result=MS,posture=MS,write=MS,start=MS,period=MS,corner=MM/S2");
        }
    }
    return {};
}

/// The options that describe the cell and the run.
std::vector<Option> runOptions(Options* o) {
    return {
        {"settings", "DIR",
         "folder of the settings files, the package's working directory\n(default: the project's folder)",
         [o](const QString& v) { return readFile(v, &o->settings, &o->settingsName); }},
        workcell::languageOption(&o->language, "language of the panel (en)"),
        {"mode", "auto|manual", "operating mode of the robot (auto)",
         [o](const QString& v) {
             return workcell::readWord(v, {QStringLiteral("auto"), QStringLiteral("manual")}, &o->mode);
         }},
        {"power", "on|off", "drive power (on)", [o](const QString& v) { return readOnOff(v, &o->power); }},
        {"weld", "on|off", "the welding switch (on)",
         [o](const QString& v) { return readOnOff(v, &o->weld); }},
        {"hand-weld", "on|off", "the hand welding switch (off)",
         [o](const QString& v) { return readOnOff(v, &o->handWeld); }},
        {"overlap", "MM",
         "a weld that goes on after a stop opens that far back on what is welded\n(0 to 20, 0)",
         [o](const QString& v) { return readOverlap(v, &o->overlapMm); }},
        {"dry-run", "[=PERCENT]",
         "move without laser, gas and wire, welds at that share of their speed\n(100 to 1000, 100)",
         [o](const QString& v) { return readDryRun(v, &o->dryPercent); }},
        {"line", "N", "line to start at, from 1 (1)",
         [o](const QString& v) {
             o->lineGiven = true;
             return readLine(v, &o->line);
         }},
        {"once", "N", "a single step of line N instead of a run",
         [o](const QString& v) {
             o->once = 1;
             return readLine(v, &*o->once);
         }},
        {"controller", "NAME", "a robot that is not simulated, on the wall clock: \"linuxcnc\"",
         [o](const QString& v) { return readOutside(v, &o->controller); }},
        {"io", "NAME:FILE", "inputs and outputs that are not simulated: \"modbus:MAP.json\"",
         [o](const QString& v) { return readOutside(v, &o->io); }},
        {"axes", "6|7", "axes of the robot (6)", [o](const QString& v) { return readAxes(v, &o->axes); }},
        workcell::flag("no-write-multi", "a controller that cannot write several registers at once",
                       &o->noWriteMulti),
        {"latency", "result=MS,posture=MS,write=MS,start=MS,period=MS,corner=MM/S2",
         "a controller that answers, writes and begins to move that much later, and\n"
         "cuts corners as narrowly as it can (each optional, 0)",
         [o](const QString& v) { return readLatency(v, &o->latency); }},
        {"scenario", "FILE", "what happens to the cell, and when",
         [o](const QString& v) { return readFile(v, &o->scenario, &o->scenarioName); }},
        {"repeat", "N", "play the scenario N times (1)",
         [o](const QString& v) { return readWhole(v, 1, &o->repeat); }},
        {"every", "MS",
         "from the beginning of a round to that of the next\n(1000 after the scenario's last entry)",
         [o](const QString& v) {
             o->everyMs = 0;
             return readWhole(v, 1, &*o->everyMs);
         }},
        {"stations", "DIR", "monitor the stations of this folder instead of running a project",
         [o](const QString& v) { return readFile(v, &o->stations, &o->stationsName); }},
    };
}

QString readSeed(const QString& text, quint64* seed) {
    bool isNumber = false;
    *seed = text.toULongLong(&isNumber);
    return isNumber ? QString() : QStringLiteral("is no number from 0");
}

/// The options that try a project for safety.
std::vector<Option> stressOptions(Options* o) {
    return {
        workcell::flag("rules", "judge the run by the rules of docs/safety.md (exit 1 when one is broken)",
                       &o->rules),
        {"stress", "N", "run the project under N schedules of disturbances and judge each",
         [o](const QString& v) {
             o->stress = 1;
             return readNumber(v, 1, &*o->stress);
         }},
        {"seed", "S", "seed of the first schedule (1)",
         [o](const QString& v) { return readSeed(v, &o->seed); }},
        {"stress-out", "DIR", "folder of the scenarios that break a rule (the current one)",
         [o](const QString& v) {
             QString name;
             return readFile(v, &o->stressOut, &name);
         }},
    };
}

/// The options that say how long to run and what to write.
std::vector<Option> outputOptions(Options* o) {
    return {
        {"ack", "MS", "answer message boxes after that long (0: at once)",
         [o](const QString& v) { return readWhole(v, 0, &o->ackMs); }},
        {"until", "MS", "give up after that much virtual time (3600000)",
         [o](const QString& v) { return readWhole(v, 0, &o->untilMs); }},
        workcell::flag("realtime", "run at the pace of the wall clock", &o->realtime),
        {"trace", "FILE", "write the trace; \"-\" for standard output",
         [o](const QString& v) { return readOutput(v, &o->trace, &o->traceName); }},
        workcell::flag("posture", "trace the robot's posture: every 10 ms while it moves, at results",
                       &o->posture),
        {"vcd", "FILE", "write the signals as a value change dump",
         [o](const QString& v) { return readFile(v, &o->vcd, &o->vcdName); }},
        workcell::flag("check", "run nothing: print what is wrong with the files, and end", &o->check),
        workcell::flag("force", "run in spite of the errors that the check finds", &o->force),
        workcell::flag("quiet", "neither progress nor table", &o->quiet),
        {"diff", "", "compare two traces, A and B, and end",
         [o](const QString&) {
             o->diff = QStringList();
             return QString();
         }},
        {"point", "X,Y,Z,RX,RY,RZ", "print the record of a point (mm, degrees) and end",
         [o](const QString& v) { return readPoint(v, &o->point); }},
        workcell::flag("version", "print the version and end", &o->version),
        workcell::flag("help", "print this and end", &o->help),
    };
}

/// The options about what a run proves.
std::vector<Option> evidenceOptions(Options* o) {
    return {
        {"summary", "FILE", "write what the run did and welded, as JSON; \"-\" for standard output",
         [o](const QString& v) { return readOutput(v, &o->summary, &o->summaryName); }},
        {"limits", "FILE", "what the duration and the seams may be; else the exit status is 1",
         [o](const QString& v) { return readFile(v, &o->limits, &o->limitsName); }},
        {"junit", "FILE", "write the same as JUnit XML, a test case for each seam",
         [o](const QString& v) { return readOutput(v, &o->junit, &o->junitName); }},
        workcell::flag("strict", "exit status 1 when anything was not as the program says", &o->strict),
        {"wiring", "FILE", "port file of the cell alone (default: that of the settings)",
         [o](const QString& v) { return readFile(v, &o->wiring, &o->wiringName); }},
        {"mqtt", "FILE", "tell an MQTT broker what the run does (settings: docs/telemetry.md)",
         [o](const QString& v) { return readFile(v, &o->mqtt, &o->mqttName); }},
        {"rated-power", "WATTS", "of the laser source at 100 %, for the heat of the seams",
         [o](const QString& v) { return readWatts(v, &o->ratedWatts); }},
    };
}

/// The options of the flight recorder.
std::vector<Option> flightOptions(Options* o) {
    return {
        {"flight", "FILE", "record what happens to the package, and what it does, in a ring file",
         [o](const QString& v) { return readFile(v, &o->flight, &o->flightName); }},
        {"flight-size", "MIB", "size of a new ring file (64)",
         [o](const QString& v) { return readNumber(v, 1, &o->flightMb); }},
        {"replay", "FILE",
         "run the package against a run of a ring file, and say where it decides\notherwise",
         [o](const QString& v) { return readFile(v, &o->replay, &o->replayName); }},
        {"run", "N", "the run that is replayed, from 1 (the last one)",
         [o](const QString& v) {
             o->replayRun = 1;
             return readNumber(v, 1, &*o->replayRun);
         }},
        workcell::flag("list", "with --replay: list the runs of the file, and end", &o->replayList),
    };
}

std::vector<Option> optionTable(Options* o) {
    std::vector<Option> table = runOptions(o);
    for (const std::vector<Option>& more :
         {evidenceOptions(o), flightOptions(o), stressOptions(o), outputOptions(o)}) {
        table.insert(table.end(), more.begin(), more.end());
    }
    for (Option& option : table) {
        option.read = [o, name = QStringLiteral("--") + QLatin1String(option.name), read = option.read,
                       isFlag = *option.value == '\0', isLoose = *option.value == '['](const QString& value) {
            const bool isAlone = isFlag || (isLoose && value.isEmpty());
            o->given.append(isAlone ? name : name + QLatin1Char('=') + value);
            return read(value);
        };
    }
    return table;
}

/// Checks the options for a run of every project in a folder.
QString completeLibrary(Options& options, const QString& folder) {
    options.library = folder;
    for (const char* name : {"line", "once", "scenario", "repeat", "every", "limits", "stress", "trace",
                             "posture", "vcd", "mqtt"}) {
        if (options.valueOf(QLatin1String(name))) {
            return QStringLiteral("--%1 and a folder of projects exclude each other")
                .arg(QLatin1String(name));
        }
    }
    return {};
}

/// Checks the options of --stations: projects and settings are in one folder, and inputs start the runs.
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

/// Checks the options of --stress, which plays scenarios of its own.
QString completeStress(Options& options) {
    if (options.stressOut.isEmpty()) {
        options.stressOut = QDir::currentPath();
    }
    if (!QFileInfo(options.stressOut).isDir()) {
        return QStringLiteral("--stress-out %1 is no folder").arg(options.stressOut);
    }
    const bool writes = !options.trace.isEmpty() || !options.vcd.isEmpty() || !options.summary.isEmpty() ||
                        !options.junit.isEmpty() || !options.mqtt.isEmpty() || !options.flight.isEmpty();
    if (options.stress && (writes || !options.scenario.isEmpty() || options.realtime)) {
        return QStringLiteral("--stress excludes --scenario, --realtime and the files of a run");
    }
    return {};
}

/// Checks the options against each other, and completes project and settings.
QString complete(Options& options, const QStringList& files) {
    if (options.help || options.version || !options.point.empty()) {
        return {};
    }
    if (options.diff) {
        *options.diff = files;
        return files.size() == 2 ? QString()
                                 : QStringLiteral("--diff expects two traces, got %1").arg(files.size());
    }
    if (!options.replay.isEmpty()) {
        return files.isEmpty() ? QString() : QStringLiteral("--replay and a project exclude each other");
    }
    if (options.replayRun || options.replayList) {
        return QStringLiteral("--run and --list need --replay");
    }
    const QString stressFault = completeStress(options);
    if (!stressFault.isEmpty()) {
        return stressFault;
    }
    if (options.scenario.isEmpty() && (options.repeat > 1 || options.everyMs)) {
        return QStringLiteral("--repeat and --every need a --scenario");
    }
    if (!options.stations.isEmpty()) {
        return options.rules || options.stress ? QStringLiteral("--stations excludes --rules and --stress")
                                               : completeStations(options, files);
    }
    if (files.size() != 1 || files.first().isEmpty()) {
        return QStringLiteral("expected one project file, got %1, see --help").arg(files.size());
    }
    if (QFileInfo(files.first()).isDir()) {
        return completeLibrary(options, files.first());
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
    QString reason = workcell::readArguments(arguments, optionTable(&options), &files);
    if (reason.isEmpty()) {
        reason = complete(options, files);
    }
    if (reason.isEmpty()) {
        return options;
    }
    *problem = Problem{QString(), {}, reason};
    return std::nullopt;
}

std::optional<QString> Options::valueOf(const QString& name) const {
    const QString option = QStringLiteral("--") + name;
    for (auto text = given.rbegin(); text != given.rend(); ++text) {
        if (*text == option || text->startsWith(option + QLatin1Char('='))) {
            return text->mid(option.size() + 1);
        }
    }
    return std::nullopt;
}

QString Options::folder() const {
    return stations.isEmpty() ? QFileInfo(project).absolutePath() : stations;
}

QString latencyText(const sim::Latency& latency) {
    QString text = QStringLiteral("result=%1,posture=%2,write=%3")
                       .arg(latency.resultMs)
                       .arg(latency.postureMs)
                       .arg(latency.writeMs);
    if (latency.startMs > 0) {
        text += QStringLiteral(",start=%1").arg(latency.startMs);
    }
    if (latency.periodMs > 0) {
        text += QStringLiteral(",period=%1").arg(latency.periodMs);
    }
    if (latency.cornerMmPerS2 > 0) {
        text += QStringLiteral(",corner=%1").arg(latency.cornerMmPerS2);
    }
    return text;
}

QString versionText() {
    return QStringLiteral("lumo-run " LUMO_VERSION "\n");
}

QString usage() {
    constexpr int helpColumn = 26;
    Options ignored;
    return QStringLiteral(
               "Usage: lumo-run [options] PROJECT.json\n"
               "       lumo-run [options] --stations DIR\n"
               "       lumo-run [options] DIR\n"
               "       lumo-run --diff A B\n"
               "       lumo-run --replay FILE [--run N]\n\n"
               "Runs a welding project, or the projects of stations that their inputs start, with the real\n"
               "package on a simulated robot and weld cell, without a screen and on virtual time, and says\n"
               "what happened. A folder of projects: runs each that has a NAME.limits.json beside it, with "
               "its\n"
               "NAME.scenario.json. --diff: compares two traces by statement.\n\nOptions:\n") +
           workcell::helpText(optionTable(&ignored), helpColumn) +
           QStringLiteral(
               "\nExit status: 0 finished; 1 refused, stopped, failed, stalled or out of time; 2 bad usage\n"
               "or bad input. --check: 0 no errors, 1 errors, 2 a file cannot be read. --diff: 0 equal but "
               "for\n"
               "the times, 1 not. --replay: 0 the package does the same, 1 not, 2 nothing to replay.\n");
}

bool Options::takesStandardOutput() const {
    return trace == standardOutput || summary == standardOutput || junit == standardOutput;
}

}  // namespace run
