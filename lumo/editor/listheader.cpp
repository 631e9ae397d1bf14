#include "editor/listheader.h"

#include "editor/programtable.h"
#include "editor/rowgrid.h"
#include "look/scale.h"
#include "look/tokens.h"

#include <QPainter>

#include <algorithm>

namespace lumo {

ListHeader::ListHeader(const RowGrid& grid, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), grid_(grid) {
    setSectionsClickable(false);
}

QSize ListHeader::sizeHint() const {
    return {QHeaderView::sizeHint().width(), grid_.headerHeight()};
}

QStringList ListHeader::captions() const {
    QStringList captions;
    for (int column = 0; column < count(); ++column) {
        captions << model()->headerData(column, Qt::Horizontal).toString();
    }
    return captions;
}

void ListHeader::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), QColor(look::frame));
    painter.fillRect(0, height() - 1, width(), 1, QColor(look::line));
    painter.setPen(QColor(look::ink2));
    for (int column = 0; column < count(); ++column) {
        if (!isSectionHidden(column)) {
            paintCaption(&painter, column);
        }
    }
}

void ListHeader::paintCaption(QPainter* painter, int column) const {
    const int gap = grid_.gap();
    const bool isNumber = column == ProgramTable::LineColumn;
    const bool isTight = isNumber || column == ProgramTable::MarkerColumn;
    QRect place(sectionViewportPosition(column), 0, sectionSize(column), height() - 1);
    place.adjust(isTight ? gap / 2 : gap, 0, isNumber ? -gap / 2 : 0, 0);
    painter->setFont(grid_.headerFont());
    const QFontMetrics metrics = painter->fontMetrics();
    // In a tight list the number stands in the marker's column.
    const int told =
        grid_.isTight() && column == ProgramTable::MarkerColumn ? ProgramTable::LineColumn : column;
    const QString caption = model()->headerData(told, Qt::Horizontal).toString();
    const int alignment = Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft);
    int middle = caption.lastIndexOf(QLatin1Char(' '));
    while (middle > 0 && metrics.horizontalAdvance(caption.left(middle)) > place.width()) {
        middle = caption.lastIndexOf(QLatin1Char(' '), middle - 1);
    }
    if (metrics.horizontalAdvance(caption) <= place.width() || middle <= 0) {
        painter->drawText(place, alignment, caption);
    } else {
        const int pitch = std::min(metrics.height(), place.height() / 2);
        const QRect upper(place.left(), place.height() / 2 - pitch, place.width(), pitch);
        painter->drawText(upper, alignment, caption.left(middle));
        painter->drawText(upper.translated(0, pitch), alignment, caption.mid(middle + 1));
    }
    if (column == ProgramTable::DetailColumn && !grid_.isWide()) {
        const QString note = model()->headerData(ProgramTable::NoteColumn, Qt::Horizontal).toString();
        QFont plain = grid_.headerFont();
        plain.setWeight(QFont::Normal);
        painter->setFont(plain);
        painter->drawText(place.adjusted(metrics.horizontalAdvance(caption), 0, 0, 0), alignment,
                          QStringLiteral(" / ") + note);
    }
}

}  // namespace lumo
