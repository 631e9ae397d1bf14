#include "stations/stationtable.h"

#include "program/words.h"
#include "stations/station.h"
#include "stations/stationrows.h"

#include <QCoreApplication>
#include <QTableWidget>

using namespace prog;

namespace lumo {

namespace {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(SignalsBindWidget)
};

QString twoLines(const QString& start, const QString& stop) {
    return start + QLatin1Char('\n') + stop;
}

}  // namespace

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

StationState stateOf(const QString& word) {
    for (const StationState state :
         {StationState::Triggered, StationState::Running, StationState::Untriggered}) {
        if (word == stateText(state)) {
            return state;
        }
    }
    return StationState::Unknown;
}

QString turnText(int turn) {
    return turn == 0 ? Text::tr("下一个") : Text::tr("第 %1 个").arg(turn + 1);
}

void appendStationRow(QTableWidget* table) {
    insertStationRow(table, table->rowCount());
}

void insertStationRow(QTableWidget* table, int row) {
    table->insertRow(row);
    for (int column = 0; column < table->columnCount(); ++column) {
        table->setItem(row, column, new QTableWidgetItem);
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
    if (auto* const rows = qobject_cast<StationRows*>(table->itemDelegate())) {
        rows->fit();
    }
}

QString stationCell(const QTableWidget* table, int row, StationColumn column) {
    const QTableWidgetItem* const cell = table->item(row, column);
    return cell ? cell->text() : QString();
}

}  // namespace lumo
