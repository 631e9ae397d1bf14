#include "simulator/controllernodes.h"
#include "simulator/words.h"

#include "kord/controllermanager.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

namespace sim {

using mendo::ModuleObject;

namespace {

constexpr double defaultZone = 0.002;  // metres

// Units: mm, degrees, kg, kg·mm².
constexpr char tools[] = R"([
    {"name": "laser_head", "frame": {"pos": {"x": 0, "y": 0, "z": 150},
                                     "ori": {"euler": {"a": 0, "b": 0, "c": 0}}},
     "load": {"mass": 2.4, "pose": {"pos": {"x": 0, "y": 0, "z": 60}}, "moment": [9500, 9500, 3200]}},
    {"name": "laser_head_wire", "frame": {"pos": {"x": 12, "y": 0, "z": 158},
                                          "ori": {"euler": {"a": 0, "b": 30, "c": 0}}},
     "load": {"mass": 3.1, "pose": {"pos": {"x": 8, "y": 0, "z": 70}}, "moment": [14000, 13500, 5200]}},
    {"name": "pointer", "frame": {"pos": {"x": 0, "y": 0, "z": 120},
                                  "ori": {"euler": {"a": 0, "b": 0, "c": 0}}},
     "load": {"mass": 0.3, "pose": {"pos": {"x": 0, "y": 0, "z": 40}}, "moment": [400, 400, 60]}}
])";

constexpr char workObjects[] = R"([
    {"name": "table", "frame": {"pos": {"x": 500, "y": 0, "z": 0},
                                "ori": {"euler": {"a": 0, "b": 0, "c": 0}}}},
    {"name": "fixture_left", "frame": {"pos": {"x": 450, "y": 300, "z": 80},
                                       "ori": {"euler": {"a": 0, "b": 0, "c": 90}}}},
    {"name": "fixture_right", "frame": {"pos": {"x": 450, "y": -300, "z": 80},
                                        "ori": {"euler": {"a": 0, "b": 0, "c": -90}}}}
])";

QJsonValue parsed(const char* text) {
    return QJsonDocument::fromJson(QByteArray(text)).array();
}

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

void fillControllerNodes(QObject* sender, KordService* service, int axes) {
    service->dataNode(word::sysInfo)->set(sender, QStringLiteral("joint_num"), axes, true);
    service->dataNode(QStringLiteral("move"))->set(sender, QStringLiteral("default_zone"), defaultZone, true);
    m(word::toolList)->loadJson(sender, parsed(tools));
    m(word::wobjList)->loadJson(sender, parsed(workObjects));
    for (const QLatin1String drag : word::handGuiding) {
        m(drag)->set(sender, QStringLiteral("space"), 0, true);
        m(drag)->set(sender, QStringLiteral("type"), 0, true);
    }
    ModuleObject* keys = pendantKeys();
    for (ModuleObject* key : keys->cmobjs()) {
        key->setValue(sender, true);
    }
}

ModuleObject* pendantKeys() {
    return kord::ControllerManager::cmdItemMobj(QStringLiteral("endtool.keypad.state_change"),
                                                QStringLiteral("notify"));
}

MotionQueue::Posture roundedPosture(MotionQueue::Posture posture) {
    roundEach(&posture.pose.trans, 1e9);
    roundEach(&posture.pose.rot, 1e11);
    roundEach(&posture.joints, 1e11);
    return posture;
}

void writePosture(QObject* sender, KordService* service, const MotionQueue::Posture& posture) {
    ModuleObject* node = service->dataNode(word::posture);
    const MotionQueue::Posture rounded = roundedPosture(posture);
    writeList(sender, node->c(QStringLiteral("trans")), rounded.pose.trans);
    writeList(sender, node->c(QStringLiteral("rot")), rounded.pose.rot);
    writeList(sender, node->c(QStringLiteral("near")), rounded.joints);
    node->trigger();
}

}  // namespace sim
