#pragma once

#include "app/backup/archive.h"

#include <QDateTime>
#include <QDir>
#include <QStringList>

#include <optional>

namespace app {

// A backup holds every JSON file of the folder of projects and settings, and a file "manifest.json" with the
// format, the date, and size and SHA-256 checksum of each.

/// The backup of a folder as the bytes of a zip archive; empty, with the reason in `error`, when a file
/// cannot be read.
[[nodiscard]] QByteArray makeBackup(const QDir& folder, const QDateTime& now, QString* error);

/// What restoring a backup would do to a folder.
struct RestorePlan {
    QDateTime made;
    ArchiveFiles files;     ///< all of the backup, without the manifest
    QStringList replaced;   ///< names of files that are there with another content
    QStringList added;      ///< names of files that are not there
    QStringList unchanged;  ///< names of files that are there with the same content
    QStringList kept;       ///< names of files that are there and not in the backup: they stay
};

/// Reads and checks a backup; nothing is written. Nothing, with the reason in `error`, for an archive that is
/// damaged, is no backup, or whose files are not those of its manifest.
[[nodiscard]] std::optional<RestorePlan> readBackup(const QByteArray& bytes, const QDir& folder,
                                                    QString* error);

/// Writes the backup's files into the folder, each whole. Before, the folder is backed up beside its files as
/// "before-restore-DATE.zip", whose name `keptAs` is set to. When a file cannot be written, those before it
/// are put back; false, with the reason in `error`.
bool restoreBackup(const RestorePlan& plan, const QDir& folder, const QDateTime& now, QString* keptAs,
                   QString* error);

}  // namespace app
