#include "runner/summary.h"

#include "json/jsonwriter.h"

namespace run {

using mendo::JsonWriter;
using workcell::EmissionPoint;
using workcell::SeamRecord;

namespace {

/// Writes entries of objects.
class Entries {
public:
    explicit Entries(JsonWriter* json) : json_(json) {}

    Entries& text(const char* key, const QString& value) {
        at(key).string(value);
        return *this;
    }
    Entries& number(const char* key, double value) {
        at(key).number(value);
        return *this;
    }
    Entries& number(const char* key, const std::optional<double>& value) {
        return value ? number(key, *value) : null(key);
    }
    Entries& whole(const char* key, int value) {
        at(key).integer(value);
        return *this;
    }
    Entries& whole(const char* key, const std::optional<int>& value) {
        return value ? whole(key, *value) : null(key);
    }
    Entries& null(const char* key) {
        at(key).null();
        return *this;
    }
    JsonWriter& at(const char* key) { return json_->key(QLatin1String(key)); }

private:
    JsonWriter* json_;
};

void writePoint(JsonWriter& json, const char* key, const std::optional<EmissionPoint>& point) {
    if (!point) {
        Entries(&json).null(key);
        return;
    }
    Entries(&json).at(key).beginObject();
    Entries(&json).number("t_s", point->atS).at("trans_mm").beginArray();
    json.number(point->transMm.x).number(point->transMm.y).number(point->transMm.z).endArray().endObject();
}

void writeFindings(JsonWriter& json, const ProjectResult& result) {
    Entries(&json).at("findings").beginArray();
    for (const ReportedFinding& finding : result.findings) {
        json.beginObject();
        Entries(&json)
            .text("rule", finding.rule)
            .text("severity", finding.severity)
            .text("file", finding.file)
            .whole("line", finding.line)
            .whole("column", finding.column)
            .text("text", finding.text);
        json.endObject();
    }
    json.endArray();
}

void writeViolations(JsonWriter& json, const ProjectResult& result) {
    Entries(&json).at("violations").beginArray();
    for (const workcell::Violation& violation : result.violations) {
        json.beginObject();
        Entries entries(&json);
        entries.text("limit", violation.limit).whole("seam", violation.seam).number("value", violation.value);
        entries.at("allowed").beginObject();
        if (violation.allowed.min) {
            entries.number("min", *violation.allowed.min);
        }
        if (violation.allowed.max) {
            entries.number("max", *violation.allowed.max);
        }
        json.endObject().endObject();
    }
    json.endArray();
}

void writeStations(JsonWriter& json, const ProjectResult& result) {
    Entries(&json).at("stations").beginArray();
    for (const StationResult& station : result.stations) {
        json.beginObject();
        Entries(&json)
            .whole("row", station.row)
            .text("name", station.name)
            .whole("runs", station.runs)
            .whole("finished", station.finished)
            .whole("failed", station.failed());
        json.endObject();
    }
    json.endArray();
}

void writeSeam(JsonWriter& json, const SeamRecord& seam, bool isOfStation) {
    json.beginObject();
    Entries entries(&json);
    if (isOfStation) {
        entries.text("project", seam.project);
    }
    entries.whole("open_line", seam.openLine).whole("close_line", seam.closeLine).text("set", seam.set);
    writePoint(json, "start", seam.start);
    writePoint(json, "end", seam.end);
    if (seam.overlapMm > 0.0) {
        entries.number("overlap_mm", seam.overlapMm);
    }
    entries.number("programmed_mm", seam.programmedMm)
        .number("welded_mm", seam.weldedMm)
        .number("full_power_mm", seam.fullPowerMm)
        .number("laser_on_s", seam.laserOnS)
        .number("standing_s", seam.standingS)
        .number("energy_pct_s", seam.energyPctS)
        .number("heat_J_per_mm", seam.heatJPerMm)
        .number("mean_speed_mm_s", seam.meanSpeedMmPerS)
        .number("gas_lead_s", seam.gasLeadS)
        .number("gas_tail_s", seam.gasTailS);
    entries.at("dark_gaps").beginArray();
    for (const workcell::DarkGap& gap : seam.darkGaps) {
        json.beginObject();
        entries.number("from_mm", gap.fromMm).number("to_mm", gap.toMm);
        json.endObject();
    }
    json.endArray();
    entries.at("faults").beginArray();
    for (const QString& fault : seam.faults) {
        json.string(fault);
    }
    json.endArray().endObject();
}

}  // namespace

QByteArray summaryText(const ProjectResult& result) {
    const workcell::RunRecord& record = result.record;
    JsonWriter json(JsonWriter::Layout::Document);
    json.beginObject();
    Entries(&json)
        .text(result.isFolder ? "folder" : "project", result.name)
        .text("reason", record.reason)
        .whole("lines", record.lines)
        .number("seconds", record.seconds)
        .number("path_mm", record.pathMm)
        .number("laser_on_s", record.laserOnS)
        .number("gas_s", record.gasS)
        .number("wire_s", record.wireS)
        .whole("rejected", record.rejected);
    if (record.isDry) {
        Entries(&json).at("dry").boolean(true);
    }
    writeFindings(json, result);
    writeViolations(json, result);
    writeStations(json, result);
    Entries(&json).at("seams").beginArray();
    for (const SeamRecord& seam : record.seams) {
        writeSeam(json, seam, result.isFolder);
    }
    return json.endArray().endObject().take();
}

}  // namespace run
