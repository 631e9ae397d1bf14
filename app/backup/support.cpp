#include "app/backup/support.h"

#include "flight/ringreader.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScreen>
#include <QSysInfo>

namespace app {

namespace {

constexpr qint64 mostLogBytes = 2 << 20;
constexpr int mostResults = 20;
constexpr qint64 mostFlightBytes = 16 << 20;

/// Appends a file, or its last bytes when it is longer than `most`.
void append(ArchiveFiles* files, const QString& name, const QString& path, qint64 most = mostFileBytes) {
    QFile file(path);
    if (path.isEmpty() || !QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        return;
    }
    if (file.size() > most) {
        file.seek(file.size() - most);
    }
    files->append({name, file.readAll()});
}

void appendFolder(ArchiveFiles* files, const QString& as, const QString& folder, const QString& pattern,
                  int count, qint64 most) {
    const QDir dir(folder);
    const QFileInfoList newest = dir.entryInfoList({pattern}, QDir::Files, QDir::Time);
    for (const QFileInfo& file : newest.mid(0, count)) {
        append(files, as + QLatin1Char('/') + file.fileName(), file.filePath(), most);
    }
}

QByteArray nodeText(QLatin1String path) {
    const QJsonValue value = m(path)->exportToJson();
    return (value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject())).toJson();
}

QByteArray versionText(const SupportFacts& facts) {
    QStringList lines{
        QStringLiteral("lumo-panel " LUMO_VERSION),
        QStringLiteral("Qt %1, built with %2").arg(QLatin1String(qVersion()), QStringLiteral(QT_VERSION_STR)),
        QStringLiteral("%1, %2 %3, %4")
            .arg(QSysInfo::prettyProductName(), QSysInfo::kernelType(), QSysInfo::kernelVersion(),
                 QSysInfo::currentCpuArchitecture()),
        QStringLiteral("made %1").arg(mendo::Clock::current().now().toString(Qt::ISODate)),
        QStringLiteral("folder %1").arg(facts.folder),
        QStringLiteral("project %1").arg(facts.project)};
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens) {
        lines << QStringLiteral("screen %1x%2, %3 dpi")
                     .arg(screen->size().width())
                     .arg(screen->size().height())
                     .arg(screen->logicalDotsPerInch());
    }
    return (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
}

}  // namespace

ArchiveFiles supportFiles(const SupportFacts& facts) {
    ArchiveFiles files{{QStringLiteral("versions.txt"), versionText(facts)},
                       {QStringLiteral("notices.txt"), facts.notices.join(QLatin1Char('\n')).toUtf8()},
                       {QStringLiteral("state/program.json"), nodeText(prog::key::program)},
                       {QStringLiteral("state/lumo.json"), nodeText(prog::key::lumo)}};
    const QDir folder(facts.folder);
    for (const char* name : {"lumo_port.json", "lumo_param.json", "lumo_signalsConfig.json"}) {
        append(&files, QStringLiteral("settings/") + QLatin1String(name),
               folder.filePath(QLatin1String(name)));
    }
    append(&files, QStringLiteral("settings/") + QFileInfo(facts.preferences).fileName(), facts.preferences);
    if (!facts.telemetry.isEmpty()) {
        files.append({QStringLiteral("settings/telemetry.json"), facts.telemetry});
    }
    if (!facts.project.isEmpty()) {
        const QFileInfo project(facts.project);
        const QString limits =
            project.dir().filePath(project.completeBaseName() + QStringLiteral(".limits.json"));
        for (const QString& path : {facts.project, limits, facts.project + QStringLiteral(".recovery")}) {
            append(&files, QStringLiteral("project/") + QFileInfo(path).fileName(), path);
        }
    }
    appendFolder(&files, QStringLiteral("log"), folder.filePath(QStringLiteral("log")),
                 QStringLiteral("*.log"), mostResults, mostLogBytes);
    const QDir data(facts.data);
    appendFolder(&files, QStringLiteral("runs"), data.filePath(QStringLiteral("runs")),
                 QStringLiteral("run-*.json"), mostResults, mostFileBytes);
    for (const char* name : {"events.sqlite", "parts.json"}) {
        append(&files, QLatin1String(name), data.filePath(QLatin1String(name)));
    }
    const QByteArray flight = flight::newestOf(data.filePath(QStringLiteral("flight.ring")), mostFlightBytes);
    if (!flight.isEmpty()) {
        files.append({QStringLiteral("flight.ring"), flight});
    }
    return files;
}

}  // namespace app
