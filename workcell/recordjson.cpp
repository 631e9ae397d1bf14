#include "workcell/recordjson.h"

#include <QJsonArray>

namespace workcell {

namespace {

QJsonValue orNull(const std::optional<double>& value) {
    return value ? QJsonValue(*value) : QJsonValue();
}

std::optional<double> numberOrNone(const QJsonValue& value) {
    return value.isDouble() ? std::optional<double>(value.toDouble()) : std::nullopt;
}

QJsonValue jsonOf(const std::optional<EmissionPoint>& point) {
    if (!point) {
        return {};
    }
    const prog::Position& mm = point->transMm;
    return QJsonObject{{QStringLiteral("t_s"), point->atS},
                       {QStringLiteral("trans_mm"), QJsonArray{mm.x, mm.y, mm.z}}};
}

std::optional<EmissionPoint> pointFrom(const QJsonValue& json) {
    if (!json.isObject()) {
        return std::nullopt;
    }
    const QJsonObject point = json.toObject();
    const QJsonArray mm = point.value(QLatin1String("trans_mm")).toArray();
    return EmissionPoint{point.value(QLatin1String("t_s")).toDouble(),
                         {mm.at(0).toDouble(), mm.at(1).toDouble(), mm.at(2).toDouble()}};
}

struct RunNumber {
    const char* name;
    double RunRecord::*value;
};
constexpr RunNumber runNumbers[] = {
    {"seconds", &RunRecord::seconds}, {"path_mm", &RunRecord::pathMm}, {"laser_on_s", &RunRecord::laserOnS},
    {"gas_s", &RunRecord::gasS},      {"wire_s", &RunRecord::wireS},
};

QJsonObject jsonOf(const SeamRecord& seam) {
    QJsonObject json{
        {QStringLiteral("open_line"), seam.openLine},
        {QStringLiteral("close_line"), seam.closeLine ? QJsonValue(*seam.closeLine) : QJsonValue()},
        {QStringLiteral("endless"), seam.isEndless},
        {QStringLiteral("set"), seam.set},
        {QStringLiteral("start"), jsonOf(seam.start)},
        {QStringLiteral("end"), jsonOf(seam.end)},
        {QStringLiteral("heat_J_per_mm"), orNull(seam.heatJPerMm)},
        {QStringLiteral("mean_speed_mm_s"), orNull(seam.meanSpeedMmPerS)},
        {QStringLiteral("faults"), QJsonArray::fromStringList(seam.faults)}};
    for (const SeamNumber& number : seamNumbers()) {
        json.insert(QLatin1String(number.name), seam.*number.value);
    }
    QJsonArray gaps;
    for (const DarkGap& gap : seam.darkGaps) {
        gaps.append(
            QJsonObject{{QStringLiteral("from_mm"), gap.fromMm}, {QStringLiteral("to_mm"), gap.toMm}});
    }
    json.insert(QStringLiteral("dark_gaps"), gaps);
    if (seam.overlapMm > 0.0) {
        json.insert(QStringLiteral("overlap_mm"), seam.overlapMm);
    }
    return json;
}

SeamRecord seamFrom(const QJsonObject& json, const QString& project) {
    SeamRecord seam;
    seam.project = project;
    seam.openLine = json.value(QLatin1String("open_line")).toInt();
    const QJsonValue closeLine = json.value(QLatin1String("close_line"));
    if (closeLine.isDouble()) {
        seam.closeLine = closeLine.toInt();
    }
    seam.overlapMm = json.value(QLatin1String("overlap_mm")).toDouble();
    seam.isEndless = json.value(QLatin1String("endless")).toBool();
    seam.set = json.value(QLatin1String("set")).toString();
    seam.start = pointFrom(json.value(QLatin1String("start")));
    seam.end = pointFrom(json.value(QLatin1String("end")));
    seam.heatJPerMm = numberOrNone(json.value(QLatin1String("heat_J_per_mm")));
    seam.meanSpeedMmPerS = numberOrNone(json.value(QLatin1String("mean_speed_mm_s")));
    seam.faults = json.value(QLatin1String("faults")).toVariant().toStringList();
    for (const SeamNumber& number : seamNumbers()) {
        seam.*number.value = json.value(QLatin1String(number.name)).toDouble();
    }
    const QJsonArray gaps = json.value(QLatin1String("dark_gaps")).toArray();
    for (const QJsonValue& value : gaps) {
        const QJsonObject gap = value.toObject();
        seam.darkGaps.push_back(
            {gap.value(QLatin1String("from_mm")).toDouble(), gap.value(QLatin1String("to_mm")).toDouble()});
    }
    return seam;
}

}  // namespace

const std::vector<SeamNumber>& seamNumbers() {
    static const std::vector<SeamNumber> all{
        {"opened_at_mm", &SeamRecord::openedAtMm}, {"programmed_mm", &SeamRecord::programmedMm},
        {"welded_mm", &SeamRecord::weldedMm},      {"full_power_mm", &SeamRecord::fullPowerMm},
        {"laser_on_s", &SeamRecord::laserOnS},     {"standing_s", &SeamRecord::standingS},
        {"energy_pct_s", &SeamRecord::energyPctS}, {"gas_lead_s", &SeamRecord::gasLeadS},
        {"gas_tail_s", &SeamRecord::gasTailS},
    };
    return all;
}

QJsonObject jsonOfRecord(const RunRecord& record) {
    QJsonObject json{{QStringLiteral("project"), record.project},
                     {QStringLiteral("reason"), record.reason},
                     {QStringLiteral("lines"), record.lines},
                     {QStringLiteral("rejected"), record.rejected}};
    for (const RunNumber& number : runNumbers) {
        json.insert(QLatin1String(number.name), record.*number.value);
    }
    QJsonArray seams, rejections, refused, faults;
    for (const SeamRecord& seam : record.seams) {
        seams.append(jsonOf(seam));
    }
    for (const Rejection& rejection : record.rejections) {
        rejections.append(QJsonArray{rejection.name, rejection.reason, rejection.count});
    }
    for (const RefusedStatement& statement : record.refused) {
        refused.append(QJsonArray{statement.line, statement.type, statement.isDry});
    }
    for (const LitFault& fault : record.faults) {
        faults.append(QJsonArray{fault.name, fault.atS, fault.line});
    }
    json.insert(QStringLiteral("dry"), record.isDry);
    json.insert(QStringLiteral("seams"), seams);
    json.insert(QStringLiteral("rejections"), rejections);
    json.insert(QStringLiteral("refused"), refused);
    json.insert(QStringLiteral("faults"), faults);
    return json;
}

RunRecord recordFrom(const QJsonObject& json) {
    RunRecord record;
    record.project = json.value(QLatin1String("project")).toString();
    record.reason = json.value(QLatin1String("reason")).toString();
    record.lines = json.value(QLatin1String("lines")).toInt();
    record.isDry = json.value(QLatin1String("dry")).toBool();
    record.rejected = json.value(QLatin1String("rejected")).toInt();
    for (const RunNumber& number : runNumbers) {
        record.*number.value = json.value(QLatin1String(number.name)).toDouble();
    }
    const QJsonArray seams = json.value(QLatin1String("seams")).toArray();
    for (const QJsonValue& seam : seams) {
        record.seams.push_back(seamFrom(seam.toObject(), record.project));
    }
    const QJsonArray rejections = json.value(QLatin1String("rejections")).toArray();
    for (const QJsonValue& rejection : rejections) {
        const QJsonArray values = rejection.toArray();
        record.rejections.push_back({values.at(0).toString(), values.at(1).toString(), values.at(2).toInt()});
    }
    const QJsonArray refused = json.value(QLatin1String("refused")).toArray();
    for (const QJsonValue& statement : refused) {
        const QJsonArray values = statement.toArray();
        record.refused.push_back(
            {values.at(0).toInt(), values.at(1).toString(), record.project, values.at(2).toBool()});
    }
    const QJsonArray faults = json.value(QLatin1String("faults")).toArray();
    for (const QJsonValue& fault : faults) {
        const QJsonArray values = fault.toArray();
        record.faults.push_back(
            {values.at(0).toString(), values.at(1).toDouble(), values.at(2).toInt(), record.project});
    }
    return record;
}

}  // namespace workcell
