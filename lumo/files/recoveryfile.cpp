#include "files/recoveryfile.h"

#include "files/stationrun.h"
#include "program/words.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QJsonDocument>

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

constexpr QLatin1String ending = ".recovery"_l1;
constexpr QLatin1String olderEnding = ".recovery.older"_l1;
constexpr QLatin1String withoutFile = "lumo_unsaved.json"_l1;

// Keys of the file.
constexpr QLatin1String timeKey = "time"_l1;
constexpr QLatin1String baseKey = "base"_l1;
constexpr QLatin1String programKey = "program"_l1;

QHash<QByteArray, int> countedLines(const QJsonArray& program) {
    QHash<QByteArray, int> counts;
    for (const QJsonValue line : program) {
        ++counts[QJsonDocument(line.toObject()).toJson(QJsonDocument::Compact)];
    }
    return counts;
}

/// How many lines of a program another one lacks.
int linesLacking(const QHash<QByteArray, int>& program, const QHash<QByteArray, int>& other) {
    int count = 0;
    for (auto line = program.begin(); line != program.end(); ++line) {
        count += std::max(0, line.value() - other.value(line.key()));
    }
    return count;
}

}  // namespace

bool Recovered::isOutdated(const QString& projectPath) const {
    return fileDigest(projectPath) != base;
}

QString recoveryFile(const QString& projectPath) {
    return (projectPath.isEmpty() ? QString(withoutFile) : projectPath) + ending;
}

QString olderRecoveryFile(const QString& projectPath) {
    return (projectPath.isEmpty() ? QString(withoutFile) : projectPath) + olderEnding;
}

QString projectOfRecovery(const QString& file) {
    const QLatin1String last = file.endsWith(olderEnding) ? olderEnding : ending;
    const QString project = file.chopped(last.size());
    return QFileInfo(project).fileName() == withoutFile ? QString() : project;
}

QStringList recoveryFilesHere() {
    const QDir folder;
    QStringList files = folder.entryList(
        {QLatin1String("*.json") + ending, QLatin1String("*.json") + olderEnding}, QDir::Files, QDir::Time);
    std::transform(files.begin(), files.end(), files.begin(),
                   [&folder](const QString& file) { return folder.absoluteFilePath(file); });
    return files;
}

QByteArray fileDigest(const QString& path) {
    QFile file(path);
    // Reading a pipe or a device may never end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha1).toHex();
}

QByteArray programText() {
    mendo::JsonWriter text(mendo::JsonWriter::Layout::Document);
    return text.beginArray().elements(m(key::program)).node(projectToolset()).endArray().take().trimmed();
}

QByteArray recoveryText(const QString& projectPath, const QByteArray& program) {
    mendo::JsonWriter text(mendo::JsonWriter::Layout::Document);
    text.beginObject();
    text.key(timeKey).string(mendo::Clock::current().now().toString(Qt::ISODate));
    text.key(baseKey).string(QString::fromLatin1(fileDigest(projectPath)));
    return text.key(programKey).raw(program).endObject().take();
}

std::optional<Recovered> readRecovery(const QString& file) {
    mendo::FileProblem ignored;
    const std::optional<mendo::JsonText> text = mendo::readJsonFile(file, &ignored);
    const QJsonObject content = text ? text->value().toObject() : QJsonObject();
    const std::optional<Project> project = projectFrom(content.value(programKey));
    const QDateTime time = QDateTime::fromString(content.value(timeKey).toString(), Qt::ISODate);
    if (!project || !time.isValid()) {
        return std::nullopt;
    }
    return Recovered{*project, time, content.value(baseKey).toString().toLatin1()};
}

int changedLines(const QJsonArray& before, const QJsonArray& after) {
    const QHash<QByteArray, int> old = countedLines(before), fresh = countedLines(after);
    return std::max(linesLacking(old, fresh), linesLacking(fresh, old));
}

}  // namespace lumo
