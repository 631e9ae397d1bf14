#include "app/results/sheets.h"

#include "look/tokens.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace app {

namespace {

const QColor ink(look::ink);
const QColor faint(look::ink3);
const QColor rule(look::line);
const QColor headerFill(look::frame);

constexpr double cellPadding = 5;
constexpr double footerHeight = 30;
constexpr int flags = int(Qt::TextWordWrap) | int(Qt::AlignLeft | Qt::AlignTop);

/// Long names without spaces are broken anywhere.
int wrapping(const QString& text, const QFontMetricsF& metrics, double width) {
    const QStringList words = text.split(QLatin1Char(' '));
    const bool isLong = std::any_of(words.begin(), words.end(), [&](const QString& word) {
        return metrics.horizontalAdvance(word) > width;
    });
    return isLong ? Qt::TextWrapAnywhere : Qt::TextWordWrap;
}

double heightOf(const QString& text, const QFont& font, double width) {
    constexpr double unbounded = 1e6;
    const QFontMetricsF metrics(font);
    return metrics.boundingRect(QRectF(0, 0, width, unbounded), flags | wrapping(text, metrics, width), text)
        .height();
}

void drawText(QPainter* painter, const QRectF& area, const QString& text, const QFont& font,
              Qt::Alignment alignment) {
    painter->setFont(font);
    const int wrap = wrapping(text, QFontMetricsF(font), area.width());
    painter->drawText(area, int(alignment | Qt::AlignTop) | wrap, text);
}

QFont sized(QFont font, double factor, bool bold) {
    font.setPixelSize(qRound(font.pixelSize() * factor));
    font.setBold(bold);
    return font;
}

QFont fontOf(const Sheets::Cell& cell, QFont font) {
    font.setBold(cell.bold);
    return font;
}

}  // namespace

Sheets::Sheets(const QFont& font) : font_(font) {
    // Else the widths of letters are those of screen pixels.
    font_.setHintingPreference(QFont::PreferNoHinting);
}

void Sheets::addTitle(const QString& text) {
    addParagraph(text, sized(font_, 1.9, true), 0, 8, true);
}

void Sheets::addHeading(const QString& text) {
    addParagraph(text, sized(font_, 1.25, true), 18, 6, true);
}

void Sheets::addText(const QString& text) {
    addParagraph(text, font_, 2, 2, false);
}

void Sheets::addSpace(double height) {
    blocks_.push_back({height, [](QPainter*, const QRectF&) {}});
}

void Sheets::addParagraph(const QString& text, const QFont& font, double above, double below,
                          bool staysWithNext) {
    const double height = heightOf(text, font, textWidth);
    const auto paint = [text, font, above](QPainter* painter, const QRectF& area) {
        painter->setPen(ink);
        drawText(painter, area.adjusted(0, above, 0, 0), text, font, Qt::AlignLeft);
    };
    blocks_.push_back({above + height + below, paint, staysWithNext});
}

void Sheets::addPicture(double height, const Paint& paint) {
    blocks_.push_back({height, paint});
}

void Sheets::beginTable(const QVector<Column>& columns, const Row& header) {
    columns_ = columns;
    header_ = -1;
    if (header.isEmpty()) {
        return;
    }
    Row bold = header;
    for (Cell& cell : bold) {
        cell.bold = true;
        cell.fill = headerFill;
    }
    header_ = int(blocks_.size());
    blocks_.push_back(rowBlock(bold));
    blocks_.back().staysWithNext = true;
}

void Sheets::addRow(const Row& row) {
    blocks_.push_back(rowBlock(row));
    blocks_.back().header = header_;
}

Sheets::Block Sheets::rowBlock(const Row& row) const {
    double height = 0;
    for (int i = 0; i < row.size(); ++i) {
        const double width = columns_.at(i).width - 2 * cellPadding;
        height = std::max(height, heightOf(row[i].text, fontOf(row[i], font_), width));
    }
    const auto paint = [row, columns = columns_, font = font_](QPainter* painter, const QRectF& area) {
        double left = area.left();
        for (int i = 0; i < row.size(); ++i) {
            const QRectF cell(left, area.top(), columns[i].width, area.height());
            left += columns[i].width;
            if (row[i].fill.isValid()) {
                painter->fillRect(cell, row[i].fill);
            }
            painter->setPen(row[i].ink.isValid() ? row[i].ink : ink);
            drawText(painter, cell.adjusted(cellPadding, cellPadding / 2, -cellPadding, 0), row[i].text,
                     fontOf(row[i], font), columns[i].alignment);
        }
        painter->setPen(QPen(rule, 0.7));
        painter->drawLine(area.bottomLeft(), QPointF(left, area.bottom()));
    };
    return {height + cellPadding, paint};
}

std::vector<Sheets::Page> Sheets::pages() const {
    const double room = pageHeight - 2 * margin - footerHeight;
    std::vector<Page> pages(1);
    double used = 0;
    const auto heightFrom = [this](std::size_t block) {
        double height = blocks_[block].height;
        while (blocks_[block].staysWithNext && block + 1 < blocks_.size()) {
            height += blocks_[++block].height;
        }
        return height;
    };
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        if (used > 0 && used + heightFrom(i) > room) {
            pages.emplace_back();
            used = 0;
            if (blocks_[i].header >= 0) {
                pages.back().push_back(blocks_[i].header);
                used = blocks_[std::size_t(blocks_[i].header)].height;
            }
        }
        pages.back().push_back(int(i));
        used += blocks_[i].height;
    }
    return pages;
}

void Sheets::paint(QPainter* painter, int page, const QString& footer) const {
    const std::vector<Page> all = pages();
    double top = margin;
    for (const int number : all.at(std::size_t(page))) {
        const Block& block = blocks_[std::size_t(number)];
        painter->save();
        block.paint(painter, QRectF(margin, top, textWidth, block.height));
        painter->restore();
        top += block.height;
    }
    const QRectF foot(margin, pageHeight - margin - footerHeight / 2, textWidth, footerHeight);
    const QString number = QStringLiteral("%1 / %2").arg(page + 1).arg(all.size());
    const double numberWidth = QFontMetricsF(font_).horizontalAdvance(number) + cellPadding;
    painter->setPen(faint);
    painter->setFont(font_);
    painter->drawText(foot, Qt::AlignRight | Qt::AlignVCenter, number);
    painter->drawText(foot, Qt::AlignLeft | Qt::AlignVCenter,
                      QFontMetricsF(font_).elidedText(footer, Qt::ElideMiddle, textWidth - numberWidth));
}

}  // namespace app
