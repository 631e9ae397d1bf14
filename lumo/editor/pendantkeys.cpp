#include "editor/pendantkeys.h"

#include "module/globals.h"
#include "module/host.h"
#include "program/words.h"

#include <QWidget>

using namespace prog;

namespace lumo {

PendantKeys::PendantKeys(QWidget* page) : QObject(page), page_(page) {
    follow("next", &PendantKeys::next);
    follow("last", &PendantKeys::last);
    follow("center", &PendantKeys::center);
    follow("enter", &PendantKeys::enter);
    follow("delete", &PendantKeys::remove);
}

void PendantKeys::follow(const char* name, void (PendantKeys::*clicked)()) {
    const QString path = mName(key::keypad, QLatin1String(name), QStringLiteral("clicked"));
    connect(m(path), &ModuleObject::changed, this, [this, clicked] {
        if (page_->isActiveWindow() && page_->isVisible() && !isnew_pWgt) {
            emit(this->*clicked)();
        }
    });
}

}  // namespace lumo
