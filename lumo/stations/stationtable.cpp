#include "stations/stationtable.h"

#include "program/words.h"
#include "stations/station.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QTableWidget>

using namespace prog;

namespace lumo {

namespace {

constexpr int edgeWidth = 100;

struct Text {
    Q_DECLARE_TR_FUNCTIONS(SignalsBindWidget)
};

QString stateText(StationState state) {
    switch (state) {
        case StationState::Triggered:
            return Text::tr("已触发");
        case StationState::Running:
            return Text::tr("正在运行");
        case StationState::Untriggered:
            return Text::tr("未触发");
        case StationState::Unknown:
            break;
    }
    return QStringLiteral("---");
}

int widestOf(const QStringList& texts, const QFontMetrics& font) {
    int width = 0;
    for (const QString& text : texts) {
        width = qMax(width, font.horizontalAdvance(text));
    }
    return width;
}

int neededWidth(const QTableWidget* table, int column) {
    constexpr int air = 12;
    constexpr int headerAir = 20;
    const QStringList words = table->horizontalHeaderItem(column)->text().split(QLatin1Char(' '));
    int width = widestOf(words, table->horizontalHeader()->fontMetrics()) + headerAir;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QStringList lines = table->item(row, column)->text().split(QLatin1Char('\n'));
        width = qMax(width, widestOf(lines, table->fontMetrics()) + air);
    }
    if (column == StateColumn) {
        const QStringList states{stateText(StationState::Triggered), stateText(StationState::Running),
                                 stateText(StationState::Untriggered)};
        width = qMax(width, widestOf(states, table->fontMetrics()) + air);
    }
    return width;
}

QString twoLines(const QString& start, const QString& stop) {
    return start + QLatin1Char('\n') + stop;
}

}  // namespace

void appendStationRow(QTableWidget* table) {
    insertStationRow(table, table->rowCount());
}

void insertStationRow(QTableWidget* table, int row) {
    table->insertRow(row);
    for (int column = 0; column < table->columnCount(); ++column) {
        auto* cell = new QTableWidgetItem;
        cell->setTextAlignment(Qt::AlignCenter);
        table->setItem(row, column, cell);
    }
    table->item(row, NumberColumn)->setText(QString::number(row + 1));
}

void renumberStations(QTableWidget* table) {
    for (int row = 0; row < table->rowCount(); ++row) {
        table->item(row, NumberColumn)->setText(QString::number(row + 1));
    }
}

void showStation(QTableWidget* table, int row, const ModuleObject* station) {
    const Signal startInput = readSignal(station, StationSignal::StartInput);
    const Signal stopInput = readSignal(station, StationSignal::StopInput);
    const Signal startOutput = readSignal(station, StationSignal::StartOutput);
    const Signal stopOutput = readSignal(station, StationSignal::StopOutput);
    const auto show = [table, row](StationColumn column, const QString& text) {
        table->item(row, column)->setText(text);
    };
    show(NameColumn, station->c(field::stationName)->getString());
    show(ProjectColumn, station->c(field::filePath)->getString());
    show(InputKindColumn, twoLines(kindText(StationSignal::StartInput, startInput),
                                   kindText(StationSignal::StopInput, stopInput)));
    show(InputColumn, twoLines(signalText(startInput), signalText(stopInput)));
    show(EdgeColumn,
         twoLines(edgeText(station, StationSignal::StartInput), edgeText(station, StationSignal::StopInput)));
    show(PeriodColumn, station->c(field::time)->getString());
    show(StateColumn, stateText(StationState::Unknown));
    show(OutputKindColumn, twoLines(kindText(StationSignal::StartOutput, startOutput),
                                    kindText(StationSignal::StopOutput, stopOutput)));
    show(OutputColumn, twoLines(signalText(startOutput), signalText(stopOutput)));
}

void showState(QTableWidget* table, int row, StationState state) {
    if (QTableWidgetItem* const cell = table->item(row, StateColumn)) {
        cell->setText(stateText(state));
    }
}

void fitStations(QTableWidget* table) {
    for (int column = 0; column < table->columnCount(); ++column) {
        table->setColumnWidth(column, column == EdgeColumn ? edgeWidth : neededWidth(table, column));
    }
    table->resizeRowsToContents();
}

QString stationCell(const QTableWidget* table, int row, StationColumn column) {
    const QTableWidgetItem* const cell = table->item(row, column);
    return cell ? cell->text() : QString();
}

}  // namespace lumo
