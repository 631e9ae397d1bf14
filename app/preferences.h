#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace app {

/// The default language: that of a locale ("zh_CN") if the panel has it, else English.
QString languageOf(const QString& locale);

/// The root of this project's checkout that contains a folder; empty outside of one.
QString checkoutOf(const QString& folder);

/// The default folder of projects and settings: `current` if it is in a checkout, else the user's data
/// folder, which need not exist.
QString defaultFolder(const QString& current);

/// What the panel remembers between two starts, in a JSON file in the user's configuration folder. Values
/// never stored are empty.
class Preferences {
public:
    [[nodiscard]] static QString language();
    static void rememberLanguage(const QString& language);
    [[nodiscard]] static QString folder();
    static void rememberFolder(const QString& folder);
    /// Of the laser source, in W.
    [[nodiscard]] static std::optional<double> ratedWatts();
    static void rememberRatedWatts(double watts);
    /// The docks that stood open.
    [[nodiscard]] static QStringList docks();
    static void rememberDocks(const QStringList& docks);
    /// The chapter of the handbook that was read last.
    [[nodiscard]] static QString helpChapter();
    static void rememberHelpChapter(const QString& chapter);
    /// Whether the program's lines are shown with their full text.
    [[nodiscard]] static bool fullRows();
    static void rememberFullRows(bool full);
    /// Whether a tap on a field opens the number pad, or the keyboard.
    [[nodiscard]] static bool numberPad();
    static void rememberNumberPad(bool used);
    [[nodiscard]] static bool keyboard();
    static void rememberKeyboard(bool used);
    /// Whether the window filled the screen.
    [[nodiscard]] static bool maximised();
    static void rememberMaximised(bool maximised);
    /// By what everything grows; 0: by the size of the window.
    [[nodiscard]] static double factor();
    static void rememberFactor(double factor);
    /// Whether the list of the first setup is not to come by itself any more.
    [[nodiscard]] static bool setupDone();
    static void rememberSetupDone();
    /// The file.
    [[nodiscard]] static QString file();
};

/// Sets the working directory, where packages keep projects and settings: `given`, else `remembered`, else
/// the default folder, which is made if missing. A remembered folder that cannot be entered is skipped and
/// written to `lost`. False when no folder can be entered.
bool enterWorkFolder(const QString& given, const QString& remembered, QString* lost);

}  // namespace app
