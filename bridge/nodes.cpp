#include "bridge/nodes.h"

#include "bridge/words.h"
#include "kord/controllermanager.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"

#include <cmath>

namespace bridge {

using mendo::ModuleObject;

namespace {

constexpr double defaultZone = 0.002;  // metres

template <class Values>
void roundEach(Values* values, double perUnit) {
    for (double& value : *values) {
        // Divided by a whole number, not multiplied by a fraction: gives the double nearest to the decimal.
        const double rounded = std::round(value * perUnit) / perUnit;
        value = rounded == 0 ? 0.0 : rounded;
    }
}

template <class Values>
void writeList(QObject* sender, ModuleObject* list, const Values& values) {
    if (size_t(list->cmobjCount()) > values.size()) {
        list->clear(sender, false);
    }
    int position = 0;
    for (const double value : values) {
        if (position < list->cmobjCount()) {
            list->c(position)->setValue(sender, value);
        } else {
            list->set(sender, mIndex(position), value, true);
        }
        ++position;
    }
}

}  // namespace

void fillConstantNodes(QObject* sender, KordService* service, int axes) {
    service->dataNode(word::sysInfo)->set(sender, QStringLiteral("joint_num"), axes, true);
    service->dataNode(QStringLiteral("move"))->set(sender, QStringLiteral("default_zone"), defaultZone, true);
    for (const QLatin1String drag : word::handGuiding) {
        m(drag)->set(sender, QStringLiteral("space"), 0, true);
        m(drag)->set(sender, QStringLiteral("type"), 0, true);
    }
    const QList<ModuleObject*> keys = pendantKeys()->cmobjs();
    for (ModuleObject* key : keys) {
        key->setValue(sender, true);
    }
}

ModuleObject* pendantKeys() {
    return kord::ControllerManager::cmdItemMobj(QStringLiteral("endtool.keypad.state_change"),
                                                QStringLiteral("notify"));
}

bool writeKey(QObject* sender, const QString& name, bool pressed) {
    ModuleObject* keys = pendantKeys();
    if (!keys->hasCmobj(name)) {
        return false;
    }
    keys->c(name)->setValue(sender, !pressed);
    keys->trigger();
    return true;
}

Posture roundedPosture(Posture posture) {
    roundEach(&posture.pose.trans, 1e9);
    roundEach(&posture.pose.rot, 1e11);
    roundEach(&posture.joints, 1e11);
    return posture;
}

void writePosture(QObject* sender, KordService* service, const Posture& posture) {
    ModuleObject* node = service->dataNode(word::posture);
    const Posture rounded = roundedPosture(posture);
    writeList(sender, node->c(QStringLiteral("trans")), rounded.pose.trans);
    writeList(sender, node->c(QStringLiteral("rot")), rounded.pose.rot);
    writeList(sender, node->c(QStringLiteral("near")), rounded.joints);
    node->trigger();
}

QString modeWord(Mode mode) {
    switch (mode) {
        case Mode::Auto:
            return QStringLiteral("auto");
        case Mode::Manual:
            return QStringLiteral("manual");
        case Mode::Unknown:
            break;
    }
    return QStringLiteral("unknown");
}

}  // namespace bridge
