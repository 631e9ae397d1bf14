#include "editor/rowgrid.h"

#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "editor/statementtext.h"
#include "look/scale.h"
#include "look/type.h"
#include "program/statement.h"

#include <QTextLayout>

#include <algorithm>

namespace lumo {

namespace {

/// Below this the remark goes below the parameters.
constexpr int wideList = 700;
constexpr int comfortableNote = 200;
constexpr int leastNote = 120;
/// Type is measured anew beyond this many shapes.
constexpr int mostShapes = 4000;

constexpr int headerType = 14;
constexpr int markerColumn = 52;
constexpr int tightMarkerColumn = 56;
constexpr int numberColumn = 28;
constexpr int commandColumn = 140;
/// From the left edge of the command's column to its word: past the icon.
constexpr int wordLeft = 38;
constexpr int figureColumn = 52;
constexpr int speedColumn = 84;
constexpr int zoneColumn = 50;

/// Lines of small type in a row of the least height.
constexpr int usualLines = 2;

/// The text with 0 for every digit: texts of one shape have the same size.
QString shapeOf(const QString& text) {
    QString shape = text;
    for (QChar& letter : shape) {
        if (letter >= QLatin1Char('0') && letter <= QLatin1Char('9')) {
            letter = QLatin1Char('0');
        }
    }
    return shape;
}

}  // namespace

RowGrid::RowGrid() : captionMetrics_(QFont()), textMetrics_(QFont()) {}

void RowGrid::fit(int width, int inside, int rowCount, const QStringList& captions) {
    caption_ = look::font(look::Size::Caption);
    strongCaption_ = look::font(look::Size::Caption, look::Weight::Strong);
    text_ = look::font(look::Size::Text);
    headerFont_ = strongCaption_;
    headerFont_.setPixelSize(rowPx(headerType));
    captionMetrics_ = QFontMetrics(caption_);
    textMetrics_ = QFontMetrics(text_);
    smallFigures_ = Figures::of(caption_);
    figures_ = Figures::of(text_);
    counts_.clear();
    fullCounts_.clear();
    fitColumns(width, inside, rowCount, captions);
}

RowGrid::Figures RowGrid::Figures::of(const QFont& font) {
    Figures figures;
    figures.font = font;
    figures.font.setKerning(false);
    figures.metrics = QFontMetrics(figures.font);
    figures.digit = figures.metrics.horizontalAdvance(QLatin1Char('0'));
    figures.point = figures.metrics.horizontalAdvance(QLatin1Char('.'));
    figures.minus = figures.metrics.horizontalAdvance(QChar(0x2212));
    return figures;
}

int RowGrid::Figures::widthOf(const QString& number) const {
    int width = 0;
    for (const QChar letter : number) {
        if (letter >= QLatin1Char('0') && letter <= QLatin1Char('9')) {
            width += digit;
        } else if (letter == QLatin1Char('.')) {
            width += point;
        } else if (letter == QChar(0x2212)) {
            width += minus;
        } else {
            width += metrics.horizontalAdvance(letter);
        }
    }
    return width;
}

// --- Columns --------------------------------------------------------------------------------------

void RowGrid::fitColumns(int width, int inside, int rowCount, const QStringList& captions) {
    const auto captionOf = [&](int column) { return captionWidth(captions.value(column)); };
    auto& [marker, number, command, details, note, run] = widths_;
    const int digits = QString::number(rowCount).size();
    const int figures = textMetrics_.horizontalAdvance(QString(digits, QLatin1Char('0'))) + gap();
    marker = std::max(look::px(markerColumn), captionOf(ProgramTable::MarkerColumn));
    number = std::max({look::px(numberColumn), captionOf(ProgramTable::LineColumn), figures});
    const QFontMetrics bold(look::font(look::Size::Caption, look::Weight::State));
    run = std::max({captionOf(ProgramTable::RunColumn),
                    captionMetrics_.horizontalAdvance(ProgramWidget::tr("运行")) + 2 * gap(),
                    bold.horizontalAdvance(ProgramWidget::tr("不运行")) + 2 * gap()});
    const int parameters = look::px(figureColumn) * 3 + look::px(speedColumn + zoneColumn) + 2 * gap();

    command = std::min(commandWidth(true), std::max(look::px(commandColumn), commandWidth(false)));
    note = inside - marker - number - command - run - parameters;
    if (width >= look::px(wideList) && note >= look::px(leastNote)) {
        mode_ = Mode::Wide;
        details = parameters;
        // Words that stand in two lines get one where the remarks leave room.
        const auto widen = [](int* column, int whole, int* remarks) {
            const int more = whole - *column;
            if (more > 0 && *remarks - more >= look::px(comfortableNote)) {
                *remarks -= more;
                *column = whole;
            }
        };
        widen(&run, look::textWidth(headerFont_, captions.value(ProgramTable::RunColumn)) + gap(), &note);
        widen(&command, commandWidth(true), &note);
        return;
    }
    command = commandWidth(false);
    note = 0;
    details = inside - marker - number - command - run;
    mode_ = Mode::Narrow;
    if (details < parameters) {
        mode_ = Mode::Tight;
        marker = std::max(
            {look::px(tightMarkerColumn), captionOf(ProgramTable::LineColumn), figures + RowGrid::rowPx(12)});
        number = command = run = 0;
        details = inside - marker;
    }
}

/// Of the widest command, in one line or as two lines of words.
int RowGrid::commandWidth(bool whole) const {
    int widest = 0;
    for (const prog::StatementRow& row : prog::statementRows()) {
        const QString command = type2cn(row.word);
        const QStringList words = whole ? QStringList{command} : command.split(QLatin1Char(' '));
        for (const QString& word : words) {
            widest = std::max(widest, look::textWidth(text_, word));
        }
    }
    return look::px(wordLeft) + widest + gap();
}

/// Of its widest word: the header has room for two lines.
int RowGrid::captionWidth(const QString& caption) const {
    int widest = 0;
    const QStringList words = caption.split(QLatin1Char(' '));
    for (const QString& word : words) {
        widest = std::max(widest, look::textWidth(headerFont_, word));
    }
    return widest + gap();
}

int RowGrid::columnLeft(int column) const {
    int left = 0;
    for (int before = 0; before < column; ++before) {
        left += columnWidth(before);
    }
    return left;
}

int RowGrid::textLeft() const {
    return gap();
}

int RowGrid::textWidth() const {
    return columnWidth(ProgramTable::DetailColumn) - 2 * gap();
}

int RowGrid::figureRight(int column) const {
    return gap() + look::px(figureColumn) * (column + 1);
}

int RowGrid::speedLeft() const {
    return speedRight() - look::px(speedColumn);
}

int RowGrid::speedFrame() const {
    return look::px(78);
}

int RowGrid::speedRight() const {
    return zoneRight() - look::px(zoneColumn);
}

/// In a narrow list they stand at the right edge.
int RowGrid::zoneRight() const {
    return columnWidth(ProgramTable::DetailColumn) - gap();
}

int RowGrid::noteWidth() const {
    return isWide() ? columnWidth(ProgramTable::NoteColumn) - gap() - gap() / 2 : textWidth();
}

// --- Heights --------------------------------------------------------------------------------------

int RowGrid::rowPx(int length) {
    constexpr double middle = 1.25;
    return look::factor() <= middle ? length : look::px(length) * 14 / 15;
}

int RowGrid::gap() const {
    return look::px(8);
}

int RowGrid::pitch() const {
    return std::min(look::px(17), rowPx(18));
}

int RowGrid::headerHeight() const {
    return look::factor() < 1.5 ? rowPx(32) : look::px(32);
}

int RowGrid::heightOf(int lines) const {
    return rowPx(isWide() ? 40 : 48) + std::max(0, lines - usualLines) * std::max(rowPx(16), pitch() - 1);
}

int RowGrid::heightOfFull(int lines) const {
    return std::max(heightOf(0), lines * pitch() + rowPx(26));
}

// --- Lines ----------------------------------------------------------------------------------------

QStringList RowGrid::linesOf(const QString& text, int width) const {
    if (text.isEmpty()) {
        return {};
    }
    if (captionMetrics_.horizontalAdvance(text) <= width) {
        return {text};
    }
    QTextLayout layout(text, caption_);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines << text.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}

int RowGrid::lineCount(const QString& text, int width) const {
    if (text.isEmpty()) {
        return 0;
    }
    const QString shape = shapeOf(text) + QChar(width);
    const auto kept = counts_.constFind(shape);
    if (kept != counts_.constEnd()) {
        return *kept;
    }
    if (counts_.size() >= mostShapes) {
        counts_.clear();
    }
    return *counts_.insert(shape, linesOf(text, width).size());
}

QVector<FullLine> RowGrid::fullTextLines(const QString& details) const {
    return fullLines(details, textWidth(), 2 * gap(),
                     [this](const QString& text) { return captionMetrics_.horizontalAdvance(text); });
}

int RowGrid::fullLineCount(const QString& details) const {
    if (details.isEmpty()) {
        return 0;
    }
    const QString shape = shapeOf(details);
    const auto kept = fullCounts_.constFind(shape);
    if (kept != fullCounts_.constEnd()) {
        return *kept;
    }
    if (fullCounts_.size() >= mostShapes) {
        fullCounts_.clear();
    }
    return *fullCounts_.insert(shape, fullTextLines(details).size());
}

}  // namespace lumo
