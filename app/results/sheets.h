#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>
#include <QVector>

#include <functional>
#include <vector>

class QPainter;

namespace app {

/// A printed document: blocks one below the other, broken into pages of A4. Lengths are in 1/96 inch, as the
/// pixels of a screen.
class Sheets {
public:
    static constexpr double pageWidth = 794, pageHeight = 1123;
    static constexpr double margin = 56;
    static constexpr double textWidth = pageWidth - 2 * margin;

    struct Cell {
        QString text = {};
        bool bold = false;
        QColor ink = {};   ///< invalid: that of the text
        QColor fill = {};  ///< invalid: none
    };
    struct Column {
        double width;
        Qt::Alignment alignment = Qt::AlignLeft;
    };
    using Row = QVector<Cell>;
    using Paint = std::function<void(QPainter*, const QRectF&)>;

    /// `font`: of the text; titles are larger.
    explicit Sheets(const QFont& font);

    void addTitle(const QString& text);
    /// Begins a new page where the next part would not fit below it.
    void addHeading(const QString& text);
    void addText(const QString& text);
    void addSpace(double height);
    /// A drawing over the whole width.
    void addPicture(double height, const Paint& paint);
    /// The rows that follow belong to a table with these columns. The header is repeated on each page; an
    /// empty one is left out.
    void beginTable(const QVector<Column>& columns, const Row& header);
    void addRow(const Row& row);

    [[nodiscard]] int pageCount() const { return int(pages().size()); }
    /// Paints a page, from 0, into a rectangle of its size at the origin. `footer` is on the left below, the
    /// page's number on the right.
    void paint(QPainter* painter, int page, const QString& footer) const;

private:
    struct Block {
        double height;
        Paint paint;
        bool staysWithNext = false;
        int header = -1;  ///< of a row: the block that is repeated above it on a new page
    };
    using Page = std::vector<int>;
    [[nodiscard]] std::vector<Page> pages() const;
    void addParagraph(const QString& text, const QFont& font, double above, double below, bool staysWithNext);
    [[nodiscard]] Block rowBlock(const Row& row) const;

    QFont font_;
    std::vector<Block> blocks_;
    QVector<Column> columns_;  ///< of the table under way
    int header_ = -1;
};

}  // namespace app
