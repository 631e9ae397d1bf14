#include "app/path/pathlayout.h"

#include <algorithm>
#include <cmath>

namespace app {

namespace {

using prog::Statement;
using prog::StatementType;
using prog::TaughtPoint;
using Shape = PathMove::Shape;

constexpr double leastZoneM = 1e-6;                     // smaller zones count as 0
constexpr double stepRad = 2 * 3.14159265358979 / 180;  // between two points that are drawn

Position toolAt(const sim::Arm& arm, const sim::Joints& joints) {
    const auto trans = arm.forward(joints).trans;
    return {trans[0], trans[1], trans[2]};
}

/// Lays one move after the other, from where the last one ended.
class Layout {
public:
    Layout(const prog::RunProgram& program, const sim::Arm& arm, const sim::MotionPlan::Posture& start)
        : program_(program),
          arm_(arm),
          position_{start.pose.trans[0], start.pose.trans[1], start.pose.trans[2]},
          joints_(start.joints) {}

    /// The moves from `line` up to `end`, without a halt between them.
    void addBatch(int line, int end);
    std::vector<PathMove> take() { return std::move(moves_); }

private:
    bool fits(const sim::Joints& joints) const { return int(joints.size()) == arm_.axes(); }
    void addMove(int line);
    void addLine(PathMove* move, const TaughtPoint& target);
    void addJointMove(PathMove* move, const TaughtPoint& target);
    Polyline jointPath(const sim::Joints& to) const;
    void addArc(PathMove* move, const Statement& statement);
    void addCircle(PathMove* move, const Statement& statement);
    void bend(PathMove* move, const std::optional<prog::Arc>& arc, const Polyline& straight);
    void roundCorners(size_t first);

