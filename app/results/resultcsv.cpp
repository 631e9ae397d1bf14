#include "app/results/resultcsv.h"

#include "app/csvfield.h"
#include "json/jsonwriter.h"
#include "workcell/recordjson.h"

#include <QStringList>

namespace app {

namespace {

using workcell::SeamRecord;

const char* const runColumns[] = {"begun", "project", "reason", "seconds", "run_violations"};
const char* const seamTitles[] = {
    "seam",         "open_line",     "close_line",      "set",          "start_s", "end_s",
    "welded_ratio", "heat_J_per_mm", "mean_speed_mm_s", "dark_gaps_mm", "faults",  "violations"};

QByteArray numberOrNothing(const std::optional<double>& value) {
    return value ? mendo::numberText(*value) : QByteArray();
}

QByteArray gapsText(const SeamRecord& seam) {
    QByteArrayList gaps;
    for (const workcell::DarkGap& gap : seam.darkGaps) {
        gaps << mendo::numberText(gap.fromMm) + '-' + mendo::numberText(gap.toMm);
    }
    return gaps.join(' ');
}

/// The limits that a seam, or without one the run as a whole, does not keep, by their names.
QString violationsText(const QVector<workcell::Violation>& violations, std::optional<int> seam) {
    QStringList names;
    for (const workcell::Violation& violation : violations) {
        if (violation.seam == seam) {
            names << violation.limit;
        }
    }
    return names.join(QLatin1Char(' '));
}

/// In the order of seamTitles, then of workcell::seamNumbers().
QByteArrayList fieldsOf(const SeamRecord& seam, int number, const QString& violations) {
    QByteArrayList fields{
        QByteArray::number(number),
        QByteArray::number(seam.openLine),
        seam.closeLine ? QByteArray::number(*seam.closeLine) : QByteArray(),
        csvField(seam.set),
        seam.start ? mendo::numberText(seam.start->atS) : QByteArray(),
        seam.end ? mendo::numberText(seam.end->atS) : QByteArray(),
        numberOrNothing(seam.weldedRatio()),
        numberOrNothing(seam.heatJPerMm),
        numberOrNothing(seam.meanSpeedMmPerS),
        gapsText(seam),
        csvField(seam.faults.join(QLatin1Char(' '))),
        csvField(violations),
    };
    for (const workcell::SeamNumber& column : workcell::seamNumbers()) {
        fields << mendo::numberText(seam.*column.value);
    }
    return fields;
}

}  // namespace

QByteArray csvHeader() {
    QByteArrayList titles;
    for (const char* const title : runColumns) {
        titles << title;
    }
    for (const char* const title : seamTitles) {
        titles << title;
    }
    for (const workcell::SeamNumber& column : workcell::seamNumbers()) {
        titles << column.name;
    }
    return "\xEF\xBB\xBF" + titles.join(',') + "\r\n";
}

QByteArray csvLines(const RunResult& result) {
    const QVector<workcell::Violation> violations = result.violations();
    const QByteArrayList run{result.begun.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toUtf8(),
                             csvField(result.title()), csvField(result.record.reason),
                             mendo::numberText(result.record.seconds),
                             csvField(violationsText(violations, std::nullopt))};
    const std::vector<SeamRecord>& seams = result.record.seams;
    QByteArray lines;
    for (std::size_t i = 0; i < seams.size(); ++i) {
        const int number = int(i) + 1;
        lines += (run + fieldsOf(seams[i], number, violationsText(violations, number))).join(',') + "\r\n";
    }
    if (seams.empty()) {
        const int empty = int(std::size(seamTitles) + workcell::seamNumbers().size());
        lines += run.join(',') + QByteArray(empty, ',') + "\r\n";
    }
    return lines;
}

}  // namespace app
