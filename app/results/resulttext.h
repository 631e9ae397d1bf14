#pragma once

#include "app/results/runresult.h"
#include "app/status/statustext.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace app {

/// Whether a quantity keeps its limit.
enum class Mark { NoLimit, Within, Outside };

/// A quantity of a seam as it is shown.
struct SeamCell {
    QString text;  ///< the value; "–" for none
    Mark mark = Mark::NoLimit;
    QString allowed;  ///< "0.99 … 1.02", "≥ 0.3"; empty without a limit
};

/// "✓", "✗" or nothing.
[[nodiscard]] QString signOf(Mark mark);

/// What the status line says of a run that is over.
[[nodiscard]] EndedRun endedRun(const RunResult& result);

/// What is shown of every seam, in the panel's language, and the cells of one seam in the same order.
[[nodiscard]] QStringList seamHeadings();
[[nodiscard]] QVector<SeamCell> seamCells(const workcell::SeamRecord& seam, const RunResult& result);

/// What the list of seams has of one, in the order of its columns.
enum SeamColumn {
    SeamLines,
    SeamSet,
    SeamLength,
    SeamSpeed,
    SeamPower,
    SeamGas,
    SeamGaps,
    SeamEnergy,
    SeamGood
};
constexpr int seamColumns = SeamGood + 1;

/// The columns' headings; where a quantity has a unit that stands in a second line.
[[nodiscard]] QStringList seamColumnHeadings(const RunResult& result);
/// The cells of a row. The last one has no text: its mark tells whether limits, welded length and equipment
/// were as they should; NoLimit where nothing was wrong and nothing judged it.
[[nodiscard]] QVector<SeamCell> seamRow(int seam, const RunResult& result);
/// In one word: "4 seams good", "limits not kept: 2", "no limits".
[[nodiscard]] QString verdictText(const RunResult& result);
/// Whether something is to be looked at: limits not kept, faults, refused writes.
[[nodiscard]] bool isBad(const RunResult& result);

/// How a run ended: "Finished", "Paused".
[[nodiscard]] QString reasonText(const QString& reason);
/// "Chiller", for a word of the cell.
[[nodiscard]] QString equipmentText(const QString& name);
/// "88.0 of 300.0 mm welded"; empty for a program that has no welds.
[[nodiscard]] QString weldedText(const RunResult& result);
/// "All limits are kept", "2 limits are not kept", or why nothing was judged.
[[nodiscard]] QString limitsText(const RunResult& result);
/// A sentence for each violation: "Seam 2: welded length 88.0 mm, allowed ≥ 295".
[[nodiscard]] QStringList violationTexts(const RunResult& result);
/// A sentence for each fault of equipment, refused statement and kind of rejected write.
[[nodiscard]] QStringList incidentTexts(const RunResult& result);

}  // namespace app
