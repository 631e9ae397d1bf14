#include "files/saving.h"

#include "app/preferences.h"
#include "module/keys.h"
#include "module/settingsfile.h"
#include "panel/lumowidget.h"
#include "panel/projectfile.h"
#include "support/text.h"

namespace files {

namespace {

using lumo::Settings;

/// As many copies as the document's number says, several times over: what is cut or mixed shows.
QJsonArray copies(QJsonObject record, const QString& field, int document, int times) {
    QJsonArray list;
    for (int i = 0; i < times * (document + 1); ++i) {
        record[field] = QStringLiteral("document %1, %2").arg(document).arg(i);
        list.append(record);
    }
    return list;
}

void fillPorts(int document) {
    for (ModuleObject* const port : m(lumo::key::port)->cmobjs()) {
        port->set(nullptr, lumo::field::name, QStringLiteral("LUMO_DI").repeated(document + 1));
        port->set(nullptr, lumo::field::enable, document % 2 == 0);
    }
}

void fillParams(int document) {
    QJsonObject set;
    for (const ModuleObject* const definition : m(lumo::key::defaultParam)->cmobjs()) {
        set[definition->r(lumo::field::name)->getString()] = document;
    }
    m(lumo::key::param)->loadJson(nullptr, copies(set, lumo::field::name, document, 3));
}

void fillStations(int document) {
    const QJsonObject station = m(lumo::key::defaultSignalsConfig)->exportToJson().toObject();
    m(lumo::key::signalsConfig)->loadJson(nullptr, copies(station, lumo::field::stationName, document, 1));
}

void fillProgram(int document) {
    const QJsonObject delay{{"type", "delay"}, {"delaytime", "100"}, {"execute", true}};
    m(lumo::key::program)->loadJson(nullptr, copies(delay, "note", document, 20));
}

QByteArray nodeText(const QString& path) {
    return test::text(m(path)).toUtf8();
}

Saving settings(const char* name, Settings list, QLatin1String path, void (*fill)(int)) {
    Saving saving{name, lumo::settingsFile(list), fill, [list] { return lumo::saveSettings(list); }};
    saving.load = [list] { lumo::loadSettings(nullptr, list); };
    saving.memory = [path] { return nodeText(path); };
    return saving;
}

Saving project() {
    const QString file = "seam.json";
    Saving saving{"project", file, fillProgram, [file] { return lumo::saveProject(file); }};
    saving.load = [file] {
        if (const auto project = lumo::readProject(file)) {
            lumo::loadProject(nullptr, *project);
        }
    };
    saving.memory = [] { return nodeText(lumo::key::program); };
    return saving;
}

/// Nothing that the operator typed: the panel does not ask whether it was saved.
Saving preferences() {
    static QString folder;
    return {"preferences", "Lumo/files.json",
            [](int document) { folder = QStringLiteral("folder ").repeated(document + 1); },
            [] {
                app::Preferences::rememberFolder(folder);
                return true;
            }};
}

Saving over(Saving saving, const QString& name, const QByteArray& typed) {
    saving.name = name;
    saving.typed = typed;
    return saving;
}

}  // namespace

std::vector<Saving> savings() {
    if (m(lumo::key::lumo)->isNull()) {
        const LumoWidget page;  // registers the tree, which stays
    }
    const Saving params = settings("params", Settings::Params, lumo::key::param, fillParams);
    Saving link = project();
    link.name = "project, a link";
    link.target = "elsewhere.txt";
    return {settings("ports", Settings::Ports, lumo::key::port, fillPorts),
            params,
            settings("stations", Settings::Stations, lumo::key::signalsConfig, fillStations),
            project(),
            link,
            over(params, "params, damaged", "[{\"name\": \"typed by somebody\", \"po"),
            over(params, "params, other content", "{\"notes\": \"typed by somebody\"}"),
            over(project(), "project, other content", "[{\"name\": \"typed by somebody\"}]"),
            preferences()};
}

}  // namespace files
