#include "app/clocktext.h"

namespace app {

QString clockText(qint64 ms) {
    constexpr qint64 msPerS = 1000, perUnit = 60;
    const qint64 seconds = ms / msPerS;
    const auto twoDigits = [](qint64 value) {
        return QString::number(value).rightJustified(2, QLatin1Char('0'));
    };
    const QString rest = twoDigits(seconds % perUnit);
    const qint64 minutes = seconds / perUnit;
    if (minutes < perUnit) {
        return QStringLiteral("%1:%2").arg(QString::number(minutes), rest);
    }
    return QStringLiteral("%1:%2:%3")
        .arg(QString::number(minutes / perUnit), twoDigits(minutes % perUnit), rest);
}

}  // namespace app