    const prog::RunProgram& program_;
    const sim::Arm& arm_;
    Position position_;
    sim::Joints joints_;  ///< at position_; empty when unknown
    std::vector<PathMove> moves_;
    int seam_ = -1, open_ = -1;  ///< the last weld, and the line of its start
};

void Layout::addBatch(int line, int end) {
    const size_t first = moves_.size();
    for (; line < end; ++line) {
        addMove(line);
    }
    roundCorners(first);
}

void Layout::addMove(int line) {
    const Statement statement = program_.statement(line);
    PathMove move;
    move.line = line;
    const int open = program_.weldOf(line);
    move.weld = open >= 0;
    if (move.weld) {
        seam_ += open != open_ ? 1 : 0;
        open_ = open;
        move.seam = seam_;
    }
    switch (statement.type) {
        case StatementType::MoveL:
            addLine(&move, statement.point);
            break;
        case StatementType::MoveJ:
            addJointMove(&move, statement.point);
            break;
        case StatementType::MoveC:
            addArc(&move, statement);
            break;
        case StatementType::MoveCC:
            addCircle(&move, statement);
            break;
        default:
            return;  // an unknown kind of move: a run queues nothing for it
    }
    moves_.push_back(move);
}

void Layout::addLine(PathMove* move, const TaughtPoint& target) {
    move->target = target.taught ? target.trans : position_;
    move->path = moves_.empty() ? Polyline{move->target} : Polyline{position_, move->target};
    position_ = move->target;
    if (target.taught) {
        joints_ = target.joints;
    }
}

void Layout::addJointMove(PathMove* move, const TaughtPoint& target) {
    move->shape = Shape::Joint;
    if (!fits(target.joints)) {
        addLine(move, target);
        return;
    }
    move->target = toolAt(arm_, target.joints);
    if (moves_.empty()) {
        move->path = {move->target};
    } else {
        move->path = fits(joints_) ? jointPath(target.joints) : Polyline{position_, move->target};
    }
    position_ = move->target;
    joints_ = target.joints;
}

Polyline Layout::jointPath(const sim::Joints& to) const {
    double widest = 0;
    for (size_t i = 0; i < to.size(); ++i) {
        widest = std::max(widest, std::abs(to[i] - joints_[i]));
    }
    const int steps = std::max(1, int(std::ceil(widest / stepRad)));
    Polyline path;
    for (int k = 0; k <= steps; ++k) {
        sim::Joints joints = joints_;
        for (size_t i = 0; i < joints.size(); ++i) {
            joints[i] += (to[i] - joints[i]) * k / steps;
        }
        path.push_back(toolAt(arm_, joints));
    }
    return path;
}

void Layout::addArc(PathMove* move, const Statement& statement) {
    const TaughtPoint &via = statement.point, &end = statement.point1;
    const bool taught = via.taught && end.taught;
    move->shape = Shape::Arc;
    move->target = end.trans;
    bend(move, taught ? prog::Arc::through(position_, via.trans, end.trans) : std::nullopt,
         {position_, via.trans, end.trans});
    joints_ = end.joints;
}

/// A full circle begins at the taught point that the run takes for its first, and ends there.
void Layout::addCircle(PathMove* move, const Statement& statement) {
    const auto before = program_.targetBefore(move->line);
    const Position start = before ? program_.point(*before).trans : position_;
    const TaughtPoint &p1 = statement.point, &p2 = statement.point1;
    const bool taught = (!before || program_.point(*before).taught) && p1.taught && p2.taught;
    move->shape = Shape::Circle;
    move->target = start;
    bend(move, taught ? prog::Arc::circle(start, p1.trans, p2.trans) : std::nullopt,
         {start, p1.trans, p2.trans});
}

void Layout::bend(PathMove* move, const std::optional<prog::Arc>& arc, const Polyline& straight) {
    move->path = arc ? arc->points(stepRad) : straight;
    position_ = move->target;
}

/// Rounds the targets of a batch off, from its first move on.
void Layout::roundCorners(size_t first) {
    std::vector<Polyline> whole;
    std::vector<double> lengths;
    for (size_t i = first; i < moves_.size(); ++i) {
        whole.push_back(moves_[i].path);
        lengths.push_back(lengthOf(moves_[i].path));
    }
    double behind = 0;  // what the corner before has taken of the path
    for (size_t i = 0; i < whole.size(); ++i) {
        PathMove& move = moves_[first + i];
        double radius = 0;
        if (i + 1 < whole.size()) {
            const double zone = program_.statement(move.line).zoneMm.value_or(0) / prog::mmPerM;
            radius = std::min({zone, lengths[i] / 2, lengths[i + 1] / 2});
        }
        if (radius < leastZoneM) {
            radius = 0;
        }
        if (behind > 0 || radius > 0) {
            move.path = cut(whole[i], behind, lengths[i] - radius);
        }
        if (radius > 0) {
            move.corner = roundedCorner(whole[i], whole[i + 1], radius);
        }
        behind = radius;
    }
}

}  // namespace

std::vector<PathMove> layOutPath(const prog::RunProgram& program, const sim::Arm& arm,
                                 const sim::MotionPlan::Posture& start, const QSet<int>& impossible) {
    Layout layout(program, arm, start);
    for (int line = 0; line < program.lineCount();) {
        const int end = program.batchEnd(line);
        layout.addBatch(line, end);
        line = std::max(end, line + 1);
    }
    std::vector<PathMove> moves = layout.take();
    for (PathMove& move : moves) {
        move.impossible = impossible.contains(move.line);
    }
    return moves;
}

int seamOf(const std::vector<PathMove>& moves, int line) {
    // Starts and stops of welding have no move: a start belongs to the next one, a stop to the last one.
    int before = -1;
    for (const PathMove& move : moves) {
        if (move.line == line) {
            return move.seam;
        }
        if (move.line > line) {
            return before == move.seam || before < 0 ? move.seam : before;
        }
        before = move.seam;
    }
    return before;
}

int seamCount(const std::vector<PathMove>& moves) {
    int most = -1;
    for (const PathMove& move : moves) {
        most = std::max(most, move.seam);
    }
    return most + 1;
}

Polyline seamPath(const std::vector<PathMove>& moves, int seam) {
    Polyline path;
    for (const PathMove& move : moves) {
        if (move.seam == seam) {
            path.insert(path.end(), move.path.begin(), move.path.end());
            path.insert(path.end(), move.corner.begin(), move.corner.end());
        }
    }
    return path;
}

}  // namespace app
