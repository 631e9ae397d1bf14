#include "telemetry/documents.h"

#include "program/motionerror.h"
#include "program/ports.h"
#include "program/words.h"
#include "workcell/recordjson.h"

#include <QJsonArray>

#include <algorithm>
#include <tuple>

namespace telemetry {

namespace {

constexpr int schemaVersion = 1;

QString isoText(const QDateTime& at) {
    return at.toOffsetFromUtc(at.offsetFromUtc()).toString(Qt::ISODateWithMs);
}

QJsonValue orNull(const QString& text) {
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonValue orNull(int number) {
    return number == 0 ? QJsonValue() : QJsonValue(number);
}

QJsonValue motionErrorJson(int code) {
    if (code == 0) {
        return {};
    }
    const prog::MotionError& error = prog::motionError(code);
    return QJsonObject{{QStringLiteral("code"), code},
                       {QStringLiteral("reason"), QLatin1String(error.reason)}};
}

}  // namespace

void Stamp::addTo(QJsonObject* json) const {
    json->insert(QStringLiteral("at"), isoText(at));
    json->insert(QStringLiteral("run_ms"), runMs ? QJsonValue(*runMs) : QJsonValue());
}

QString runModeWord(int mode) {
    switch (mode) {
        case prog::runmode::byStation:
            return QStringLiteral("station");
        case prog::runmode::singleStep:
            return QStringLiteral("step");
        default:
            return QStringLiteral("hand");
    }
}

QJsonObject InfoDocument::json() const {
    QJsonObject json{{QStringLiteral("program"), program},
                     {QStringLiteral("version"), QStringLiteral(LUMO_VERSION)},
                     {QStringLiteral("schema"), schemaVersion}};
    stamp.addTo(&json);
    return json;
}

QJsonObject StateDocument::json() const {
    QJsonObject json{{QStringLiteral("state"), state},
                     {QStringLiteral("project"), orNull(project)},
                     {QStringLiteral("line"), orNull(line)},
                     {QStringLiteral("lines"), lines},
                     {QStringLiteral("run_mode"), runMode},
                     {QStringLiteral("dry"), isDry},
                     {QStringLiteral("power"), isPowered},
                     {QStringLiteral("robot_mode"), robotMode},
                     {QStringLiteral("emergency_stop"), isEmergencyStop},
                     {QStringLiteral("laser"), laser},
                     {QStringLiteral("waiting"), orNull(waiting)},
                     {QStringLiteral("paused_line"), orNull(pausedLine)}};
    stamp.addTo(&json);
    return json;
}

bool StateDocument::says(const StateDocument& other) const {
    const auto words = [](const StateDocument& d) {
        return std::tie(d.state, d.project, d.runMode, d.laser, d.waiting, d.robotMode);
    };
    const auto figures = [](const StateDocument& d) {
        return std::tie(d.line, d.lines, d.isDry, d.isPowered, d.isEmergencyStop, d.pausedLine);
    };
    return words(*this) == words(other) && figures(*this) == figures(other);
}

QJsonObject LineDocument::json() const {
    QJsonObject json{{QStringLiteral("project"), orNull(project)},
                     {QStringLiteral("line"), line},
                     {QStringLiteral("lines"), lines},
                     {QStringLiteral("type"), type}};
    stamp.addTo(&json);
    return json;
}

QJsonObject RunDocument::json() const {
    QJsonObject json;
    if (isOver) {
        json = workcell::jsonOfRecord(record);
        json.insert(QStringLiteral("seams"), int(record.seams.size()));
    }
    json.insert(QStringLiteral("run"), number);
    json.insert(QStringLiteral("begun"), isoText(begun));
    json.insert(QStringLiteral("over"), isOver);
    json.insert(QStringLiteral("project"), orNull(project));
    json.insert(QStringLiteral("run_mode"), runMode);
    stamp.addTo(&json);
    return json;
}

QJsonObject RunDocument::seamsJson() const {
    workcell::RunRecord kept = record;
    kept.seams.resize(std::min(kept.seams.size(), std::size_t(mostSeams)));
    QJsonObject json{{QStringLiteral("run"), number},
                     {QStringLiteral("begun"), isoText(begun)},
                     {QStringLiteral("project"), orNull(project)},
                     {QStringLiteral("count"), int(record.seams.size())},
                     {QStringLiteral("seams"), workcell::jsonOfRecord(kept).value(QLatin1String("seams"))}};
    stamp.addTo(&json);
    return json;
}

void CountersDocument::add(const workcell::RunRecord& record) {
    ++runs;
    finished += record.reason == QLatin1String("finished") ? 1 : 0;
    seams += int(record.seams.size());
    for (const workcell::SeamRecord& seam : record.seams) {
        weldedMm = workcell::rounded(weldedMm + seam.weldedMm);
    }
    laserOnS = workcell::rounded(laserOnS + record.laserOnS);
    gasS = workcell::rounded(gasS + record.gasS);
    wireS = workcell::rounded(wireS + record.wireS);
}

QJsonObject CountersDocument::json() const {
    QJsonObject json{{QStringLiteral("project"), orNull(project)},
                     {QStringLiteral("made"), made},
                     {QStringLiteral("target"), orNull(target)},
                     {QStringLiteral("last_ms"), lastMs},
                     {QStringLiteral("mean_ms"), meanMs},
                     {QStringLiteral("since"), isoText(since)},
                     {QStringLiteral("runs"), runs},
                     {QStringLiteral("finished"), finished},
                     {QStringLiteral("seams"), seams},
                     {QStringLiteral("welded_mm"), weldedMm},
                     {QStringLiteral("laser_on_s"), laserOnS},
                     {QStringLiteral("gas_s"), gasS},
                     {QStringLiteral("wire_s"), wireS}};
    stamp.addTo(&json);
    return json;
}

QJsonObject FaultsDocument::json() const {
    QJsonObject json{{QStringLiteral("emergency_stop"), isEmergencyStop},
                     {QStringLiteral("equipment"), QJsonArray::fromStringList(equipment)},
                     {QStringLiteral("motion_error"), motionErrorJson(motionError)},
                     {QStringLiteral("while_lit"), QJsonArray::fromStringList(lit)}};
    stamp.addTo(&json);
    return json;
}

bool FaultsDocument::says(const FaultsDocument& other) const {
    return isEmergencyStop == other.isEmergencyStop && equipment == other.equipment &&
           motionError == other.motionError && lit == other.lit;
}

QStringList PortsDocument::faulty() const {
    QStringList words;
    for (int port = 0; port < rows.size(); ++port) {
        const prog::Port& info = prog::portInfo(I_PORT(port));
        if (info.meaning == prog::PortMeaning::Health && rows[port].isUsed &&
            rows[port].value.value_or(0) == 0) {
            words << info.word;
        }
    }
    return words;
}

QJsonObject PortsDocument::json() const {
    QJsonObject ports;
    for (int port = 0; port < rows.size(); ++port) {
        const prog::Port& info = prog::portInfo(I_PORT(port));
        const Row& row = rows[port];
        const bool isAnalogue = info.kind == prog::word::portAnalog;
        const QJsonValue value = isAnalogue ? QJsonValue(row.value.value_or(0)) : QJsonValue(row.value != 0);
        ports.insert(info.word, QJsonObject{{QStringLiteral("kind"), info.kind},
                                            {QStringLiteral("used"), row.isUsed},
                                            {QStringLiteral("signal"), orNull(row.signal)},
                                            {QStringLiteral("value"), row.value ? value : QJsonValue()}});
    }
    QJsonObject json{{QStringLiteral("ports"), ports}};
    stamp.addTo(&json);
    return json;
}

}  // namespace telemetry
