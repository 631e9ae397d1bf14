#include "widgets/way.h"

#include <QMetaMethod>

namespace lumo {

Guide* Guide::instance() {
    static Guide guide;
    return &guide;
}

bool Guide::canLead() const {
    return isSignalConnected(QMetaMethod::fromSignal(&Guide::asked));
}

QString Guide::caption(const Way& way) {
    switch (way.to) {
        case Way::To::Line:
            return tr("显示该行");
        case Way::To::Ports:
            return tr("端口配置");
        case Way::To::Devices:
            return tr("设备控制");
        case Way::To::Nowhere:
            break;
    }
    return QString();
}

}  // namespace lumo
