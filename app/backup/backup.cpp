#include "app/backup/backup.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <utility>

namespace app {

namespace {

/// The context of the texts.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(app::Backup)
};

const QString manifestName = QStringLiteral("manifest.json");
const QString formatWord = QStringLiteral("lumo-backup");
constexpr int formatVersion = 1;

QString checksum(const QByteArray& content) {
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
}

QStringList filesIn(const QDir& folder) {
    QStringList names = folder.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    names.removeOne(manifestName);
    return names;
}

std::optional<QByteArray> contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QByteArray content = file.readAll();
    return file.error() == QFile::NoError ? std::make_optional(content) : std::nullopt;
}

bool writeWhole(const QString& path, const QByteArray& content) {
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit();
}

ArchiveFile manifestOf(const ArchiveFiles& files, const QDateTime& now) {
    QJsonObject list;
    for (const ArchiveFile& file : files) {
        list.insert(file.name, QJsonObject{{QStringLiteral("bytes"), file.content.size()},
                                           {QStringLiteral("sha256"), checksum(file.content)}});
    }
    const QJsonObject manifest{{QStringLiteral("format"), formatWord},
                               {QStringLiteral("version"), formatVersion},
                               {QStringLiteral("made"), now.toString(Qt::ISODate)},
                               {QStringLiteral("files"), list}};
    return {manifestName, QJsonDocument(manifest).toJson()};
}

/// Takes the manifest out of the files.
QJsonObject takeManifest(ArchiveFiles* files) {
    for (int i = 0; i < files->size(); ++i) {
        if (files->at(i).name == manifestName) {
            return QJsonDocument::fromJson(files->takeAt(i).content).object();
        }
    }
    return {};
}

/// What speaks against the files; empty when they are those of the manifest.
QString faultOf(const QJsonObject& manifest, const ArchiveFiles& files) {
    if (manifest.value(QLatin1String("format")).toString() != formatWord) {
        return Text::tr("这不是备份文件");
    }
    if (manifest.value(QLatin1String("version")).toInt() != formatVersion) {
        return Text::tr("备份来自更新的版本");
    }
    const QJsonObject list = manifest.value(QLatin1String("files")).toObject();
    for (const ArchiveFile& file : files) {
        const QString expected = list.value(file.name).toObject().value(QLatin1String("sha256")).toString();
        if (expected != checksum(file.content) || !file.name.endsWith(QLatin1String(".json"))) {
            return Text::tr("备份中的 %1 已被更改").arg(file.name);
        }
    }
    return list.size() == files.size() ? QString() : Text::tr("备份不完整");
}

/// Puts files back that were written; those without a content before are removed.
void putBack(const QVector<std::pair<QString, std::optional<QByteArray>>>& written) {
    for (const auto& [path, before] : written) {
        if (before) {
            writeWhole(path, *before);
        } else {
            QFile::remove(path);
        }
    }
}

}  // namespace

QByteArray makeBackup(const QDir& folder, const QDateTime& now, QString* error) {
    ArchiveFiles files;
    const QStringList names = filesIn(folder);
    for (const QString& name : names) {
        const std::optional<QByteArray> content = contentOf(folder.filePath(name));
        if (!content) {
            *error = Text::tr("无法读取 %1").arg(name);
            return {};
        }
        files.append({name, *content});
    }
    files.append(manifestOf(files, now));
    return packArchive(files, error);
}

std::optional<RestorePlan> readBackup(const QByteArray& bytes, const QDir& folder, QString* error) {
    std::optional<ArchiveFiles> files = unpackArchive(bytes, error);
    if (!files) {
        return std::nullopt;
    }
    const QJsonObject manifest = takeManifest(&*files);
    *error = faultOf(manifest, *files);
    if (!error->isEmpty()) {
        return std::nullopt;
    }
    RestorePlan plan;
    plan.made = QDateTime::fromString(manifest.value(QLatin1String("made")).toString(), Qt::ISODate);
    plan.kept = filesIn(folder);
    for (const ArchiveFile& file : qAsConst(*files)) {
        plan.kept.removeOne(file.name);
        const QString path = folder.filePath(file.name);
        if (!QFile::exists(path)) {
            plan.added << file.name;
        } else {
            (contentOf(path) == file.content ? plan.unchanged : plan.replaced) << file.name;
        }
    }
    plan.files = *files;
    return plan;
}

bool restoreBackup(const RestorePlan& plan, const QDir& folder, const QDateTime& now, QString* keptAs,
                   QString* error) {
    const QByteArray before = makeBackup(folder, now, error);
    *keptAs = QStringLiteral("before-restore-%1.zip").arg(now.toString(QStringLiteral("yyyyMMdd-HHmmss")));
    if (before.isEmpty()) {
        return false;
    }
    if (!writeWhole(folder.filePath(*keptAs), before)) {
        *error = Text::tr("无法写入 %1").arg(*keptAs);
        return false;
    }
    QVector<std::pair<QString, std::optional<QByteArray>>> written;
    for (const ArchiveFile& file : plan.files) {
        const QString path = folder.filePath(file.name);
        const std::optional<QByteArray> old = contentOf(path);
        if (old == file.content) {
            continue;
        }
        if (!writeWhole(path, file.content)) {
            *error = Text::tr("无法写入 %1").arg(file.name);
            putBack(written);
            return false;
        }
        written.append({path, old});
    }
    return true;
}

}  // namespace app
