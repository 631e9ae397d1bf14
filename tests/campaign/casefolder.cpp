#include "campaign/casefolder.h"

#include "campaign/scenarioreader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

namespace campaign {

namespace {

const QString scenarioFile = QStringLiteral("scenario.json");

/// A value alone is how Qt writes an array of one element, without its brackets.
QString compact(const QJsonValue& value) {
    const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text.mid(1, text.size() - 2));
}

bool write(const QString& path, const QString& text) {
    QFile file(path);
    const QByteArray bytes = text.toUtf8() + '\n';
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

}  // namespace

QString readable(const QJsonObject& scenario) {
    QStringList members;
    for (auto member = scenario.begin(); member != scenario.end(); ++member) {
        QString text = compact(*member);
        if (member->isArray()) {
            QStringList elements;
            for (const QJsonValue element : member->toArray()) {
                elements << QStringLiteral("    ") + compact(element);
            }
            text = elements.isEmpty()
                       ? QStringLiteral("[]")
                       : QStringLiteral("[\n%1\n  ]").arg(elements.join(QStringLiteral(",\n")));
        }
        members << QStringLiteral("  \"%1\": %2").arg(member.key(), text);
    }
    return QStringLiteral("{\n%1\n}").arg(members.join(QStringLiteral(",\n")));
}

bool writeCase(const QString& folder, const QJsonObject& scenario, const QStringList& broken,
               const QStringList& events) {
    const QDir dir(folder);
    return dir.mkpath(QStringLiteral(".")) && write(dir.filePath(scenarioFile), readable(scenario)) &&
           write(dir.filePath(QStringLiteral("violation.txt")), broken.join(QLatin1Char('\n'))) &&
           write(dir.filePath(QStringLiteral("events.txt")), events.join(QLatin1Char('\n')));
}

bool readCase(const QString& path, Scenario* scenario, QString* problem) {
    QFile file(QFileInfo(path).isDir() ? QDir(path).filePath(scenarioFile) : path);
    if (!file.open(QIODevice::ReadOnly)) {
        *problem = QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
        return false;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (!document.isObject()) {
        *problem = QStringLiteral("%1: %2").arg(file.fileName(), error.errorString());
        return false;
    }
    if (!scenarioFromJson(document.object(), scenario, problem)) {
        problem->prepend(file.fileName() + QStringLiteral(": "));
        return false;
    }
    return true;
}

QStringList casesIn(const QString& path) {
    if (!QFileInfo(path).isDir() || QFile::exists(QDir(path).filePath(scenarioFile))) {
        return {QFileInfo(path).absoluteFilePath()};
    }
    QStringList cases;
    for (const QFileInfo& folder : QDir(path).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        if (QFile::exists(QDir(folder.filePath()).filePath(scenarioFile))) {
            cases << folder.absoluteFilePath();
        }
    }
    return cases;
}

}  // namespace campaign
