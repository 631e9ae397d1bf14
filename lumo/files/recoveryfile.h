#pragma once

#include "files/projectfile.h"
#include "module/host.h"

#include <QByteArray>
#include <QDateTime>
#include <QStringList>

namespace lumo {

/// What a recovery file holds: a program that was not saved yet, with its tool set.
struct Recovered {
    Project project;
    QDateTime time;   ///< of the writing
    QByteArray base;  ///< fileDigest() of the project file at that time

    /// Whether the project file is another one than at that time.
    [[nodiscard]] bool isOutdated(const QString& projectPath) const;
};

/// The recovery file of a project, beside it: NAME.json.recovery. For an empty path that of a program without
/// a file, "lumo_unsaved.json.recovery" in the working directory.
[[nodiscard]] QString recoveryFile(const QString& projectPath);
/// The file to which an undecided one is moved when another one is to be written.
[[nodiscard]] QString olderRecoveryFile(const QString& projectPath);
/// The project of a recovery file, also of an older one; empty for none.
[[nodiscard]] QString projectOfRecovery(const QString& file);
/// The recovery files of the working directory, the newest first.
[[nodiscard]] QStringList recoveryFilesHere();

/// Digest of a file's content; empty for what cannot be read.
[[nodiscard]] QByteArray fileDigest(const QString& path);
/// `lumo.program` and the tool set that belongs to it, as JSON.
[[nodiscard]] QByteArray programText();
/// The content of a recovery file that holds this programText() now.
[[nodiscard]] QByteArray recoveryText(const QString& projectPath, const QByteArray& program);
/// Nothing for a file that cannot be read or is no recovery file; not reported.
[[nodiscard]] std::optional<Recovered> readRecovery(const QString& file);

/// How many lines a program has that the other one has not, or the other way round, whichever is more.
[[nodiscard]] int changedLines(const QJsonArray& before, const QJsonArray& after);

}  // namespace lumo
