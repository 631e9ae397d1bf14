#include "editor/rowpainter.h"

#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"
#include "widgets/fieldanswer.h"
#include "widgets/severitymark.h"

#include <QPainter>

using namespace prog;

namespace lumo {

namespace {

/// Of the pictures that are kept, KiB: more than the rows of the largest screen.
constexpr int keptKiB = 24 * 1024;

constexpr QRgb markerColour = qRgb(0, 255, 0);

int baselineIn(const QFontMetrics& metrics, int top, int height) {
    return top + (height - metrics.height()) / 2 + metrics.ascent();
}

/// A text in a line: centred between its edges.
void drawLine(QPainter* painter, int x, int top, int height, const QString& text) {
    painter->drawText(x, baselineIn(painter->fontMetrics(), top, height), text);
}

void drawFigure(QPainter* painter, const RowGrid::Figures& type, int right, int baseline,
                const QString& number) {
    painter->setFont(type.font);
    painter->drawText(right - type.widthOf(number), baseline, number);
}

QPixmap transparent(const QSize& size, qreal ratio) {
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    return picture;
}

bool isZero(const std::array<QString, RowSummary::columns>& figures) {
    return std::all_of(figures.begin(), figures.end(), [](const QString& text) {
        return text.isEmpty() || text.startsWith(QLatin1String("0.0"));
    });
}

}  // namespace

/// Colours of the texts: those of a line that is not executed are paler.
struct RowPainter::Inks {
    QRgb value, second, unit;

    static Inks of(bool executed) {
        return executed ? Inks{look::ink, look::ink2, look::ink3} : Inks{look::off, look::off, look::off};
    }
};

RowPainter::RowPainter(const RowGrid& grid) : grid_(grid), kept_(keptKiB) {}

void RowPainter::paint(QPainter* painter, int row, const QRect& place, const State& state) {
    uint key = 0;
    const auto add = [&key](uint value, int bits) { key = (key << bits) | value; };
    for (const bool flag :
         {state.form.isFull, state.form.hasFields, state.form.showsTool, state.isSelected, state.hasFocus,
          state.hasMarker, state.isUntaught, state.seam.isFirst, state.seam.isLast}) {
        add(flag ? 1 : 0, 1);
    }
    add(state.severity ? 1 + static_cast<uint>(*state.severity) : 0, 4);
    add(static_cast<uint>(state.seam.weld), 4);
    const Kept* kept = kept_.object(row);
    const qreal ratio = painter->device()->devicePixelRatioF();
    if (!kept || kept->state != key || kept->picture.size() != place.size() * ratio) {
        auto* const painted = new Kept{key, pictureOf(row, place.size(), ratio, state)};
        const int bytesOfPixel = 4;
        const int cost = painted->picture.width() * painted->picture.height() * bytesOfPixel / 1024 + 1;
        painter->drawPixmap(place.topLeft(), painted->picture);
        kept_.insert(row, painted, cost);
        return;
    }
    painter->drawPixmap(place.topLeft(), kept->picture);
}

QPixmap RowPainter::pictureOf(int row, const QSize& size, qreal ratio, const State& state) const {
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    QPainter painter(&picture);
    const QRect place(QPoint(), size);
    const ModuleObject* const statement = ProgramTable::program()->c(row);
    const RowSummary summary = summaryOf(statement);
    RowShape shape = RowShape::of(grid_, statement, summary, state.form);
    shape.height = size.height();
    const Inks inks = Inks::of(summary.executed);
    paintGround(&painter, place, state);
    paintNumber(&painter, row, shape, state, inks);
    paintCommand(&painter, shape, summary, inks);
    paintParameters(&painter, summary, shape, state, inks);
    paintNote(&painter, shape, state, inks);
    paintFlag(&painter, shape, summary.executed);
    return picture;
}

// --- Around the texts -----------------------------------------------------------------------------

void RowPainter::paintGround(QPainter* painter, const QRect& place, const State& state) const {
    painter->fillRect(place, QColor(state.isSelected ? look::sel : look::white));
    painter->fillRect(0, place.height() - 1, place.width(), 1, QColor(look::rule));
    if (state.isSelected) {
        const int line = state.hasFocus ? 2 : 1;
        painter->fillRect(0, 0, place.width(), line, QColor(look::blue));
        painter->fillRect(0, place.height() - line, place.width(), line, QColor(look::blue));
    }
    paintBar(painter, place.height(), state.seam);
    if (state.hasMarker) {
        paintMarker(painter, place.height());
    }
}

void RowPainter::paintBar(QPainter* painter, int height, const SeamRows::Place& seam) const {
    if (seam.weld == look::Weld::None) {
        return;
    }
    const int key =
        (height * 4 + static_cast<int>(seam.weld)) * 4 + (seam.isFirst ? 2 : 0) + (seam.isLast ? 1 : 0);
    QPixmap& bar = bars_[key];
    if (bar.isNull()) {
        const QSize size(RowGrid::rowPx(8), height);
        bar = transparent(size, painter->device()->devicePixelRatioF());
        QPainter into(&bar);
        look::paintWeldBar(&into, QRect(QPoint(), size), seam.weld, seam.isFirst, seam.isLast);
    }
    painter->drawPixmap(RowGrid::rowPx(4), 0, bar);
}

void RowPainter::forgetAll() {
    kept_.clear();
    bars_.clear();
    marks_.clear();
}

/// In a tight list below the number.
QRect RowPainter::chipIn(int height) const {
    const QSize size(RowGrid::rowPx(36), RowGrid::rowPx(24));
    const int y = grid_.isTight() ? height - size.height() - 2 : (height - size.height()) / 2;
    return {QPoint(RowGrid::rowPx(15), y), size};
}

void RowPainter::paintMarker(QPainter* painter, int height) const {
    const QRect chip = chipIn(height);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(QColor(look::navy), 2));
    painter->setBrush(QColor(markerColour));
    painter->drawRoundedRect(QRectF(chip).adjusted(1, 1, -1, -1), 4, 4);
    painter->setPen(QColor(look::ink));
    painter->setFont(grid_.text());
    painter->drawText(chip, Qt::AlignCenter, QStringLiteral("-->"));
    painter->restore();
}

