#include "executor/queuedarc.h"

#include "program/words.h"

using namespace prog;

namespace lumo {

namespace {

constexpr QLatin1String path = "path"_l1;
constexpr QLatin1String aux = "aux"_l1;

prog::Position placeIn(const ModuleObject* record, QLatin1String name) {
    return positionOf(record->c(name)->c(field::trans));
}

}  // namespace

prog::Position positionOf(const ModuleObject* trans) {
    return {trans->c(0)->getDouble(0.0), trans->c(1)->getDouble(0.0), trans->c(2)->getDouble(0.0)};
}

double turnBetween(const ModuleObject* a, const ModuleObject* b) {
    const auto orientation = [](const ModuleObject* rot) {
        const Position angles = positionOf(rot);
        return Orientation{angles.x, angles.y, angles.z};
    };
    return angleBetween(orientation(a), orientation(b));
}

std::optional<prog::Arc> QueuedArc::arc() const {
    if (!command->hasCmobj(path)) {
        return Arc::through(start, placeIn(command.get(), aux), placeIn(command.get(), field::point));
    }
    const ModuleObject* const legs = command->c(path);
    return Arc::circle(start, placeIn(legs->c(0), field::point), placeIn(legs->c(1), field::point));
}

double QueuedArc::speedMPerS() const {
    return command->r(QStringLiteral("traj.speed"))->getDouble(0.0);
}

bool QueuedArc::fillRest(ModuleObject* args, const prog::Arc& arc, double angle) const {
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
    ModuleObject* const via = first->c(aux)->c(field::trans);
    for (std::size_t i = 0; i < 3; ++i) {
        via->set(nullptr, mIndex(int(i)), rest->via[i]);
    }
    return true;
}

}  // namespace lumo
