#include "executor/circle.h"

#include "executor/queuedarc.h"
#include "program/words.h"

namespace {

prog::Position position(const ModuleObject* point) {
    return lumo::positionOf(point->c(prog::field::trans));
}

void writeTrans(ModuleObject* point, const QVector3D& position) {
    for (int i = 0; i < 3; ++i) {
        point->set(point, QStringLiteral("trans.") + mIndex(i), double(position[i]));
    }
}

}  // namespace

ModuleObject* findLastTargetPosNode(ModuleObject* stmt) {
    for (ModuleObject* before = stmt->prevBmobj(); !before->isNull(); before = before->prevBmobj()) {
        if (before->c(prog::field::type)->getString() == prog::statement::moveCC) {
            continue;
        }
        if (before->hasCmobj(prog::field::point1)) {
            return before->c(prog::field::point1);
        }
        if (before->hasCmobj(prog::field::point)) {
            return before->c(prog::field::point);
        }
    }
    return kordservice()->get(nullptr, prog::key::posture);
}

void calcAux(const ModuleObject* s, const ModuleObject* p1, const ModuleObject* p2, ModuleObject* aux1,
             ModuleObject* aux2, ModuleObject* aux3) {
    const prog::FullCircle circle(position(s), position(p1), position(p2));
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

CircleFault circleFault(const ModuleObject* s, const ModuleObject* p1, const ModuleObject* p2) {
    return prog::circleFault(position(s), position(p1), position(p2));
}
