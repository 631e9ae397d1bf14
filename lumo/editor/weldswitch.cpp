#include "editor/weldswitch.h"

#include "module/host.h"
#include "widgets/switchbutton.h"

namespace lumo {

void setUpSwitch(SwitchButton* button, QWidget* page, QLatin1String path) {
    button->setBgColorOn(Qt::red);
    button->setBgColorOff(QColor(QStringLiteral("gray")));
    button->setTextOn(QStringLiteral("ON"));
    button->setTextOff(QStringLiteral("OFF"));
    ModuleObject* const node = m(path);
    button->setChecked(node->getBool(false));
    QObject::connect(button, &SwitchButton::statusChanged, page,
                     [page, node](bool checked) { node->setValue(page, checked); });
    QObject::connect(node, &ModuleObject::changed, button, [button](const QVariant& value) {
        if (button->checked() != value.toBool()) {  // no press did it
            button->setChecked(value.toBool());
            button->rest();
        }
    });
}

}  // namespace lumo
