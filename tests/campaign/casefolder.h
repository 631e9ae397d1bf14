#pragma once

#include "campaign/schedulerun.h"

#include <QJsonObject>

namespace campaign {

/// A schedule as one JSON object, a line for each element of its lists.
QString readable(const QJsonObject& scenario);

/// Writes a failing schedule into the folder, which is made: scenario.json, violation.txt, events.txt.
/// False when a file cannot be written.
bool writeCase(const QString& folder, const QJsonObject& scenario, const QStringList& broken,
               const QStringList& events);

/// The schedule in a file, or in the scenario.json of a folder. False, and why, when it is none.
bool readCase(const QString& path, Scenario* scenario, QString* problem);

/// The path itself when it is a case; of a folder of cases each of them, sorted by name. Absolute: schedules
/// have a working directory of their own.
QStringList casesIn(const QString& path);

}  // namespace campaign