void RowPainter::paintNumber(QPainter* painter, int row, const RowShape& shape, const State& state,
                             const Inks& inks) const {
    painter->setPen(QColor(inks.second));
    const int column = grid_.isTight() ? ProgramTable::DetailColumn : ProgramTable::CommandColumn;
    const int right = grid_.columnLeft(column) - grid_.gap() / 2;
    const int top = grid_.isTight() ? shape.wordTop : 0;
    const int height = grid_.isTight() ? grid_.pitch() : shape.height;
    const QString number = QString::number(row + 1);
    const RowGrid::Figures& type = grid_.figures();
    drawFigure(painter, type, right, baselineIn(type.metrics, top, height), number);
    if (!state.severity) {
        return;
    }
    const int edge = RowGrid::rowPx(16);
    QRect mark(0, top + (height - edge) / 2, edge, edge);
    mark.moveRight(right - type.widthOf(number) - grid_.gap() / 2);
    if (state.hasMarker) {
        // At the upper right corner of the marker, which has the room beside the number.
        const QRect chip = chipIn(shape.height);
        mark.moveTopLeft({chip.right() - edge * 2 / 3, chip.top() - edge / 3});
    } else if (grid_.isTight()) {
        mark.moveTopLeft({RowGrid::rowPx(18), top + grid_.pitch() + 2});
    }
    paintMark(painter, mark, *state.severity);
}

void RowPainter::paintMark(QPainter* painter, const QRect& place, Severity severity) const {
    QPixmap& picture = marks_[static_cast<int>(severity)];
    if (picture.isNull()) {
        picture = transparent(place.size(), painter->device()->devicePixelRatioF());
        QPainter into(&picture);
        lumo::paintMark(&into, QRect(QPoint(), place.size()), severity);
    }
    painter->drawPixmap(place.topLeft(), picture);
}

