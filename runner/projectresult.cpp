#include "runner/projectresult.h"

#include "json/jsonwriter.h"

namespace run {

using workcell::RunRecord;
using workcell::SeamRecord;

namespace {

constexpr double darkMm = 1.0;  // what a seam may lose

QString number(double value) {
    return QString::fromLatin1(mendo::numberText(value));
}

QString allowedText(const workcell::Allowed& allowed) {
    if (allowed.min && allowed.max) {
        return QStringLiteral("%1 to %2").arg(number(*allowed.min), number(*allowed.max));
    }
    if (allowed.min) {
        return QStringLiteral("at least %1").arg(number(*allowed.min));
    }
    return allowed.max ? QStringLiteral("at most %1").arg(number(*allowed.max)) : QStringLiteral("any value");
}

/// "line 5: ", of a station's project with its name; empty where nothing ran.
QString lineText(const ProjectResult& result, const QString& project, int line) {
    if (line <= 0) {
        return {};
    }
    const QString text = QStringLiteral("line %1: ").arg(line);
    return result.isFolder ? QStringLiteral("%1: %2").arg(project, text) : text;
}

void addSeams(const ProjectResult& result, std::vector<Departure>* found) {
    const RunRecord& record = result.record;
    for (int seam = 1; seam <= int(record.seams.size()); ++seam) {
        const SeamRecord& of = record.seams[std::size_t(seam) - 1];
        if (!of.start) {
            found->push_back(
                {QStringLiteral("%1 stayed dark").arg(seamText(record, seam)), seam, of.project});
        } else if (of.darkMm() > darkMm) {
            found->push_back({QStringLiteral("%1 stayed dark for %2 of %3 mm")
                                  .arg(seamText(record, seam), number(of.darkMm()), number(of.programmedMm)),
                              seam, of.project});
        }
    }
}

void addStations(const ProjectResult& result, std::vector<Departure>* found) {
    for (const StationResult& station : result.stations) {
        if (station.failed() > 0) {
            found->push_back({stationText(station), {}, station.project});
        }
    }
}

}  // namespace

std::vector<Departure> departuresOf(const ProjectResult& result) {
    std::vector<Departure> found;
    if (result.record.isDry) {
        found.push_back({QStringLiteral("a dry run welds nothing"), {}, {}});
    }
    for (const workcell::Rejection& rejection : result.record.rejections) {
        const QString times =
            rejection.count == 1 ? QString() : QStringLiteral(" %1 times").arg(rejection.count);
        found.push_back(
            {QStringLiteral("a write to %1 was rejected%2: %3").arg(rejection.name, times, rejection.reason),
             {},
             {}});
    }
    for (const workcell::RefusedStatement& refused : result.record.refused) {
        const QString text =
            refused.isDry ? QStringLiteral("%1a dry run passed this \"%2\"")
                          : QStringLiteral("%1operating mode or weld switches did not permit this \"%2\"");
        found.push_back(
            {text.arg(lineText(result, refused.project, refused.line), refused.type), {}, refused.project});
    }
    addSeams(result, &found);
    for (const workcell::LitFault& fault : result.record.faults) {
        found.push_back({QStringLiteral("%1the equipment \"%2\" had a fault while the laser was on, at %3 s")
                             .arg(lineText(result, fault.project, fault.line), fault.name, number(fault.atS)),
                         {},
                         fault.project});
    }
    addStations(result, &found);
    return found;
}

QString stationText(const StationResult& station) {
    return QStringLiteral("station \"%1\": %2 of %3 runs of %4 did not reach the end")
        .arg(station.name)
        .arg(station.failed())
        .arg(station.runs)
        .arg(station.project);
}

QString seamText(const RunRecord& record, int seam) {
    const SeamRecord& of = record.seams[std::size_t(seam) - 1];
    const QString lines = of.closeLine ? QStringLiteral("lines %1 to %2").arg(of.openLine).arg(*of.closeLine)
                                       : QStringLiteral("line %1").arg(of.openLine);
    return QStringLiteral("seam %1 (%2)").arg(seam).arg(lines);
}

QString violationText(const workcell::Violation& violation) {
    const QString is = violation.value ? QStringLiteral("is %1").arg(number(*violation.value))
                                       : QStringLiteral("is not known");
    return QStringLiteral("%1 %2, allowed is %3").arg(violation.limit, is, allowedText(violation.allowed));
}

QString findingText(const ReportedFinding& finding) {
    QString place = finding.file;
    if (finding.line > 0) {
        place += QStringLiteral(":%1:%2").arg(finding.line).arg(finding.column);
    }
    return QStringLiteral("%1: %2: [%3] %4").arg(place, finding.severity, finding.rule, finding.text);
}

}  // namespace run
