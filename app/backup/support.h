#pragma once

#include "app/backup/archive.h"

#include <QStringList>

namespace app {

/// What a support archive is made of. Files that are not there are left out.
struct SupportFacts {
    QString folder;        ///< of settings and projects, and below it the log
    QString project;       ///< path of the open project; empty when none is open
    QString preferences;   ///< path of the panel's own settings
    QString data;          ///< the user's data folder, with results and event log
    QStringList notices;   ///< shown to the operator, newest first
    QByteArray telemetry;  ///< its settings without the password; empty where there are none
};

/// The files of a support archive: versions, settings, the open project with its limits and recovery file,
/// the program and the whole state as they are in the tree now, the end of each log, the last results, the
/// event log, the newest part of the flight recording.
[[nodiscard]] ArchiveFiles supportFiles(const SupportFacts& facts);

}  // namespace app
