#pragma once

#include "editor/fulltext.h"

#include <QFont>
#include <QFontMetrics>
#include <QHash>
#include <QString>
#include <QStringList>

#include <array>

namespace lumo {

/// The measures of the program's list: columns, heights and type, for a width, a scale (look/scale.h) and a
/// language.
///
/// A wide list has a column for the remark. A narrow one has the remark below the parameters. A tight one has
/// two columns: marker and number, and all the rest, below the command. All lengths are in px.
class RowGrid {
public:
    enum class Mode { Wide, Narrow, Tight };
    static constexpr int columns = 6;

    /// Not to be used before it was fitted.
    RowGrid();
    /// `width`: of the table; `inside`: of its viewport. `captions`: of the columns.
    void fit(int width, int inside, int rowCount, const QStringList& captions);

    [[nodiscard]] Mode mode() const { return mode_; }
    [[nodiscard]] bool isWide() const { return mode_ == Mode::Wide; }
    [[nodiscard]] bool isTight() const { return mode_ == Mode::Tight; }
    /// Of a column of ProgramTable; 0 for one whose content stands in another.
    [[nodiscard]] int columnWidth(int column) const { return widths_[static_cast<std::size_t>(column)]; }
    [[nodiscard]] int columnLeft(int column) const;

    // Within the column of the parameters, from its left edge.
    [[nodiscard]] int textLeft() const;
    /// Width of a text that fills the column.
    [[nodiscard]] int textWidth() const;
    /// Where a column of figures ends.
    [[nodiscard]] int figureRight(int column) const;
    [[nodiscard]] int speedLeft() const;
    [[nodiscard]] int speedRight() const;
    /// Width of the frame round the speed.
    [[nodiscard]] int speedFrame() const;
    [[nodiscard]] int zoneLeft() const { return speedRight() + gap() / 2; }
    [[nodiscard]] int zoneRight() const;
    [[nodiscard]] int noteWidth() const;

    /// Height of a compact row with so many lines of small type.
    [[nodiscard]] int heightOf(int lines) const;
    /// Height of a row with the full text.
    [[nodiscard]] int heightOfFull(int lines) const;
    /// Lines of the command above a full text: it is as high as the fields beside it.
    [[nodiscard]] int commandLines() const { return isTight() ? 2 : 0; }
    /// From one line of small type to the next.
    [[nodiscard]] int pitch() const;
    [[nodiscard]] int headerHeight() const;
    [[nodiscard]] const QFont& headerFont() const { return headerFont_; }
    [[nodiscard]] int gap() const;
    /// A length that does not grow at the middle scale, as the rows do not.
    [[nodiscard]] static int rowPx(int length);

    [[nodiscard]] const QFont& caption() const { return caption_; }
    [[nodiscard]] const QFont& strongCaption() const { return strongCaption_; }
    [[nodiscard]] const QFont& text() const { return text_; }
    /// Small or usual type without kerning, for figures: their widths are the sums of those of their letters.
    struct Figures {
        QFont font;
        QFontMetrics metrics{QFont()};
        int digit = 0, point = 0, minus = 0;

        [[nodiscard]] static Figures of(const QFont& font);
        [[nodiscard]] int widthOf(const QString& number) const;
    };
    [[nodiscard]] const Figures& smallFigures() const { return smallFigures_; }
    [[nodiscard]] const Figures& figures() const { return figures_; }
    [[nodiscard]] const QFontMetrics& captionMetrics() const { return captionMetrics_; }
    [[nodiscard]] const QFontMetrics& textMetrics() const { return textMetrics_; }

    /// The lines of a text in small type, broken between words.
    [[nodiscard]] QStringList linesOf(const QString& text, int width) const;
    /// How many these are. Texts that differ in their digits only are laid out once: digits are equally wide.
    [[nodiscard]] int lineCount(const QString& text, int width) const;
    /// The full text of a statement in lines that fit into its column.
    [[nodiscard]] QVector<FullLine> fullTextLines(const QString& details) const;
    /// How many these are.
    [[nodiscard]] int fullLineCount(const QString& details) const;

private:
    void fitColumns(int width, int inside, int rowCount, const QStringList& captions);
    [[nodiscard]] int commandWidth(bool whole) const;
    [[nodiscard]] int captionWidth(const QString& caption) const;

    Mode mode_ = Mode::Wide;
    std::array<int, columns> widths_{};
    QFont caption_, strongCaption_, text_, headerFont_;
    QFontMetrics captionMetrics_, textMetrics_;
    Figures smallFigures_, figures_;
    mutable QHash<QString, int> counts_;      ///< by shape of the text and width
    mutable QHash<QString, int> fullCounts_;  ///< by shape
};

}  // namespace lumo
