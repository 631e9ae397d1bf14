#include "mendo/convert.h"

#include <QLocale>

#include <cmath>
#include <limits>

namespace mendo {

namespace {

/// Reads a number, also from text; false for anything else and for infinite numbers.
bool number(const QVariant& value, double* result) {
    bool converts = true;
    switch (static_cast<QMetaType::Type>(value.userType())) {
        case QMetaType::Bool:
            *result = value.toBool() ? 1.0 : 0.0;
            break;
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::ULong:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Float:
        case QMetaType::Double:
        case QMetaType::QString:
        case QMetaType::QByteArray:
            *result = value.toDouble(&converts);
            break;
        default:
            converts = false;
    }
    return converts && std::isfinite(*result);
}

QString textOfNumber(double value) {
    // Whole numbers without an exponent, as long as a double is exact (2^53).
    constexpr double exactBelow = 9007199254740992.0;
    if (std::abs(value) < exactBelow && std::trunc(value) == value) {
        return QString::number(static_cast<qint64>(value));
    }
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

}  // namespace

int toInt(const QVariant& value, int def) {
    if (value.userType() == QMetaType::Int) {
        return *static_cast<const int*>(value.constData());
    }
    double result = 0.0;
    if (!number(value, &result)) {
        return def;
    }
    result = std::trunc(result);
    return result >= std::numeric_limits<int>::min() && result <= std::numeric_limits<int>::max()
               ? static_cast<int>(result)
               : def;
}

double toDouble(const QVariant& value, double def) {
    double result = 0.0;
    return number(value, &result) ? result : def;
}

bool toBool(const QVariant& value, bool def) {
    if (value.userType() == QMetaType::QString || value.userType() == QMetaType::QByteArray) {
        const QString text = value.toString().trimmed();
        if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) {
            return true;
        }
        if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) {
            return false;
        }
    }
    double result = 0.0;
    return number(value, &result) ? result != 0.0 : def;
}

QString toText(const QVariant& value, const QString& def) {
    switch (static_cast<QMetaType::Type>(value.userType())) {
        case QMetaType::QString:
        case QMetaType::QByteArray:
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::ULong:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
            return value.toString();
        case QMetaType::Float:
        case QMetaType::Double: {
            const double numeric = value.toDouble();
            return std::isfinite(numeric) ? textOfNumber(numeric) : def;
        }
        default:
            return def;
    }
}

QJsonValue toJson(const QVariant& value) {
    switch (static_cast<QMetaType::Type>(value.userType())) {
        case QMetaType::UnknownType:
        case QMetaType::VoidStar:
        case QMetaType::QObjectStar:
            return QJsonValue();
        case QMetaType::Float:
        case QMetaType::Double: {
            const double number = value.toDouble();
            return std::isfinite(number) ? QJsonValue(number) : QJsonValue();
        }
        default:
            return value.userType() < QMetaType::User ? QJsonValue::fromVariant(value) : QJsonValue();
    }
}

}  // namespace mendo
