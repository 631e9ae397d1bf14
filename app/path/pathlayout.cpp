#include "app/path/pathlayout.h"

#include "mendo/convert.h"

#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

using Shape = PathMove::Shape;

constexpr double mmPerM = 1000;
constexpr double leastZone = 1e-6;                        // metres; a smaller one is none
constexpr double arcStep = 2 * 3.14159265358979 / 180;    // radians
constexpr double jointStep = 2 * 3.14159265358979 / 180;  // radians

double number(const QJsonValue& value) {
    return mendo::toDouble(value.toVariant(), 0);
}

struct Target {
    Position place;
    sim::Joints joints;
    bool there = false;
};

Target readTarget(const QJsonValue& value) {
    const QJsonObject point = value.toObject();
    const QJsonArray trans = point.value(QLatin1String("trans")).toArray();
    Target target;
    target.there = trans.size() >= 3;
    target.place = {number(trans.at(0)), number(trans.at(1)), number(trans.at(2))};
    const QJsonArray joints = point.value(QLatin1String("near")).toArray();
    for (const QJsonValue& joint : joints) {
        target.joints.push_back(number(joint));
    }
    return target;
}

Position toolAt(const sim::Arm& arm, const sim::Joints& joints) {
    const auto trans = arm.forward(joints).trans;
    return {trans[0], trans[1], trans[2]};
}

/// Lays one move after the other, from where the last one ended.
class Layout {
public:
    Layout(const sim::Arm& arm, const PathStart& start)
        : arm_(arm), place_(start.place), joints_(start.joints) {}

    void addStatement(int line, const QJsonObject& statement);
    std::vector<PathMove> take();

private:
    bool fits(const sim::Joints& joints) const { return int(joints.size()) == arm_.axes(); }
    bool addMove(const QString& type, const QJsonObject& statement, PathMove* move);
    void lead(PathMove* move, const Target& target);
    void leadJoints(PathMove* move, const Target& target);
    void bend(PathMove* move, const QJsonObject& statement);
    void roundCorners();

    const sim::Arm& arm_;
    Position place_;
    sim::Joints joints_;  ///< at place_; empty when unknown
    bool first_ = true;
    bool weld_ = false;
    std::vector<PathMove> moves_;
    std::vector<double> zones_;  ///< of moves_
    size_t batch_ = 0;           ///< where the batch under way begins
};

void Layout::addStatement(int line, const QJsonObject& statement) {
    const QString type = statement.value(QLatin1String("type")).toString();
    const bool executed = mendo::toBool(statement.value(QLatin1String("execute")).toVariant(), true);
    PathMove move;
    move.line = line;
    move.weld = weld_;
    if (executed && addMove(type, statement, &move)) {
        moves_.push_back(move);
        zones_.push_back(std::max(0.0, number(statement.value(QLatin1String("zone"))) / mmPerM));
        first_ = false;
        return;
    }
    roundCorners();
    if (executed && (type == QLatin1String("open") || type == QLatin1String("close"))) {
        weld_ = type == QLatin1String("open");
    }
}

/// False for a statement that is no move.
bool Layout::addMove(const QString& type, const QJsonObject& statement, PathMove* move) {
    if (type == QLatin1String("moveL")) {
        lead(move, readTarget(statement.value(QLatin1String("point"))));
    } else if (type == QLatin1String("moveJ")) {
        leadJoints(move, readTarget(statement.value(QLatin1String("point"))));
    } else if (type == QLatin1String("moveC") || type == QLatin1String("moveCC")) {
        bend(move, statement);
    } else {
        return false;
    }
    return true;
}

/// Straight to the target.
void Layout::lead(PathMove* move, const Target& target) {
    move->impossible = !target.there;
    move->target = target.there ? target.place : place_;
    move->way = first_ ? Polyline{move->target} : Polyline{place_, move->target};
    place_ = move->target;
    if (target.there) {
        joints_ = target.joints;
    }
}

void Layout::leadJoints(PathMove* move, const Target& target) {
    move->shape = Shape::Joint;
    if (!fits(target.joints)) {
        lead(move, target);
        move->impossible = true;
        return;
    }
    move->target = toolAt(arm_, target.joints);
    if (first_ || !fits(joints_)) {
        move->way = first_ ? Polyline{move->target} : Polyline{place_, move->target};
    } else {
        double widest = 0;
        for (size_t i = 0; i < joints_.size(); ++i) {
            widest = std::max(widest, std::abs(target.joints[i] - joints_[i]));
        }
        const int steps = std::max(1, int(std::ceil(widest / jointStep)));
        for (int k = 0; k <= steps; ++k) {
            sim::Joints joints = joints_;
            for (size_t i = 0; i < joints.size(); ++i) {
                joints[i] += (target.joints[i] - joints[i]) * k / steps;
            }
            move->way.push_back(toolAt(arm_, joints));
        }
    }
    place_ = move->target;
    joints_ = target.joints;
}

/// An arc or a whole circle, which ends where it began.
void Layout::bend(PathMove* move, const QJsonObject& statement) {
    const bool whole = statement.value(QLatin1String("type")) == QLatin1String("moveCC");
    const Target p1 = readTarget(statement.value(QLatin1String("point")));
    const Target p2 = readTarget(statement.value(QLatin1String("point1")));
    move->shape = whole ? Shape::Circle : Shape::Arc;
    move->target = whole ? place_ : p2.place;
    const bool drawable = whole ? circleFault(place_, p1.place, p2.place) == prog::CircleFault::None : true;
    const auto arc = whole ? prog::Arc::circle(place_, p1.place, p2.place)
                           : prog::Arc::through(place_, p1.place, p2.place);
    move->impossible = !arc || !drawable || !p1.there || !p2.there;
    move->way = move->impossible ? Polyline{place_, p1.place, p2.place} : arc->points(arcStep);
    place_ = move->target;
    if (!whole) {
        joints_ = p2.joints;
    }
}

/// Rounds the corners within the batch under way, and ends it.
void Layout::roundCorners() {
    std::vector<Polyline> whole;
    std::vector<double> lengths;
    for (size_t i = batch_; i < moves_.size(); ++i) {
        whole.push_back(moves_[i].way);
        lengths.push_back(lengthOf(moves_[i].way));
    }
    double behind = 0;  // what the corner before has taken of the way
    for (size_t i = 0; i < whole.size(); ++i) {
        const bool last = i + 1 == whole.size();
        double radius = last ? 0 : std::min({zones_[batch_ + i], lengths[i] / 2, lengths[i + 1] / 2});
        if (radius < leastZone) {
            radius = 0;
        }
        PathMove& move = moves_[batch_ + i];
        if (behind > 0 || radius > 0) {
            move.way = cut(whole[i], behind, lengths[i] - radius);
        }
        if (radius > 0) {
            move.corner = roundedCorner(whole[i], whole[i + 1], radius);
        }
        behind = radius;
    }
    batch_ = moves_.size();
}

std::vector<PathMove> Layout::take() {
    roundCorners();
    return std::move(moves_);
}

}  // namespace

std::vector<PathMove> layOutPath(const QJsonArray& statements, const sim::Arm& arm, const PathStart& start) {
    Layout layout(arm, start);
    int line = 0;
    for (const QJsonValue& statement : statements) {
        layout.addStatement(line++, statement.toObject());
    }
    return layout.take();
}

}  // namespace app
