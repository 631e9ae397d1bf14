#include "program/entryrange.h"

#include <cmath>

namespace prog {

namespace {

constexpr QChar point = QLatin1Char('.');

QString withPoint(const QString& text) {
    return QString(text).replace(QLatin1Char(','), point).trimmed();
}

/// Digits behind the decimal point.
int decimalsOf(const QString& text) {
    const int at = text.indexOf(point);
    return at < 0 ? 0 : text.size() - at - 1;
}

}  // namespace

std::optional<double> figureIn(const QString& text) {
    bool isNumber = false;
    const double number = withPoint(text).toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? std::make_optional(number) : std::nullopt;
}

bool EntryRange::takes(const QString& text) const {
    const std::optional<double> number = figureIn(text);
    const bool isWhole = decimals > 0 || withPoint(text).indexOf(point) < 0;
    return number && *number >= least && *number <= most && isWhole &&
           decimalsOf(withPoint(text)) <= decimals;
}

}  // namespace prog