void RowPainter::paintCommand(QPainter* painter, const RowShape& shape, const RowSummary& summary,
                              const Inks& inks) const {
    if (grid_.isTight()) {
        paintCommandAbove(painter, shape, summary, inks);
        return;
    }
    const int height = shape.height;
    const int left = grid_.columnLeft(ProgramTable::CommandColumn);
    const int icon = look::px(20);
    painter->drawPixmap(left + grid_.gap(), (height - icon) / 2,
                        look::picture(statementIcon(summary.type), icon, inks.second));
    const int x = left + look::px(38);
    const int room = grid_.columnWidth(ProgramTable::CommandColumn) - look::px(38) - grid_.gap() / 2;
    painter->setPen(QColor(inks.value));
    painter->setFont(grid_.text());
    if (grid_.textMetrics().horizontalAdvance(summary.command) <= room) {
        drawLine(painter, x, 0, height, summary.command);
        return;
    }
    const int pitch = grid_.isWide() ? grid_.pitch() : RowGrid::rowPx(18);
    if (grid_.isWide()) {
        painter->setFont(grid_.caption());
    }
    const int middle = summary.command.indexOf(QLatin1Char(' '));
    drawLine(painter, x, height / 2 - pitch, pitch, summary.command.left(middle));
    drawLine(painter, x, height / 2, pitch, summary.command.mid(middle + 1));
}

void RowPainter::paintCommandAbove(QPainter* painter, const RowShape& shape, const RowSummary& summary,
                                   const Inks& inks) const {
    const int left = grid_.columnLeft(ProgramTable::DetailColumn) + grid_.textLeft();
    const int icon = grid_.pitch();
    painter->drawPixmap(left, shape.wordTop, look::picture(statementIcon(summary.type), icon, inks.second));
    painter->setPen(QColor(inks.value));
    painter->setFont(grid_.text());
    drawLine(painter, left + icon + grid_.gap(), shape.wordTop, grid_.pitch(), summary.command);
}

/// A tight list tells only that a line is not executed, below the speed.
void RowPainter::paintFlag(QPainter* painter, const RowShape& shape, bool executed) const {
    QFont font = grid_.caption();
    if (!executed) {
        font = look::font(look::Size::Caption, look::Weight::State);
    }
    painter->setFont(font);
    painter->setPen(QColor(executed ? look::ink3 : look::red));
    const QString word = executed ? ProgramWidget::tr("运行") : ProgramWidget::tr("不运行");
    if (!grid_.isTight()) {
        drawLine(painter, grid_.columnLeft(ProgramTable::RunColumn) + grid_.gap(), 0, shape.height, word);
    } else if (!executed) {
        const int right = grid_.columnLeft(ProgramTable::DetailColumn) + grid_.zoneRight();
        drawLine(painter, right - painter->fontMetrics().horizontalAdvance(word),
                 shape.wordTop + grid_.pitch(), grid_.pitch(), word);
    }
}

// --- Parameters and remark ------------------------------------------------------------------------

void RowPainter::paintParameters(QPainter* painter, const RowSummary& summary, const RowShape& shape,
                                 const State& state, const Inks& inks) const {
    if (shape.isFull) {
        paintFullText(painter, shape, inks);
    } else {
        const int left = grid_.columnLeft(ProgramTable::DetailColumn) + grid_.textLeft();
        const int pitch = grid_.pitch();
        int y = shape.top;
        bool isUntaught = state.isUntaught;
        for (const auto& figures : summary.figures) {
            if (isUntaught && (isZero(figures) || &figures == &summary.figures.last())) {
                paintUntaught(painter, y);
                isUntaught = false;
            } else {
                paintPoint(painter, y, figures, inks);
            }
            y += pitch;
        }
        painter->setFont(grid_.caption());
        if (state.form.showsTool) {
            painter->setPen(QColor(inks.unit));
            drawLine(painter, left, y, pitch,
                     painter->fontMetrics().elidedText(summary.tool, Qt::ElideRight, grid_.textWidth()));
        }
        const QStringList titles = grid_.linesOf(summary.title, grid_.textWidth());
        painter->setPen(QColor(inks.value));
        if (titles.size() == 1 && (summary.second.isEmpty() || !grid_.isWide())) {
            painter->setFont(grid_.text());
        }
        for (const QString& title : titles) {
            drawLine(painter, left, y, pitch, title);
            y += pitch;
        }
        if (grid_.isWide() && !summary.second.isEmpty()) {
            painter->setFont(grid_.caption());
            painter->setPen(QColor(inks.second));
            drawLine(painter, left, y, pitch, summary.second);
        }
    }
    if (!shape.isFull || state.form.hasFields) {
        const bool framed = state.form.hasFields;
        paintFigure(painter, shape.speed, summary.speed, summary.speedUnit,
                    framed && summary.type != statement::delay, inks);
        paintFigure(painter, shape.zone, summary.zone, unitText("mm"), framed, inks);
    }
}

