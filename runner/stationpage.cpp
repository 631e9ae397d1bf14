#include "runner/stationpage.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QTableWidget>
#include <QVariant>
#include <QWidget>

namespace run {

namespace {

constexpr int nameColumn = 1;
constexpr int projectColumn = 2;
constexpr int stateColumn = 7;

void press(QWidget* widget) {
    const QPointF spot = widget->rect().center();
    const QPointF global = widget->mapToGlobal(spot.toPoint());
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, spot, global, Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &event);
    }
}

}  // namespace

bool StationPage::find(QWidget* panel) {
    page_ = panel->findChild<QWidget*>(QStringLiteral("SignalsBindWidget"));
    navigation_ = panel->findChild<QWidget*>(QStringLiteral("btnBind"));
    if (!page_ || !navigation_) {
        return false;
    }
    switch_ = page_->findChild<QWidget*>(QStringLiteral("switchBtn"));
    table_ = page_->findChild<QTableWidget*>(QStringLiteral("tableWidget"));
    if (!switch_ || !table_) {
        return false;
    }
    readStates();
    const QAbstractItemModel* model = table_->model();
    for (const auto rowsChanged : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
        connect(model, rowsChanged, this, &StationPage::readStates);
    }
    connect(model, &QAbstractItemModel::dataChanged, this, &StationPage::readStates);
    return true;
}

void StationPage::show() {
    press(navigation_);
}

void StationPage::edit(int row) {
    show();
    table_->selectRow(row);
    if (auto* button = page_->findChild<QAbstractButton*>(QStringLiteral("btnEdit"))) {
        button->click();
    }
}

void StationPage::setMonitoring(bool on) {
    if (isMonitoring() == on) {
        return;
    }
    if (!page_->isVisible()) {
        show();
    }
    press(switch_);
}

bool StationPage::isMonitoring() const {
    return switch_->property("checked").toBool();
}

int StationPage::queued() const {
    return page_->property("queued").toInt();
}

int StationPage::count() const {
    return table_->rowCount();
}

QString StationPage::name(int row) const {
    return text(row, nameColumn);
}

QString StationPage::project(int row) const {
    return text(row, projectColumn);
}

// Where rows came or went the texts are only taken down, and what a new row shows first is no change.
void StationPage::readStates() {
    const QStringList before = states_;
    states_.clear();
    for (int row = 0; row < table_->rowCount(); ++row) {
        states_.append(text(row, stateColumn));
    }
    if (states_.size() != before.size()) {
        return;
    }
    for (int row = 0; row < before.size(); ++row) {
        if (!before[row].isEmpty() && states_[row] != before[row]) {
            emit stateChanged(row, states_[row]);
        }
    }
}

QString StationPage::text(int row, int column) const {
    const QTableWidgetItem* item = table_->item(row, column);
    return item ? item->text() : QString();
}

}  // namespace run
