#include "bridge/motionreader.h"

#include "bridge/words.h"
#include "kord/kordservice.h"

#include <cmath>
#include <limits>

namespace bridge {

using mendo::ModuleObject;

namespace {

double number(const ModuleObject* node) {
    return node->getDouble(std::numeric_limits<double>::quiet_NaN());
}

bool readTriple(const ModuleObject* node, std::array<double, 3>* values) {
    bool finite = true;
    for (int i = 0; i < 3; ++i) {
        (*values)[size_t(i)] = number(node->c(i));
        finite = finite && std::isfinite((*values)[size_t(i)]);
    }
    return finite;
}

bool readPose(const ModuleObject* node, Pose* pose) {
    return readTriple(node->c(QStringLiteral("trans")), &pose->trans) &&
           readTriple(node->c(QStringLiteral("rot")), &pose->rot);
}

bool readJoints(const ModuleObject* node, int axes, Joints* joints) {
    bool finite = true;
    for (int i = 0; i < node->cmobjCount(); ++i) {
        joints->push_back(number(node->c(i)));
        finite = finite && std::isfinite(joints->back());
    }
    return finite && int(joints->size()) == axes;
}

bool readArc(const ModuleObject* node, std::vector<Motion::Via>* poses) {
    Motion::Via via;
    const bool complete = readPose(node->c(QStringLiteral("aux")), &via.aux) &&
                          readPose(node->c(QStringLiteral("point")), &via.end);
    poses->push_back(via);
    return complete;
}

bool readArcs(const ModuleObject* node, std::vector<Motion::Via>* poses) {
    if (!node->hasCmobj(QStringLiteral("path"))) {
        return readArc(node, poses);
    }
    bool complete = true;
    for (const ModuleObject* element : node->c(QStringLiteral("path"))->cmobjs()) {
        complete = readArc(element, poses) && complete;
    }
    return complete && !poses->empty();
}

bool readTarget(const ModuleObject* node, int axes, Motion* motion) {
    const ModuleObject* point = node->c(QStringLiteral("point"));
    switch (motion->kind) {
        case Motion::Kind::Joint:
            return readJoints(point, axes, &motion->joints);
        case Motion::Kind::Line:
            motion->poses.resize(1);
            return readPose(point, &motion->poses.front().end);
        case Motion::Kind::Arc:
            return readArcs(node, &motion->poses);
    }
    return false;
}

}  // namespace

bool motionKind(const QString& name, Motion::Kind* kind) {
    for (const auto candidate : {Motion::Kind::Joint, Motion::Kind::Line, Motion::Kind::Arc}) {
        if (name == commandName(candidate)) {
            *kind = candidate;
            return true;
        }
    }
    return false;
}

QString commandName(Motion::Kind kind) {
    switch (kind) {
        case Motion::Kind::Joint:
            return word::moveJ;
        case Motion::Kind::Line:
            return word::moveL;
        case Motion::Kind::Arc:
            break;
    }
    return word::moveC;
}

Motion readMotion(const KordCall& call, Motion::Kind kind, int id, int axes) {
    Motion motion;
    motion.id = id;
    motion.kind = kind;
    const ModuleObject* node = call.node ? call.node : ModuleObject::null();
    motion.speed = number(node->r(QStringLiteral("traj.speed")));
    motion.zone = number(node->r(QStringLiteral("traj.zone")));
    if (!(motion.zone > 0)) {
        motion.zone = 0;
    }
    if (!(motion.speed > 0) || !std::isfinite(motion.speed)) {
        motion.refusal = NoSpeed;
    } else if (!readTarget(node, axes, &motion)) {
        motion.refusal = NoTarget;
    }
    return motion;
}

Toolset readToolset(const ModuleObject* node) {
    const ModuleObject* tool = node->c(QStringLiteral("end"));
    const ModuleObject* load = tool->c(QStringLiteral("load"));
    const ModuleObject* object = node->c(QStringLiteral("ref"));
    Toolset toolset;
    toolset.tool = tool->c(QStringLiteral("name"))->getString();
    toolset.workObject = object->c(QStringLiteral("name"))->getString();
    if (!readPose(tool, &toolset.toolTip)) {
        toolset.toolTip = {};
    }
    if (!readPose(object, &toolset.object)) {
        toolset.object = {};
    }
    toolset.massKg = load->c(QStringLiteral("mass"))->getDouble();
    if (!readTriple(load->c(QStringLiteral("cog")), &toolset.centreM)) {
        toolset.centreM = {};
    }
    if (!readTriple(load->c(QStringLiteral("inertia")), &toolset.inertia)) {
        toolset.inertia = {};
    }
    return toolset;
}

}  // namespace bridge
