#include "editor/rowshape.h"

#include "editor/programtable.h"
#include "editor/statementtext.h"
#include "look/scale.h"
#include "program/words.h"

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

/// Of the frames round speed and zone.
int frameHeight(const RowGrid& grid, int rowHeight) {
    const int most = grid.mode() == RowGrid::Mode::Wide ? 32 : 28;
    return std::min(RowGrid::rowPx(most), rowHeight - 4);
}

void placeNote(RowShape* shape, const RowGrid& grid) {
    const int height = shape->noteLines.size() * grid.pitch();
    if (grid.isWide()) {
        shape->noteTop = (shape->height - height) / 2;
        shape->note = QRect(grid.columnLeft(ProgramTable::NoteColumn), 0,
                            grid.columnWidth(ProgramTable::NoteColumn), shape->height);
        return;
    }
    const int left = grid.columnLeft(ProgramTable::DetailColumn) + grid.textLeft();
    const int tall = std::max(height, grid.pitch());
    shape->hasNoteRoom = shape->noteTop + tall <= shape->height;
    shape->note = QRect(left, std::min(shape->noteTop, shape->height - tall), grid.textWidth(), tall);
}

/// Speed and zone in the row's columns.
void placeFigures(RowShape* shape, const RowGrid& grid, const RowSummary& summary, int figureLines,
                  bool showsTool) {
    const int left = grid.columnLeft(ProgramTable::DetailColumn);
    const int tall = frameHeight(grid, shape->height);
    int middle = shape->height / 2;
    if (figureLines > 0 && (grid.mode() == RowGrid::Mode::Narrow || showsTool)) {
        middle = shape->top + figureLines * grid.pitch() / 2;
    }
    if (grid.isTight()) {
        middle = shape->wordTop + grid.pitch() / 2;
    } else if (grid.isWide() && !summary.second.isEmpty()) {
        middle = shape->top + grid.pitch() + grid.pitch() / 2;  // beside the second line
    }
    const int y = std::clamp(middle - tall / 2, 2, std::max(2, shape->height - tall - 2));
    const int inset = look::px(4);
    if (!summary.speed.isEmpty()) {
        const int right = left + grid.speedRight() + look::px(2);
        shape->speed = QRect(right - grid.speedFrame(), y, grid.speedFrame(), tall);
    }
    if (!summary.zone.isEmpty()) {
        shape->zone = QRect(left + grid.zoneLeft() + inset, y, grid.zoneRight() - grid.zoneLeft(), tall);
    }
}

void shapeCompact(RowShape* shape, const RowGrid& grid, const RowSummary& summary, bool showsTool) {
    const RowLines lines{summary.figures.size(), showsTool, summary.title, summary.second, summary.note};
    shape->height = grid.heightOf(lines.countIn(grid));
    int own = summary.figures.size() + (showsTool ? 1 : 0);
    if (!summary.title.isEmpty()) {
        own = grid.lineCount(summary.title, grid.textWidth()) + (summary.second.isEmpty() ? 0 : 1);
    }
    QString note = summary.note;
    if (!grid.isWide()) {
        if (!summary.title.isEmpty()) {
            own = grid.lineCount(summary.title, grid.textWidth());
            note = secondWithNote(summary.second, summary.note);
        }
    }
    shape->noteLines = grid.linesOf(note, grid.noteWidth());
    const int word = grid.isTight() ? 1 : 0;
    int all = word + own + (grid.isWide() ? 0 : shape->noteLines.size());
    if (grid.isTight()) {
        all = std::max(all, 2);  // below the command is what is seldom shown
    }
    shape->wordTop = (shape->height - all * grid.pitch()) / 2;
    shape->top = shape->wordTop + word * grid.pitch();
    shape->noteTop = shape->top + own * grid.pitch();
    placeFigures(shape, grid, summary, summary.title.isEmpty() ? summary.figures.size() : 1, showsTool);
    placeNote(shape, grid);
}

/// The line of the full text that begins with a piece behind its number; -1: none.
int lineOf(const QVector<FullLine>& lines, const QString& piece) {
    for (int line = 0; line < lines.size(); ++line) {
        if (lines.at(line).text.endsWith(piece.trimmed()) && !lines.at(line).goesOn) {
            return line;
        }
    }
    return -1;
}

/// The line of a full text beside which the fields fit; behind it where they fit beside none. In a tight list
/// they are beside the command.
int lineOfFields(const RowShape& shape, const RowGrid& grid, const QString& speed, int room) {
    if (grid.isTight()) {
        return -grid.commandLines();
    }
    const int line = lineOf(shape.full, speed);
    bool fits = line >= 0;
    for (int beside = line; fits && beside < std::min(line + 2, shape.full.size()); ++beside) {
        const FullLine& text = shape.full.at(beside);
        fits = grid.captionMetrics().horizontalAdvance(text.text) + (text.goesOn ? grid.gap() * 2 : 0) < room;
    }
    return fits ? line : shape.full.size();
}

