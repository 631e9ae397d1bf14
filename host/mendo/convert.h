#pragma once

#include <QJsonValue>
#include <QString>
#include <QVariant>

namespace mendo {

// Conversions of node values. Text and numbers convert both ways. Missing values, pointers, containers,
// infinity and not-a-number give `def`.

/// Fractions are truncated (2.7 is 2, "60.0" is 60); numbers out of range give `def`.
int toInt(const QVariant& value, int def);
double toDouble(const QVariant& value, double def);
/// "true" and "false" are accepted in any letter case; any number except 0 is true.
bool toBool(const QVariant& value, bool def);
/// Numbers in the shortest form that reads back as the same number.
QString toText(const QVariant& value, const QString& def);
/// Null for what JSON cannot hold: pointers, infinity, not-a-number.
QJsonValue toJson(const QVariant& value);

}  // namespace mendo
