#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

namespace app {

/// A file in a zip archive. In what is written the name may have folders: "log/lumo.log".
struct ArchiveFile {
    QString name;
    QByteArray content;
};
using ArchiveFiles = QVector<ArchiveFile>;

/// The bytes of a zip archive; empty, with the reason in `error`, when it cannot be made.
[[nodiscard]] QByteArray packArchive(const ArchiveFiles& files, QString* error);

/// What a packed archive may hold: more is refused before it is unpacked.
constexpr int mostArchiveFiles = 10000;
constexpr qint64 mostFileBytes = 64 << 20;
constexpr qint64 mostArchiveBytes = 512 << 20;

/// The files of a zip archive. Nothing, with the reason in `error`, when it is damaged, holds more than an
/// archive may, or holds anything but plain files without folders: no absolute or relative path, no link, no
/// name twice, nothing encrypted.
[[nodiscard]] std::optional<ArchiveFiles> unpackArchive(const QByteArray& bytes, QString* error);

}  // namespace app
