#pragma once

#include <QPoint>
#include <QString>

#include <optional>

namespace app {

/// The language when none was given or remembered: that of the system where the panel speaks it,
/// else English. `locale`: a name such as "zh_CN".
QString languageOf(const QString& locale);

/// The checkout of this project that a folder lies in; empty when it lies in none.
QString checkoutOf(const QString& folder);

/// The folder of projects and settings when none was given or remembered: `current` in a checkout,
/// else the user's data folder, which need not exist yet.
QString defaultFolder(const QString& current);

/// What the panel remembers from one start to the next, in the user's configuration (NAME.json). What
/// was never remembered is empty.
class Preferences {
public:
    [[nodiscard]] static QString language();
    static void rememberLanguage(const QString& language);
    [[nodiscard]] static QString folder();
    static void rememberFolder(const QString& folder);
    /// Where the operator has put the pendant, and whether all of it is shown.
    [[nodiscard]] static std::optional<QPoint> pendantPlace();
    [[nodiscard]] static bool pendantUnfolded();
    static void rememberPendant(const QPoint& place, bool unfolded);
};

}  // namespace app
