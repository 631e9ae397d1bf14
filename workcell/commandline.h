#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace workcell {

/// A row of a program's table of options.
struct Option {
    const char* name;  ///< without dashes
    /// What stands for its value in the help; "" for a flag, which has none; "[=N]" for one that can be left
    /// out, and is empty then.
    const char* value;
    const char* help;  ///< may have several lines
    /// Takes the value. Returns why it is wrong ("is no folder"), else an empty text.
    std::function<QString(const QString&)> read;
};

/// An option without a value, which sets a variable.
Option flag(const char* name, const char* help, bool* isSet);
/// --language: "cn", "en" or "ru".
Option languageOption(QString* language, const char* help);
/// Reads one of some words.
QString readWord(const QString& text, const QStringList& words, QString* value);

/// Reads options written as `--name VALUE`, `--name=VALUE` or `--flag`. The other arguments, and everything
/// behind `--`, go to `files`; null where a program takes none. Returns what is wrong with the first bad
/// argument, in one line without a full stop; empty when there is none.
QString readArguments(const QStringList& arguments, const std::vector<Option>& options, QStringList* files);

/// The help of a table of options: names on the left, descriptions from a column on.
QString helpText(const std::vector<Option>& options, int column);

/// The languages of the panel, in the order in which they are offered.
QStringList languages();

/// The arguments of main() without the program's name. File names are taken as UTF-8 in any locale.
QStringList decodedArguments(int argc, char** argv);

/// Prints on standard output.
void print(const QString& text);
/// Prints one line on standard error: "PROGRAM: TEXT".
void printError(const char* program, const QString& text);

/// Whether a message of Qt concerns the user: a warning or worse that does not appear at every start.
bool isComplaint(QtMsgType type, const QString& text);

}  // namespace workcell
