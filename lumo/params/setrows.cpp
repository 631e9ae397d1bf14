#include "params/setrows.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"
#include "params/setuse.h"
#include "program/words.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QTableWidget>

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

/// Texts of the page of the parameter sets.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(ParamConfigWidget)
};

constexpr int leastNameWidth = 176;  ///< px at factor 1
constexpr int noteWidth = 296;
constexpr int mostLinesWidth = 104;
constexpr int fieldInset = 4;

/// The value in each column of figures.
QLatin1String fieldOf(int column) {
    switch (column) {
        case SetPower:
            return field::power;
        case SetFrequency:
            return "frequency"_l1;
        case SetDuty:
            return field::ratio;
        case SetRampUp:
            return "increase_time"_l1;
        case SetRampDown:
            return "decrease_time"_l1;
        case SetGasBefore:
            return "delay_before_blow"_l1;
        case SetGasAfter:
            return "delay_after_blow"_l1;
        case SetWire:
            return field::speed;
        default:
            return {};
    }
}

bool isFigure(int column) {
    return column >= SetPower && column <= SetWire;
}

/// The first numbers of a list "3, 7, 12", and how many more there are.
QString shortened(const QString& numbers, const QFontMetrics& metrics, int room) {
    QStringList shown = numbers.split(QStringLiteral(", "));
    const int all = shown.size();
    QString text = numbers;
    while (shown.size() > 1 && metrics.horizontalAdvance(text) > room) {
        shown.removeLast();
        text = shown.join(QStringLiteral(", ")) + QStringLiteral(" +%1").arg(all - shown.size());
    }
    return text;
}

}  // namespace

SetRows::SetRows(QTableWidget* table)
    : FoldedTable(table, {SetNote, SetFrequency, SetDuty, SetGasAfter, SetGasBefore, SetRampDown, SetRampUp,
                          SetWire, SetNumber}) {
    const QString headings[] = {Text::tr("功率\n%"),    Text::tr("频率\n%"),  Text::tr("占空比\n%"),
                                Text::tr("缓升\nms"),   Text::tr("缓降\nms"), Text::tr("前吹气\nms"),
                                Text::tr("后吹气\nms"), Text::tr("送丝\n%"),  Text::tr("使用\n行"),
                                Text::tr("备注")};
    table->setColumnCount(SetColumnCount);
    for (int column = SetPower; column < SetColumnCount; ++column) {
        table->setHorizontalHeaderItem(column, new QTableWidgetItem(headings[column - SetPower]));
    }
    for (int column = 0; column < SetColumnCount; ++column) {
        const bool isRight = isFigure(column) || column == SetLines;
        const Qt::Alignment side = isRight ? Qt::AlignRight : Qt::AlignLeft;
        table->horizontalHeaderItem(column)->setTextAlignment(side | Qt::AlignVCenter);
    }
    table->horizontalHeaderItem(SetNumber)->setTextAlignment(int(Qt::AlignCenter) | int(Qt::TextWordWrap));
    table->setTabKeyNavigation(false);
    // A tap on the name of the selected row edits it; a double click does so in any row.
    table->setEditTriggers(table->editTriggers() | QAbstractItemView::SelectedClicked);
}

void SetRows::append() {
    const int row = table()->rowCount();
    table()->insertRow(row);
    table()->setCellWidget(row, SetNumber, new QLabel(QString::number(row + 1)));
    for (int column = SetName; column < SetColumnCount; ++column) {
        auto* const item = new QTableWidgetItem;
        if (column != SetName && column != SetNote) {
            item->setFlags(item->flags() & ~Qt::ItemIsEditable);
        }
        table()->setItem(row, column, item);
    }
}

void SetRows::show(int row, const ModuleObject* set, const QList<int>& lines) {
    const auto show = [this, row](int column, const QString& text) {
        QTableWidgetItem* const item = table()->item(row, column);
        if (item->text() != text) {
            item->setText(text);
        }
    };
    show(SetName, set->c(field::name)->getString());
    for (int column = SetPower; column <= SetWire; ++column) {
        show(column, set->c(fieldOf(column))->getString(QStringLiteral("0")));
    }
    show(SetLines, lineNumbers(lines));
    show(SetNote, set->c(field::note)->getString());
}

// --- Layout ---------------------------------------------------------------------------------------

int SetRows::neededWidth(int column) const {
    const int air = look::px(2 * padding);
    switch (column) {
        case SetName:
            return std::min(
                std::max(widestText(column, look::font(look::Size::Text)) + air, look::px(leastNameWidth)),
                look::px(noteWidth));
        case SetNote:
            return look::px(noteWidth);
        case SetLines:
            return std::min(widestText(column, look::font(look::Size::Caption)) + air,
                            look::px(mostLinesWidth));
        default:
            return widestText(column, look::font(look::Size::Text)) + air;
    }
}

int SetRows::spareWidth(int column) const {
    return column == SetName ? std::max(0, neededWidth(column) - look::px(leastNameWidth)) : 0;
}

int SetRows::weight(int column) const {
    constexpr int textWeight = 3;
    return column == SetName || column == SetNote ? textWeight : 1;
}

int SetRows::rowHeight() const {
    return look::px(48);
}

int SetRows::cellHeight() const {
    return look::px(24);
}

// --- Painting -------------------------------------------------------------------------------------

void SetRows::paintCell(QPainter* painter, const QRect& cell, const QModelIndex& index,
                        bool isSelected) const {
    const int column = index.column();
    if (column == SetNumber) {
        return;  // a label of its own
    }
    const bool isText = column == SetName || column == SetNote;
    const bool isSmall = column == SetLines || column == SetNote;
    const QRect content = cell.adjusted(look::px(padding), 0, -look::px(padding), 0);
    if (column == SetName && isSelected) {
        const QRect frame = cell.adjusted(2, 0, -fieldInset, 0);
        const QRect field(frame.left(), frame.center().y() - look::px(12), frame.width(), look::px(24));
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QColor(look::edge));
        painter->setBrush(QColor(look::white));
        painter->drawRoundedRect(QRectF(field).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    }
    painter->setFont(look::font(isSmall ? look::Size::Caption : look::Size::Text));
    painter->setPen(QColor(isSmall ? look::ink2 : look::ink));
    QString text = index.data().toString();
    if (column == SetLines) {
        text = shortened(text, painter->fontMetrics(), content.width());
    } else if (isText) {
        text = painter->fontMetrics().elidedText(text, Qt::ElideRight, content.width());
    }
    painter->drawText(content, Qt::AlignVCenter | (isText ? Qt::AlignLeft : Qt::AlignRight), text);
}

}  // namespace lumo
