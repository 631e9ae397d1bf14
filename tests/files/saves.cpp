#include "files/saves.h"

#include "app/preferences.h"
#include "module/host.h"
#include "module/keys.h"
#include "module/settingsfile.h"
#include "panel/lumowidget.h"
#include "panel/projectfile.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace files {

namespace {

using lumo::Settings;

const QString projectPath = QStringLiteral("seam.json");

QString mark(int generation) {
    return QStringLiteral("generation %1").arg(generation % generations);
}

/// Sizes differ, so that a document that is cut or mixed shows.
QJsonArray copies(QJsonObject record, const QString& field, int generation, int base) {
    QJsonArray list;
    const int count = base * (1 + generation % generations);
    for (int i = 0; i < count; ++i) {
        record[field] = QStringLiteral("%1, %2").arg(mark(generation)).arg(i);
        list.append(record);
    }
    return list;
}

void fillPorts(int generation) {
    const QList<ModuleObject*> ports = m(lumo::key::port)->cmobjs();
    for (int i = 0; i < ports.size(); ++i) {
        ports[i]
            ->set(nullptr, lumo::field::name, QStringLiteral("%1 %2").arg(mark(generation)).arg(i))
            ->set(nullptr, lumo::field::enable, (generation + i) % 2 == 0);
    }
}

void fillParams(int generation) {
    QJsonObject set;
    const QList<ModuleObject*> definitions = m(lumo::key::defaultParam)->cmobjs();
    for (const ModuleObject* definition : definitions) {
        set[definition->r(lumo::field::name)->getString()] = generation % generations;
    }
    m(lumo::key::param)->loadJson(nullptr, copies(set, lumo::field::name, generation, 3));
}

void fillStations(int generation) {
    const QJsonObject station = m(lumo::key::defaultSignalsConfig)->exportToJson().toObject();
    m(lumo::key::signalsConfig)->loadJson(nullptr, copies(station, lumo::field::stationName, generation, 1));
}

void fillProgram(int generation) {
    const QJsonObject delay{{"type", "delay"}, {"delaytime", "100"}, {"execute", true}};
    m(lumo::key::program)->loadJson(nullptr, copies(delay, QStringLiteral("note"), generation, 20));
}

QByteArray nodeText(const QString& path) {
    const QJsonValue value = m(path)->exportToJson();
    return (value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject())).toJson();
}

Saving settings(const QString& name, Settings list, void (*fill)(int)) {
    static const QString paths[] = {lumo::key::port, lumo::key::param, lumo::key::signalsConfig};
    const QString path = paths[static_cast<int>(list)];
    return {name,
            lumo::settingsFile(list),
            QString(),
            QByteArray(),
            fill,
            [list] { return lumo::saveSettings(list); },
            [list] { lumo::loadSettings(nullptr, list); },
            [path] { return nodeText(path); }};
}

void loadProject() {
    if (const auto project = lumo::readProject(projectPath)) {
        lumo::loadProject(nullptr, *project);
    }
}

Saving project(const QString& name, const QString& target) {
    return {name,        projectPath,
            target,      QByteArray(),
            fillProgram, [] { return lumo::saveProject(projectPath); },
            loadProject, [] { return nodeText(lumo::key::program); }};
}

Saving over(Saving saving, const QString& name, const QByteArray& foreign) {
    saving.name = name;
    saving.foreign = foreign;
    return saving;
}

/// What was put there last; the panel reads it back at its next start.
QString rememberedFolder;

bool savePreferences() {
    app::Preferences::rememberFolder(rememberedFolder);
    return true;  // nothing that the operator typed: the panel does not ask
}

Saving preferences() {
    return {
        QStringLiteral("preferences"),
        QStringLiteral("Lumo/files.json"),
        QString(),
        QByteArray(),
        [](int generation) { rememberedFolder = mark(generation).repeated(1 + generation % generations); },
        savePreferences,
        {},
        [] { return rememberedFolder.toUtf8(); }};
}

bool isExpected(const Saving& saving, const QString& name) {
    const QString file = QFileInfo(saving.file).fileName();
    return name == file || name == file + QLatin1String(".damaged") ||
           name == QFileInfo(saving.target).fileName() || name == file + QLatin1String(".lock");
}

}  // namespace

struct Product::Parts {
    int argc = 1;
    char name[6] = "files";
    char* argv[2] = {name, nullptr};
    QApplication application{argc, argv};
    QTemporaryDir folder;
};

Product::Product() : parts_(std::make_unique<Parts>()) {
    QDir::setCurrent(parts_->folder.path());
    QCoreApplication::setOrganizationName(QStringLiteral("Lumo"));
    QCoreApplication::setApplicationName(QStringLiteral("files"));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(parts_->folder.path()));
    const LumoWidget page;  // registers the tree, which stays
}

Product::~Product() = default;

std::vector<Saving> Product::savings() const {
    const Saving ports = settings(QStringLiteral("ports"), Settings::Ports, fillPorts);
    const Saving params = settings(QStringLiteral("params"), Settings::Params, fillParams);
    const Saving stations = settings(QStringLiteral("stations"), Settings::Stations, fillStations);
    const Saving plain = project(QStringLiteral("project"), QString());
    return {ports,
            params,
            stations,
            plain,
            project(QStringLiteral("project, a link"), QStringLiteral("elsewhere.txt")),
            over(params, QStringLiteral("params, damaged"), "[{\"name\": \"typed by somebody\", \"po"),
            over(params, QStringLiteral("params, other content"), "{\"notes\": \"typed by somebody\"}"),
            over(plain, QStringLiteral("project, other content"), "[{\"name\": \"typed by somebody\"}]"),
            preferences()};
}

QByteArray contentOf(const QString& file) {
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

void clearFolder() {
    QDir folder;
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& name : names) {
        folder.remove(name);
    }
    QDir(QStringLiteral("Lumo")).removeRecursively();
}

void place(const Saving& saving, const QByteArray& content) {
    const QString name = saving.target.isEmpty() ? saving.file : saving.target;
    QDir().mkpath(QFileInfo(name).path());
    QFile file(name);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(content);
    }
    if (!saving.target.isEmpty()) {
        QFile::link(saving.target, saving.file);
    }
}

std::vector<QByteArray> documentsOf(const Saving& saving) {
    clearFolder();
    std::vector<QByteArray> documents;
    for (int generation = 0; generation < generations; ++generation) {
        saving.fill(generation);
        saving.save();
        documents.push_back(contentOf(saving.file));
    }
    return documents;
}

bool isSomewhere(const QByteArray& content) {
    const QStringList names = QDir().entryList(QDir::Files);
    for (const QString& name : names) {
        if (contentOf(name) == content) {
            return true;
        }
    }
    return false;
}

QStringList leftovers(const Saving& saving) {
    QStringList names =
        QDir(QFileInfo(saving.file).path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    const auto expected = [&saving](const QString& name) { return isExpected(saving, name); };
    names.erase(std::remove_if(names.begin(), names.end(), expected), names.end());
    return names;
}

}  // namespace files
