#include "editor/drag.h"

#include "module/host.h"
#include "program/words.h"

#include <QWidget>

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
        const ModuleObject* key =
            m(mName(prog::key::keypad, QLatin1String(dragKey.name), QStringLiteral("pressing")));
        QObject::connect(key, &ModuleObject::changed, page,
                         [page, dragKey] { setDrag(page, dragKey.space, dragKey.type); });
    }
}
