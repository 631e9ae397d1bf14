#pragma once

#include <QJsonValue>
#include <QString>
#include <QVariant>

namespace mendo {

/// Conversions of node values, forgiving between text and numbers; `def` for whatever does not
/// convert: missing values, pointers, containers, numbers that are infinite or not a number.

/// A fraction is cut off toward zero (2.7 is 2, "60.0" is 60); numbers outside the range give `def`.
int toInt(const QVariant& value, int def);
double toDouble(const QVariant& value, double def);
/// "true" and "false" in any letter case; any number but 0 is true.
bool toBool(const QVariant& value, bool def);
/// Numbers in their shortest form that reads back as the same number.
QString toText(const QVariant& value, const QString& def);
/// Null for what JSON cannot hold: pointers, numbers that are not finite.
QJsonValue toJson(const QVariant& value);

}  // namespace mendo
