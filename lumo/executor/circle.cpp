#include "executor/circle.h"

#include "program/fullcircle.h"
#include "program/words.h"

#include <cmath>

using namespace prog;

namespace {

constexpr QLatin1String path = "path"_l1;
constexpr QLatin1String auxiliary = "aux"_l1;

Position pointIn(const ModuleObject* record, QLatin1String name) {
    return lumo::positionOf(record->c(name));
}

void writeTrans(ModuleObject* point, const QVector3D& position) {
    for (int i = 0; i < 3; ++i) {
        point->set(point, QStringLiteral("trans.") + mIndex(i), double(position[i]));
    }
}

}  // namespace

ModuleObject* findLastTargetPosNode(ModuleObject* stmt) {
    const int line = stmt->indexInPmobj();
    const auto target = line < 0 ? std::nullopt : RunProgram(stmt->pmobj()).targetBefore(line);
    return target ? lumo::targetNode(stmt->pmobj()->c(target->line), target->isPoint1)
                  : kordservice()->get(nullptr, key::posture);
}

void calcAux(const ModuleObject* s, const ModuleObject* p1, const ModuleObject* p2, ModuleObject* aux1,
             ModuleObject* aux2, ModuleObject* aux3) {
    const FullCircle circle(lumo::positionOf(s), lumo::positionOf(p1), lumo::positionOf(p2));
    const auto& point = circle.points;
    const auto& radius = circle.radii;
    const auto& angle = circle.angles;
    const auto& aux = circle.midpoints;
    if (!circle.anglesFit) {
        const auto degrees = [](double radians) { return radians * 180 / 3.14; };
        lumo::logE() << "calc wrong theta:" << degrees(angle[0]) << degrees(angle[1]) << degrees(angle[2]);
    }
    const float mean = (radius[0].length() + radius[1].length() + radius[2].length()) / 3;
    lumo::logI() << "point1:" << point[0] << ", point2:" << point[1] << ", point3:" << point[2];
    lumo::logI() << "center:" << circle.centre << "r:" << mean;
    lumo::logI() << "vc1:" << radius[0] << ", vc2:" << radius[1] << ", vc3:" << radius[2];
    lumo::logW() << "aux1:" << aux[0] << "aux2:" << aux[1] << "aux3:" << aux[2];
    writeTrans(aux1, aux[0]);
    writeTrans(aux2, aux[1]);
    writeTrans(aux3, aux[2]);
}

bool isNearTrans(const ModuleObject* a, const ModuleObject* b, double distanceM) {
    double squares = 0.0;
    for (int i = 0; i < 3; ++i) {
        const double difference = a->c(i)->getDouble(0.0) - b->c(i)->getDouble(0.0);
        squares += difference * difference;
    }
    return std::sqrt(squares) < distanceM;
}

namespace lumo {

ModuleObject* targetNode(const ModuleObject* move, bool isPoint1) {
    return move->c(isPoint1 ? field::point1 : field::point);
}

Position positionOf(const ModuleObject* point) {
    return TaughtPoint::from(point).trans;
}

Pose poseOf(const ModuleObject* point) {
    const TaughtPoint taught = TaughtPoint::from(point);
    return {taught.trans, taught.rot};
}

Pose toolPose() {
    return poseOf(kordservice()->get(nullptr, key::posture));
}

std::optional<Arc> QueuedArc::arc() const {
    if (!command->hasCmobj(path)) {
        return Arc::through(start.trans, pointIn(command.get(), auxiliary),
                            pointIn(command.get(), field::point));
    }
    const ModuleObject* const legs = command->c(path);
    return Arc::circle(start.trans, pointIn(legs->c(0), field::point), pointIn(legs->c(1), field::point));
}

double QueuedArc::speedMPerS() const {
    return command->r(QStringLiteral("traj.speed"))->getDouble(0.0);
}

bool QueuedArc::fillRest(ModuleObject* args, const Arc& arc, double angle) const {
    const std::optional<Arc::Rest> rest = arc.restFrom(angle);
    if (!rest) {
        return false;
    }
    args->copyFrom(nullptr, command.get());
    ModuleObject* first = args;
    if (args->hasCmobj(path)) {
        for (int done = 0; done < rest->leg; ++done) {
            args->c(path)->remove(nullptr, mIndex(0));
        }
        first = args->c(path)->c(0);
    }
    ModuleObject* const via = first->c(auxiliary)->c(field::trans);
    for (std::size_t i = 0; i < 3; ++i) {
        via->set(nullptr, mIndex(int(i)), rest->via[i]);
    }
    return true;
}

}  // namespace lumo
