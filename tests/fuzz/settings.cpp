// Settings files: read, used as the package uses them, saved and read again; what the panel remembers;
// scenarios.

#include "app/preferences.h"
#include "binding/station.h"
#include "devices/ports.h"
#include "editor/statementtext.h"
#include "executor/laserplan.h"
#include "fuzz/fuzz.h"
#include "module/keys.h"
#include "module/settingsfile.h"
#include "runner/hand.h"
#include "runner/scenario.h"
#include "runner/stationlist.h"
#include "simulator/wiring.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonDocument>

namespace {

/// The list has its content `usual` before and afterwards.
void readSettings(lumo::Settings list, QLatin1String path, const QByteArray& input, const QJsonValue& usual,
                  void (*look)(const ModuleObject* records)) {
    fuzz::write(lumo::settingsFile(list), input);
    lumo::loadSettings(nullptr, list);
    if (QJsonDocument::fromJson(input).isNull() && !input.startsWith("\xEF\xBB\xBF"))
        return;  // it changes nothing
    look(m(path));
    if (fuzz::isSavedToo(input)) {
        const QJsonValue held = m(path)->exportToJson();
        fuzz::require(lumo::saveSettings(list), "settings that were read can be saved");
        lumo::loadSettings(nullptr, list);
        fuzz::require(fuzz::isSame(m(path)->exportToJson(), held), "saved settings are read as they were");
    }
    m(path)->loadJson(nullptr, usual);
}

void plan(const ModuleObject* sets) {
    for (int index = 0; index < sets->size(); ++index) {
        const LaserParams params = LaserParams::from(sets->c(index));
        fuzz::use(openingPlan(params, rampStepMs()), closingPlan(params, rampStepMs()));
        ModuleObject number;
        number.setValue(nullptr, index);
        fuzz::use(index2cn(&number), laserPower2cn(&number), laserDutyCycle2cn(&number));
    }
}

void drive(const ModuleObject* rows) {
    for (int row = 0; row < rows->size(); ++row) {
        const auto port = static_cast<I_PORT>(row);
        fuzz::use(portEnabled(port), portState(port), portPercent(port));
        setPortDO(nullptr, port, true);
        setPortAO(nullptr, port, 0.5);
        switchOffPort(nullptr, port);
    }
}

void sample(const ModuleObject* stations) {
    using lumo::StationSignal;
    for (const ModuleObject* station : stations->cmobjs()) {
        fuzz::use(lumo::samplePeriodMs(station->c(lumo::field::time)->getString()));
        for (const StationSignal which : {StationSignal::StartInput, StationSignal::StopInput}) {
            const lumo::SignalSource source = lumo::readSource(station, which);
            fuzz::use(lumo::kindText(which, source), lumo::sourceText(source));
            fuzz::use(lumo::edgeText(station, which), lumo::inputLevel(nullptr, source));
        }
        for (const StationSignal which : {StationSignal::StartOutput, StationSignal::StopOutput})
            lumo::switchOutput(nullptr, lumo::readSource(station, which), true);
    }
}

}  // namespace

FUZZ_TARGET(params) {
    readSettings(lumo::Settings::Params, lumo::key::param, input, QJsonArray(), plan);
}

FUZZ_TARGET(ports) {
    static const QJsonValue usual = m(lumo::key::port)->exportToJson();
    readSettings(lumo::Settings::Ports, lumo::key::port, input, usual, drive);
    fuzz::write("cell.json", input);
    fuzz::use(sim::readWiring("cell.json"));
}

FUZZ_TARGET(stations) {
    readSettings(lumo::Settings::Stations, lumo::key::signalsConfig, input, QJsonArray(), sample);
    fuzz::write(lumo::settingsFile(lumo::Settings::Stations), input);
    run::Problem problem;
    if (const auto list = run::StationList::read(".", ".", &problem)) {
        for (const run::Problem& warning : list->warnings(2))
            fuzz::use(warning.text());
    }
}

FUZZ_TARGET(scenario) {
    static run::Hand hand;
    static const QJsonValue usual = m()->root()->exportToJson();
    run::Problem problem;
    const std::optional<run::JsonText> text = run::JsonText::parse(input, "scenario.json", &problem);
    const auto scenario = text ? run::Scenario::fromText(*text, {"DI1"}, &problem) : std::nullopt;
    if (!scenario) {
        fuzz::require(!problem.text().isEmpty(), "what is wrong is told");
        return;
    }
    fuzz::use(scenario->files("folder"), scenario->lastMs());
    if (!scenario->has(run::Action::Set))
        return;
    for (const run::ScenarioEntry& entry : scenario->entries()) {
        if (entry.action == run::Action::Set)
            hand.set(entry.keys.value("path").toString(), entry.keys.value("value"));
    }
    m()->root()->loadJson(nullptr, usual);
}

FUZZ_TARGET(preferences) {
    QCoreApplication::setOrganizationName(".");
    QCoreApplication::setApplicationName("panel");
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(QDir::currentPath()));
    fuzz::write("panel.json", input);
    const QString language = app::Preferences::language();
    fuzz::require(language.isEmpty() || language.size() == 2, "only a language of the panel is taken");
    fuzz::use(app::Preferences::folder(), app::Preferences::pendantPlace());
    fuzz::use(app::Preferences::pendantUnfolded());
}
