#include "executor/queuedarc.h"

#include "program/words.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace prog;

namespace lumo {

namespace {

using Matrix = std::array<std::array<double, 3>, 3>;

Matrix rotation(const ModuleObject* rot) {
    const double cx = std::cos(rot->c(0)->getDouble(0.0)), sx = std::sin(rot->c(0)->getDouble(0.0));
    const double cy = std::cos(rot->c(1)->getDouble(0.0)), sy = std::sin(rot->c(1)->getDouble(0.0));
    const double cz = std::cos(rot->c(2)->getDouble(0.0)), sz = std::sin(rot->c(2)->getDouble(0.0));
    return {{{cz * cy, cz * sy * sx - sz * cx, cz * sy * cx + sz * sx},
             {sz * cy, sz * sy * sx + cz * cx, sz * sy * cx - cz * sx},
             {-sy, cy * sx, cy * cx}}};
}

constexpr QLatin1String path = "path"_l1;
constexpr QLatin1String aux = "aux"_l1;

prog::Position placeIn(const ModuleObject* record, QLatin1String name) {
    return positionOf(record->c(name)->c(field::trans));
}

prog::Arc::Leg legIn(const ModuleObject* record) {
    return {placeIn(record, aux), placeIn(record, field::point)};
}

}  // namespace

prog::Position positionOf(const ModuleObject* trans) {
    return {trans->c(0)->getDouble(0.0), trans->c(1)->getDouble(0.0), trans->c(2)->getDouble(0.0)};
}

/// The trace of the one rotation against the other is 1 + 2·cos of the angle between them.
double turnBetween(const ModuleObject* a, const ModuleObject* b) {
    const Matrix first = rotation(a);
    const Matrix second = rotation(b);
    double trace = 0.0;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            trace += first[row][column] * second[row][column];
        }
    }
    return std::acos(std::clamp((trace - 1.0) / 2.0, -1.0, 1.0));
}

std::optional<prog::Arc> QueuedArc::arc() const {
    std::vector<prog::Arc::Leg> legs;
    if (command->hasCmobj(path)) {
        for (const ModuleObject* element : command->c(path)->cmobjs()) {
            legs.push_back(legIn(element));
        }
    } else {
        legs.push_back(legIn(command.get()));
    }
    return prog::Arc::through(start, legs);
}

double QueuedArc::speedMPerS() const {
    return command->r(QStringLiteral("traj.speed"))->getDouble(0.0);
}

bool QueuedArc::fillRest(ModuleObject* args, const prog::Arc& arc, double angle) const {
    constexpr double doneM = 0.00005;
    const int leg = arc.legAt(angle + doneM / arc.radiusM());
    if (leg == arc.legCount()) {
        return false;
    }
    args->copyFrom(nullptr, command.get());
    ModuleObject* first = args;
    if (args->hasCmobj(path)) {
        for (int done = 0; done < leg; ++done) {
            args->c(path)->remove(nullptr, mIndex(0));
        }
        first = args->c(path)->c(0);
    }
    const prog::Position half = arc.at((angle + arc.legEnd(leg)) / 2);
    ModuleObject* const via = first->c(aux)->c(field::trans);
    via->set(nullptr, mIndex(0), half[0])->set(nullptr, mIndex(1), half[1])->set(nullptr, mIndex(2), half[2]);
    return true;
}

}  // namespace lumo
