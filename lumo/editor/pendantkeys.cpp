#include "editor/pendantkeys.h"

#include "module/globals.h"
#include "module/host.h"
#include "program/words.h"

#include <QWidget>

using namespace prog;

namespace {

struct DragKey {
    const char* name;
    DragSpace space;
    DragType type;
};

constexpr DragKey dragKeys[] = {
    {"next", DragSpace::Space0, DragType::Type2},
    {"last", DragSpace::Space1, DragType::Type2},
    {"enter", DragSpace::Space1, DragType::Type1},
    {"center", DragSpace::Space1, DragType::Type0},
};

}  // namespace

void setDrag(QWidget* sender, DragSpace space, DragType type) {
    const bool hasHandle = !m(QStringLiteral("rova.handle"))->isNull();
    const QString drag =
        hasHandle ? QStringLiteral("rova.handle.drag") : QStringLiteral("rova.sidemove.drag");
    m(mName(drag, QStringLiteral("space")))->setValue(sender, static_cast<int>(space));
    m(mName(drag, QStringLiteral("type")))->setValue(sender, static_cast<int>(type));
}

void setDrag(QWidget* sender, DragSpace_E space, DragType_E type) {
    setDrag(sender, static_cast<DragSpace>(space), static_cast<DragType>(type));
}

void followDragKeys(QWidget* page) {
    for (const DragKey& dragKey : dragKeys) {
        const ModuleObject* pressing =
            m(mName(key::keypad, QLatin1String(dragKey.name), QStringLiteral("pressing")));
        QObject::connect(pressing, &ModuleObject::changed, page,
                         [page, dragKey] { setDrag(page, dragKey.space, dragKey.type); });
    }
}

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