/// The fields of a row with the full text, from its first line; they are two lines high. Returns how many
/// lines they need below it.
int placeFullFields(RowShape* shape, const RowGrid& grid, const ModuleObject* statement) {
    const QLatin1String name = fieldName(statement, LineField::Speed);
    if (name.isEmpty()) {
        return 0;
    }
    const bool hasZone = !fieldName(statement, LineField::Zone).isEmpty();
    const int right = grid.columnLeft(ProgramTable::DetailColumn) + grid.zoneRight();
    const int zoneWidth = hasZone ? grid.zoneRight() - grid.zoneLeft() : 0;
    const int begin = right - zoneWidth - grid.speedFrame() - look::px(2);
    const ModuleObject* const speed = statement->c(name);
    const int line =
        lineOfFields(*shape, grid, name == field::weldspeed ? weldSpeed2cn(speed) : speed2cn(speed),
                     begin - grid.columnLeft(ProgramTable::DetailColumn) - 2 * grid.gap());
    const int tall = std::min(RowGrid::rowPx(32), 2 * grid.pitch() - 2);
    shape->speed = QRect(begin, line * grid.pitch() + 1, grid.speedFrame(), tall);
    if (hasZone) {
        shape->zone = QRect(right - zoneWidth, line * grid.pitch() + 1, zoneWidth, tall);
    }
    return std::max(0, line + 2 - shape->full.size());
}

void shapeFull(RowShape* shape, const RowGrid& grid, const ModuleObject* statement, const RowSummary& summary,
               bool hasFields) {
    shape->full = grid.fullTextLines(statementDetails(statement));
    const int below = hasFields ? placeFullFields(shape, grid, statement) : 0;
    shape->noteLines = grid.linesOf(summary.note, grid.noteWidth());
    const int notes = std::max(shape->noteLines.size(), hasFields ? 1 : 0);  // room to write one
    const int word = grid.commandLines();
    const int own = word + shape->full.size() + below;
    const int all = grid.isWide() ? std::max(own, notes) : own + notes;
    shape->height = grid.heightOfFull(all);
    const int top = (shape->height - (grid.isWide() ? own : all) * grid.pitch()) / 2;
    shape->wordTop = top + grid.pitch() / 2;
    shape->top = top + word * grid.pitch();
    shape->noteTop = top + own * grid.pitch();
    for (QRect* field : {&shape->speed, &shape->zone}) {
        if (!field->isNull()) {
            field->translate(0, shape->top);
        }
    }
    placeNote(shape, grid);
}

}  // namespace

QString secondWithNote(const QString& second, const QString& note) {
    return second.isEmpty() || note.isEmpty() ? second + note : second + QStringLiteral(" · ") + note;
}

RowLines RowLines::of(const ModuleObject* statement, bool showsTool, int joints) {
    RowLines lines;
    const QString type = statement->c(field::type)->getString();
    if (isMove(type)) {
        lines.figures = figureLines(type, joints);
        lines.note = statement->c(field::note)->getString().simplified();
        lines.showsTool = showsTool;
    } else {
        const RowSummary summary = summaryOf(statement);
        lines.title = summary.title;
        lines.second = summary.second;
        lines.note = summary.note;
    }
    return lines;
}

int RowLines::countIn(const RowGrid& grid) const {
    const int own = title.isEmpty() ? figures + (showsTool ? 1 : 0) : grid.lineCount(title, grid.textWidth());
    if (grid.isWide()) {
        return std::max(own + (second.isEmpty() ? 0 : 1), grid.lineCount(note, grid.noteWidth()));
    }
    const int word = grid.isTight() ? 1 : 0;
    return own + word + grid.lineCount(secondWithNote(second, note), grid.noteWidth());
}

RowShape RowShape::of(const RowGrid& grid, const ModuleObject* statement, const RowSummary& summary,
                      const RowForm& form) {
    RowShape shape;
    shape.isFull = form.isFull && !statementDetails(statement).isEmpty();
    if (shape.isFull) {
        shapeFull(&shape, grid, statement, summary, form.hasFields);
    } else {
        shapeCompact(&shape, grid, summary, form.showsTool);
    }
    return shape;
}

LineField RowShape::fieldAt(const QPoint& point) const {
    // Frames are lower than a finger is wide: in a compact row the whole height counts.
    const auto holds = [this, &point](const QRect& field) {
        const QRect target = isFull ? field : QRect(field.left(), 0, field.width(), height);
        return !field.isNull() && target.contains(point);
    };
    if (holds(speed)) {
        return LineField::Speed;
    }
    if (holds(zone)) {
        return LineField::Zone;
    }
    return note.contains(point) ? LineField::Note : LineField::None;
}

}  // namespace lumo
