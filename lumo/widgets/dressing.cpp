#include "widgets/dressing.h"

#include <QLabel>
#include <QTableWidget>

#include <algorithm>

namespace lumo {

void setStyleSheetOnChange(QWidget* widget, const QString& sheet) {
    if (widget->styleSheet() != sheet) {
        widget->setStyleSheet(sheet);
    }
}

int RowGroups::groupOf(int row) const {
    return static_cast<int>(std::upper_bound(starts.begin(), starts.end(), row) - starts.begin()) - 1;
}

QLabel* cellLabel(const QString& text) {
    constexpr int marginPx = 6;
    auto* label = new QLabel(text);
    label->setAlignment(Qt::AlignCenter);
    label->setMargin(marginPx);
    return label;
}

void dressGroups(QTableWidget* table, const RowGroups& groups, int groupColumn) {
    const int rows = table->rowCount();
    for (int row = 0; row < rows; ++row) {
        if (!groups.isHead(row)) {
            // The labels of a merged cell lie on top of each other: an opaque one hides those below.
            QWidget* const cell = table->cellWidget(row, groupColumn);
            cell->setStyleSheet(QStringLiteral("background-color: #FFFFFF"));
            cell->setAttribute(Qt::WA_TransparentForMouseEvents);
            continue;
        }
        for (int column = 0; column < table->columnCount(); ++column) {
            table->cellWidget(row, column)->setStyleSheet(QStringLiteral("background-color: #CCCCCC"));
        }
        int below = 0;
        while (row + below + 1 < rows && !groups.isHead(row + below + 1)) {
            ++below;
        }
        if (below > 1) {
            table->setSpan(row + 1, groupColumn, below, 1);
        }
    }
}

}  // namespace lumo
