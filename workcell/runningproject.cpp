#include "workcell/runningproject.h"

#include <QFileInfo>
#include <QTableWidget>
#include <QVariant>

namespace workcell {

RunningProject::RunningProject(const QWidget* page)
    : stations_(page->findChild<QWidget*>(QStringLiteral("SignalsBindWidget"))),
      open_(page->findChild<QWidget*>(QStringLiteral("lblProject"))) {}

int RunningProject::station() const {
    return stations_ ? stations_->property("running").toInt() : -1;
}

QString RunningProject::name() const {
    constexpr int projectColumn = 2;
    const int row = station();
    if (row < 0) {
        return open_ ? open_->property("text").toString() : QString();
    }
    const auto* table = stations_->findChild<QTableWidget*>(QStringLiteral("tableWidget"));
    const QTableWidgetItem* item = table ? table->item(row, projectColumn) : nullptr;
    return item ? QFileInfo(item->text()).fileName() : QString();
}

}  // namespace workcell
