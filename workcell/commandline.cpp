#include "workcell/commandline.h"

#include <QFile>
#include <QTextCodec>

#include <algorithm>
#include <cstdio>

namespace workcell {

namespace {

const QString dashes = QStringLiteral("--");

/// Reads the option at an index, which moves on to its value.
QString readOption(const QStringList& arguments, const std::vector<Option>& options, int* index) {
    const QString argument = arguments[*index];
    const int equals = argument.indexOf(QLatin1Char('='));
    const QString name = argument.mid(dashes.size(), equals < 0 ? -1 : equals - dashes.size());
    const auto option = std::find_if(options.begin(), options.end(),
                                     [&name](const Option& o) { return name == QLatin1String(o.name); });
    if (!argument.startsWith(dashes) || option == options.end()) {
        return QStringLiteral("unknown option %1, see --help").arg(argument);
    }
    const bool mayHaveValue = *option->value == '[';
    const bool wantsValue = *option->value != '\0' && !mayHaveValue;
    if (wantsValue && equals < 0 && *index + 1 >= arguments.size()) {
        return QStringLiteral("--%1 needs a value: %2").arg(name, QLatin1String(option->value));
    }
    if (!wantsValue && !mayHaveValue && equals >= 0) {
        return QStringLiteral("--%1 takes no value").arg(name);
    }
    QString value = equals < 0 ? QString() : argument.mid(equals + 1);
    if (wantsValue && equals < 0) {
        value = arguments[++*index];
    }
    const QString reason = option->read(value);
    if (reason.isEmpty()) {
        return {};
    }
    return QStringLiteral("--%1 %2 %3").arg(name, value.isEmpty() ? QStringLiteral("\"\"") : value, reason);
}

}  // namespace

Option flag(const char* name, const char* help, bool* isSet) {
    return {name, "", help, [isSet](const QString&) {
                *isSet = true;
                return QString();
            }};
}

Option languageOption(QString* language, const char* help) {
    return {"language", "cn|en|ru", help,
            [language](const QString& text) { return readWord(text, languages(), language); }};
}

QString readWord(const QString& text, const QStringList& words, QString* value) {
    *value = text;
    return words.contains(text) ? QString()
                                : QStringLiteral("is none of ") + words.join(QStringLiteral(", "));
}

QString readArguments(const QStringList& arguments, const std::vector<Option>& options, QStringList* files) {
    QString reason;
    bool optionsEnded = false;
    for (int i = 0; i < arguments.size() && reason.isEmpty(); ++i) {
        const QString& argument = arguments[i];
        const bool isOption = !optionsEnded && argument.startsWith(QLatin1Char('-')) && argument.size() > 1;
        if (files && isOption && argument == dashes) {
            optionsEnded = true;
        } else if (isOption) {
            reason = readOption(arguments, options, &i);
        } else if (files) {
            files->append(argument);
        } else {
            reason = QStringLiteral("unknown argument %1, see --help").arg(argument);
        }
    }
    return reason.simplified();
}

QString helpText(const std::vector<Option>& options, int column) {
    QString text;
    for (const Option& option : options) {
        const QString space = *option.value == '[' ? QString() : QStringLiteral(" ");
        const QString left =
            QStringLiteral("  --%1%2%3").arg(QLatin1String(option.name), space, QLatin1String(option.value));
        QString help = QLatin1String(option.help);
        const QString nextLine = QLatin1Char('\n') + QString(column, QLatin1Char(' '));
        help.replace(QLatin1Char('\n'), nextLine);
        const bool fits = left.size() < column;
        text += left.leftJustified(column - 1) + (fits ? QStringLiteral(" ") : nextLine) + help +
                QLatin1Char('\n');
    }
    return text;
}

QStringList languages() {
    return {QStringLiteral("cn"), QStringLiteral("en"), QStringLiteral("ru")};
}

QStringList decodedArguments(int argc, char** argv) {
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QFile::decodeName(argv[i]));
    }
    return arguments;
}

void print(const QString& text) {
    std::fputs(text.toUtf8().constData(), stdout);
}

void printError(const char* program, const QString& text) {
    std::fprintf(stderr, "%s: %s\n", program, text.toUtf8().constData());
    std::fflush(stderr);
}

bool isComplaint(QtMsgType type, const QString& text) {
    // The offscreen platform says the first for every window, Qt the second outside of a login session.
    const bool isUsual = text.startsWith(QLatin1String("This plugin does not support")) ||
                         text.startsWith(QLatin1String("QStandardPaths:"));
    return type != QtDebugMsg && type != QtInfoMsg && !isUsual;
}

}  // namespace workcell