void RowPainter::paintPoint(QPainter* painter, int top,
                            const std::array<QString, RowSummary::columns>& figures, const Inks& inks) const {
    painter->setPen(QColor(inks.value));
    const RowGrid::Figures& type = grid_.smallFigures();
    const int baseline = baselineIn(type.metrics, top, grid_.pitch());
    const int left = grid_.columnLeft(ProgramTable::DetailColumn);
    for (int column = 0; column < RowSummary::columns; ++column) {
        const QString& figure = figures[static_cast<std::size_t>(column)];
        // The sign of degrees hangs over, so that the digits stand in their column.
        const bool hasSign = figure.endsWith(QChar(0xb0));
        const int over = hasSign ? type.metrics.horizontalAdvance(QChar(0xb0)) : 0;
        drawFigure(painter, type, left + grid_.figureRight(column) + over, baseline, figure);
    }
}

void RowPainter::paintUntaught(QPainter* painter, int top) const {
    const int left = grid_.columnLeft(ProgramTable::DetailColumn) + grid_.textLeft();
    const int icon = grid_.pitch() - 1;
    painter->drawPixmap(left, top, look::picture(QStringLiteral("warn"), icon, look::amberInk));
    painter->setFont(grid_.strongCaption());
    painter->setPen(QColor(look::amberInk));
    drawLine(painter, left + icon + grid_.gap() / 2, top, grid_.pitch(), ProgramTable::tr("未示教"));
}

void RowPainter::paintFullText(QPainter* painter, const RowShape& shape, const Inks& inks) const {
    painter->setFont(grid_.caption());
    painter->setPen(QColor(inks.value));
    const int left = grid_.columnLeft(ProgramTable::DetailColumn) + grid_.textLeft();
    int y = shape.top;
    for (const FullLine& line : shape.full) {
        drawLine(painter, left + (line.goesOn ? 2 * grid_.gap() : 0), y, grid_.pitch(), line.text);
        y += grid_.pitch();
    }
}

/// A number with its unit, in a frame where it can be edited.
void RowPainter::paintFigure(QPainter* painter, const QRect& field, const QString& number,
                             const QString& unit, bool framed, const Inks& inks) const {
    if (number.isEmpty()) {
        return;
    }
    if (framed) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QColor(look::edge));
        painter->setBrush(QColor(look::white));
        painter->drawRoundedRect(QRectF(field).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
        painter->restore();
    }
    const int right = field.right() + 1 - look::px(4);
    const int unitWidth = grid_.captionMetrics().horizontalAdvance(unit);
    const int baseline =
        field.top() + (field.height() - grid_.textMetrics().height()) / 2 + grid_.textMetrics().ascent();
    painter->setFont(grid_.caption());
    painter->setPen(QColor(inks.unit));
    painter->drawText(right - unitWidth, baseline, unit);
    painter->setPen(QColor(inks.value));
    drawFigure(painter, grid_.figures(), right - unitWidth - look::px(4), baseline, number);
}

void RowPainter::paintNote(QPainter* painter, const RowShape& shape, const State& state,
                           const Inks& inks) const {
    const int left = grid_.isWide() ? grid_.columnLeft(ProgramTable::NoteColumn) + grid_.gap()
                                    : grid_.columnLeft(ProgramTable::DetailColumn) + grid_.textLeft();
    painter->setFont(grid_.caption());
    painter->setPen(QColor(inks.second));
    int y = shape.noteTop;
    for (const QString& line : shape.noteLines) {
        drawLine(painter, left, y, grid_.pitch(), line);
        y += grid_.pitch();
    }
    if (!shape.noteLines.isEmpty() || !state.form.hasFields || !shape.hasNoteRoom) {
        return;
    }
    painter->setPen(QColor(look::ink3));
    const QStringList hint = grid_.linesOf(ProgramTable::tr("点击输入备注"), grid_.noteWidth());
    y = shape.note.center().y() - hint.size() * grid_.pitch() / 2;
    for (const QString& line : hint) {
        drawLine(painter, left, y, grid_.pitch(), line);
        y += grid_.pitch();
    }
}

}  // namespace lumo
