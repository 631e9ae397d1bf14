#include "app/options.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace app {

namespace {

using Reader = bool (*)(Options&, const QString&, QString*);

/// One option: its name, what stands for its value ("" for a switch), help and reader.
struct Option {
    const char* name;
    const char* value;
    const char* help;
    Reader read;
};

bool readLanguage(Options& o, const QString& text, QString* why) {
    o.language = text;
    *why = QStringLiteral("is none of ") + languages().join(QStringLiteral(", "));
    return languages().contains(text);
}

bool readSettings(Options& o, const QString& text, QString* why) {
    o.settings = QFileInfo(text).absoluteFilePath();
    *why = QStringLiteral("is no folder");
    return !text.isEmpty() && QFileInfo(text).isDir();
}

bool readProject(Options& o, const QString& text, QString* why) {
    const QFileInfo file(text);
    o.project = file.absoluteFilePath();
    *why = QStringLiteral("is no file that can be read");
    return file.isFile() && file.isReadable();
}

bool readExample(Options& o, const QString& text, QString* why) {
    o.example = text;
    *why = QStringLiteral("is no example");
    return !text.isEmpty() && !text.contains(QLatin1Char('/'));
}

bool readVcd(Options& o, const QString& text, QString* why) {
    const QFileInfo file(text);
    o.vcd = file.absoluteFilePath();
    *why = QStringLiteral("is no file that can be written");
    return !text.isEmpty() && !file.isDir() && file.dir().exists();
}

bool readScreenshots(Options& o, const QString& text, QString* why) {
    const QFileInfo folder(text);
    o.screenshots = folder.absoluteFilePath();
    *why = QStringLiteral("is no folder");
    return !text.isEmpty() && (folder.isDir() || !folder.exists());
}

const Option optionRows[] = {
    {"language", "cn|en|ru", "language of the panel; remembered (at first: the system's)", readLanguage},
    {"settings", "DIR",
     "folder of projects and settings files; remembered (at first: the current\n"
     "folder in a checkout, else the user's data folder)",
     readSettings},
    {"open", "PROJECT", "open a project, as the Open button does", readProject},
    {"example", "NAME",
     "open a copy of an example (lap_seam, flange, box_stitch, stations) with its\n"
     "settings; not remembered",
     readExample},
    {"vcd", "FILE", "write the cell's signals as a value change dump at the end", readVcd},
    {"screenshots", "DIR",
     "write a picture of every page, dialog and message, in every language (or that\n"
     "of --language) and two sizes, without a screen, and end",
     readScreenshots},
    {"version", "", "print the version and end",
     [](Options& o, const QString&, QString*) { return o.version = true; }},
    {"help", "", "print this and end", [](Options& o, const QString&, QString*) { return o.help = true; }},
};

const Option* findOption(const QString& name) {
    const auto found = std::find_if(std::begin(optionRows), std::end(optionRows),
                                    [&name](const Option& o) { return name == QLatin1String(o.name); });
    return found == std::end(optionRows) ? nullptr : found;
}

/// Reads the option at `index`, which moves on to its value; the reason when it is wrong.
QString readOption(Options& options, const QStringList& arguments, int& index) {
    const QString argument = arguments[index];
    const int equals = argument.indexOf(QLatin1Char('='));
    const QString name = argument.mid(2, equals < 0 ? -1 : equals - 2);
    const Option* option = argument.startsWith(QLatin1String("--")) ? findOption(name) : nullptr;
    if (!option) {
        return QStringLiteral("unknown argument %1, see --help").arg(argument);
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

}  // namespace

QStringList languages() {
    return {QStringLiteral("cn"), QStringLiteral("en"), QStringLiteral("ru")};
}

std::optional<Options> parseOptions(const QStringList& arguments, QString* error) {
    Options options;
    QString reason;
    for (int i = 0; i < arguments.size() && reason.isEmpty(); ++i) {
        reason = readOption(options, arguments, i);
    }
    const bool own = !(options.settings.isEmpty() && options.project.isEmpty());
    const bool example = !options.example.isEmpty();
    if (reason.isEmpty() && !options.screenshots.isEmpty() && (own || example)) {
        reason = QStringLiteral("--screenshots brings its own project and settings");
    }
    if (reason.isEmpty() && example && own) {
        reason = QStringLiteral("--example brings its own project and settings");
    }
    if (reason.isEmpty()) {
        return options;
    }
    *error = reason.simplified();
    return std::nullopt;
}

QString versionText() {
    return QStringLiteral("lumo-panel " LUMO_VERSION "\n");
}

QString usage() {
    QString text = QStringLiteral(
        "Usage: lumo-panel [options]\n\n"
        "Opens the operator panel on a simulated robot and weld cell.\n\nOptions:\n");
    for (const Option& option : optionRows) {
        const QString left =
            QStringLiteral("  --%1 %2").arg(QLatin1String(option.name), QLatin1String(option.value));
        QString help = QLatin1String(option.help);
        help.replace(QLatin1Char('\n'), QLatin1Char('\n') + QString(23, QLatin1Char(' ')));
        text += left.leftJustified(22) + QLatin1Char(' ') + help + QLatin1Char('\n');
    }
    return text + QStringLiteral(
                      "\nExit status: 0 closed, or pictures written; 1 the panel could not be opened, or a\n"
                      "picture is missing; 2 bad usage; 3 no display can be opened.\n");
}

}  // namespace app
