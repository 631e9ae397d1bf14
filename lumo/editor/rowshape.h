#pragma once

#include "editor/fulltext.h"
#include "editor/linefield.h"
#include "editor/rowgrid.h"
#include "editor/rowsummary.h"

#include <QRect>
#include <QStringList>
#include <QVector>

namespace lumo {

/// The lines of small type in a compact row: what decides about its height.
struct RowLines {
    int figures = 0;              ///< lines of figures
    bool showsTool = false;       ///< tool and work object in a line of their own
    QString title, second, note;  ///< as in RowSummary

    /// Cheap enough for every row of a long program. Whether the tool is shown depends on the rows above.
    /// `joints`: of the robot.
    [[nodiscard]] static RowLines of(const ModuleObject* statement, bool showsTool, int joints);
    [[nodiscard]] int countIn(const RowGrid& grid) const;
};

/// What is below a title that has no figures, where the remark stands there too.
[[nodiscard]] QString secondWithNote(const QString& second, const QString& note);

/// In which form a row is shown.
struct RowForm {
    bool isFull = false;     ///< with the full text
    bool hasFields = false;  ///< with frames round what is edited in place: selected, and not locked
    bool showsTool = false;  ///< tool and work object in a line of their own: other ones than above
};

/// Where the parts of one row are, from the row's top left corner.
struct RowShape {
    int height = 0;
    bool isFull = false;
    QVector<FullLine> full;  ///< of a row with the full text
    QStringList noteLines;   ///< the remark, in its own column or below
    /// Fields that are edited in place; empty where the statement has none.
    QRect speed, zone, note;
    int wordTop = 0;          ///< of the command, where it stands above the parameters: in a tight list
    int top = 0;              ///< of the lines in the column of the parameters
    int noteTop = 0;          ///< of the remark's lines
    bool hasNoteRoom = true;  ///< a line is free for a remark that is not there

    [[nodiscard]] static RowShape of(const RowGrid& grid, const ModuleObject* statement,
                                     const RowSummary& summary, const RowForm& form);
    [[nodiscard]] LineField fieldAt(const QPoint& point) const;
};

}  // namespace lumo
