#include "stations/stationrows.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QHeaderView>
#include <QPainter>
#include <QTableWidget>

#include <algorithm>

namespace lumo {

namespace {

// Px at factor 1.
constexpr int lineHeight = 20;
constexpr int lampRoom = 20;
constexpr int iconSize = 20;
constexpr int iconRoom = 26;

struct StateLook {
    const char* icon;
    QRgb colour;
};

StateLook lookOf(StationState state) {
    switch (state) {
        case StationState::Running:
            return {"play", look::green};
        case StationState::Triggered:
            return {"listening", look::blue};
        case StationState::Untriggered:
            return {"ring", look::ink3};
        case StationState::Unknown:
            break;
    }
    return {nullptr, look::ink3};
}

bool isActive(StationState state) {
    return state == StationState::Running || state == StationState::Triggered;
}

bool isSmall(int column) {
    return column == InputKindColumn || column == InputColumn || column == EdgeColumn ||
           column == OutputKindColumn || column == OutputColumn;
}

}  // namespace

StationRows::StationRows(QTableWidget* table)
    : FoldedTable(table, {PeriodColumn, OutputKindColumn, InputKindColumn, EdgeColumn, NumberColumn,
                          OutputColumn, ProjectColumn}) {
    QHeaderView* const header = table->horizontalHeader();
    header->setDefaultAlignment(Qt::Alignment(int(Qt::AlignLeft | Qt::AlignVCenter) | int(Qt::TextWordWrap)));
    for (int column = 0; column < table->columnCount(); ++column) {
        const Qt::Alignment side =
            column == PeriodColumn || column == NumberColumn ? Qt::AlignRight : Qt::AlignLeft;
        table->horizontalHeaderItem(column)->setTextAlignment(int(side | Qt::AlignVCenter) |
                                                              int(Qt::TextWordWrap));
    }
}

void StationRows::showLamps(const QVector<Lamps>& lamps) {
    if (lamps_ != lamps) {
        lamps_ = lamps;
        table()->viewport()->update();
    }
}

void StationRows::showWaiting(const QVector<int>& rows) {
    if (waiting_ != rows) {
        waiting_ = rows;
        table()->viewport()->update();
    }
}

// --- Layout ---------------------------------------------------------------------------------------

int StationRows::neededWidth(int column) const {
    const int air = look::px(2 * padding);
    if (column == StateColumn) {
        const QFontMetrics metrics(look::font(look::Size::Text, look::Weight::Strong));
        int width = 0;
        for (const StationState state :
             {StationState::Triggered, StationState::Running, StationState::Untriggered}) {
            width = std::max(width, metrics.horizontalAdvance(stateText(state)));
        }
        return width + look::px(iconRoom) + air;
    }
    if (isSmall(column)) {
        return widestText(column, look::font(look::Size::Caption)) + air +
               (column == InputColumn ? look::px(lampRoom) : 0);
    }
    const auto weight = column == NameColumn ? look::Weight::Strong : look::Weight::Plain;
    constexpr int mostName = 208;
    return std::min(widestText(column, look::font(look::Size::Text, weight)) + air, look::px(mostName));
}

int StationRows::spareWidth(int column) const {
    constexpr int least = 104;
    const bool isName = column == NameColumn || column == ProjectColumn;
    return isName ? std::max(0, neededWidth(column) - look::px(least)) : 0;
}

int StationRows::rowHeight() const {
    return look::px(64);
}

int StationRows::cellHeight() const {
    return look::px(2 * lineHeight + 4);
}

// --- Painting -------------------------------------------------------------------------------------

void StationRows::paintCell(QPainter* painter, const QRect& cell, const QModelIndex& index,
                            bool /*isSelected*/) const {
    const int column = index.column();
    const QRect place = cell.adjusted(look::px(padding), 0, -look::px(padding), 0);
    if (isSmall(column)) {
        paintLines(painter, place, index);
        return;
    }
    if (column == StateColumn) {
        paintState(painter, place, index);
        return;
    }
    const bool isFigure = column == NumberColumn || column == PeriodColumn;
    painter->setFont(
        look::font(look::Size::Text, column == NameColumn ? look::Weight::Strong : look::Weight::Plain));
    painter->setPen(QColor(column == NumberColumn ? look::ink2 : look::ink));
    const QString text = painter->fontMetrics().elidedText(
        index.data().toString(), column == ProjectColumn ? Qt::ElideMiddle : Qt::ElideRight, place.width());
    painter->drawText(place, Qt::AlignVCenter | (isFigure ? Qt::AlignRight : Qt::AlignLeft), text);
}

/// Start above stop; inputs have a lamp each.
void StationRows::paintLines(QPainter* painter, const QRect& place, const QModelIndex& index) const {
    const QStringList lines = index.data().toString().split(QLatin1Char('\n'));
    painter->setFont(look::font(look::Size::Caption));
    painter->setRenderHint(QPainter::Antialiasing);
    const int height = look::px(lineHeight);
    QRect line(place.left(), place.center().y() - height, place.width(), height);
    for (int i = 0; i < lines.size(); ++i) {
        QRect text = line;
        if (index.column() == InputColumn && !lines[i].isEmpty()) {
            const Lamps lamps = lamps_.value(index.row());
            const double radius = look::px(5);
            const QPointF centre(line.left() + radius + 1, line.center().y() + 0.5);
            painter->setPen(QPen(QColor(look::steel), 2));
            painter->setBrush(QColor((i == 0 ? lamps.start : lamps.stop) ? look::steel : look::white));
            painter->drawEllipse(centre, radius, radius);
            text.setLeft(line.left() + look::px(lampRoom));
        }
        painter->setPen(QColor(look::ink));
        painter->drawText(text, Qt::AlignLeft | Qt::AlignVCenter,
                          painter->fontMetrics().elidedText(lines[i], Qt::ElideMiddle, text.width()));
        line.translate(0, height);
    }
}

void StationRows::paintState(QPainter* painter, const QRect& place, const QModelIndex& index) const {
    const QString word = index.data().toString();
    const StationState state = stateOf(word);
    const StateLook shown = lookOf(state);
    const int height = look::px(lineHeight);
    const int turn = waiting_.indexOf(index.row());
    QRect text(place.left() + look::px(iconRoom), place.center().y() - height / 2,
               place.width() - look::px(iconRoom), height);
    if (turn >= 0) {
        text.translate(0, -height / 2);
    }
    if (shown.icon) {
        const int side = look::px(iconSize);
        painter->drawPixmap(place.left(), text.center().y() - side / 2,
                            look::picture(QLatin1String(shown.icon), side, shown.colour));
    }
    painter->setFont(
        look::font(look::Size::Text, isActive(state) ? look::Weight::Strong : look::Weight::Plain));
    painter->setPen(QColor(shown.colour));
    painter->drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, word);
    if (turn >= 0) {
        painter->setFont(look::font(look::Size::Caption));
        painter->setPen(QColor(look::ink2));
        painter->drawText(text.translated(0, height), Qt::AlignLeft | Qt::AlignVCenter, turnText(turn));
    }
}

}  // namespace lumo
