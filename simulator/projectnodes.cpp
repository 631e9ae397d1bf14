#include "simulator/projectnodes.h"

#include "mendo/modulemanager.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace sim {

namespace {

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

}  // namespace

void fillProjectNodes(QObject* sender) {
    m(QStringLiteral("rova.project.tool._list"))->loadJson(sender, parsed(tools));
    m(QStringLiteral("rova.project.wobj._list"))->loadJson(sender, parsed(workObjects));
}

}  // namespace sim
