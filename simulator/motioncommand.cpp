#include "simulator/motioncommand.h"

#include "kord/kordservice.h"
#include "simulator/words.h"

#include <cmath>
#include <limits>

namespace sim {

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

bool readArc(const ModuleObject* node, std::vector<MotionCommand::Via>* poses) {
    MotionCommand::Via via;
    const bool complete = readPose(node->c(QStringLiteral("aux")), &via.aux) &&
                          readPose(node->c(QStringLiteral("point")), &via.end);
    poses->push_back(via);
    return complete;
}

bool readArcs(const ModuleObject* node, std::vector<MotionCommand::Via>* poses) {
    if (!node->hasCmobj(QStringLiteral("path"))) {
        return readArc(node, poses);
    }
    bool complete = true;
    for (const ModuleObject* element : node->c(QStringLiteral("path"))->cmobjs()) {
        complete = readArc(element, poses) && complete;
    }
    return complete && !poses->empty();
}

bool readTarget(const ModuleObject* node, int axes, MotionCommand* motion) {
    const ModuleObject* point = node->c(QStringLiteral("point"));
    switch (motion->kind) {
        case MotionCommand::Kind::Joint:
            return readJoints(point, axes, &motion->joints);
        case MotionCommand::Kind::Line:
            motion->poses.resize(1);
            return readPose(point, &motion->poses.front().end);
        case MotionCommand::Kind::Arc:
            return readArcs(node, &motion->poses);
    }
    return false;
}

}  // namespace

bool motionKind(const QString& name, MotionCommand::Kind* kind) {
    for (const auto candidate :
         {MotionCommand::Kind::Joint, MotionCommand::Kind::Line, MotionCommand::Kind::Arc}) {
        if (name == commandName(candidate)) {
            *kind = candidate;
            return true;
        }
    }
    return false;
}

QString commandName(MotionCommand::Kind kind) {
    switch (kind) {
        case MotionCommand::Kind::Joint:
            return word::moveJ;
        case MotionCommand::Kind::Line:
            return word::moveL;
        case MotionCommand::Kind::Arc:
            break;
    }
    return word::moveC;
}

MotionCommand readMotion(const KordCall& call, MotionCommand::Kind kind, int id, int axes) {
    MotionCommand motion;
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

}  // namespace sim
