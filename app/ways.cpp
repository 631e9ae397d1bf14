#include "app/ways.h"

#include <QAbstractButton>
#include <QAbstractItemView>

namespace app {

QAbstractButton* Ways::button(Place place) const {
    const char* name = nullptr;
    switch (place) {
        case Place::Project:
            name = "btnProject";
            break;
        case Place::Monitor:
            name = "btnMonitor";
            break;
        case Place::Device:
            name = "btnDeviceControl";
            break;
        case Place::Stations:
            name = "btnBind";
            break;
        case Place::Results:
        case Place::Rail:
            return nullptr;
    }
    return page_ ? page_->findChild<QAbstractButton*>(QLatin1String(name)) : nullptr;
}

QList<QAbstractButton*> Ways::navigation() const {
    QList<QAbstractButton*> buttons;
    for (const char* const name :
         {"btnProject", "btnPort", "btnParamCfg", "btnMonitor", "btnDeviceControl", "btnBind"}) {
        if (auto* const button = page_ ? page_->findChild<QAbstractButton*>(QLatin1String(name)) : nullptr) {
            buttons << button;
        }
    }
    return buttons;
}

bool Ways::lead(Place place, int line) const {
    QAbstractButton* const way = button(place);
    if (!way) {
        return false;
    }
    way->click();
    if (place == Place::Project) {
        selectLine(line);
    }
    return true;
}

void Ways::selectLine(int line) const {
    const auto* editor = page_ ? page_->findChild<QWidget*>(QStringLiteral("ProgramWidget")) : nullptr;
    auto* table = editor ? editor->findChild<QAbstractItemView*>(QStringLiteral("tableWidget")) : nullptr;
    if (!table || line < 0 || line >= table->model()->rowCount()) {
        return;
    }
    const QModelIndex index = table->model()->index(line, 1);
    table->setCurrentIndex(index);
    table->scrollTo(index);
}

}  // namespace app
