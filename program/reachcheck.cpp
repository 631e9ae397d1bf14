#include "program/check.h"
#include "program/collector.h"
#include "program/words.h"

namespace prog {

namespace {

bool isTaught(const TaughtPoint& point) {
    return point.taught && point.turned;
}

/// Whether an arm can be asked for a move: the points that it reads are taught.
bool canBeAsked(const Statement& move, std::size_t axes) {
    switch (move.type) {
        case StatementType::MoveJ:
            return move.point.joints.size() == axes;
        case StatementType::MoveL:
            return isTaught(move.point);
        case StatementType::MoveC:
        case StatementType::MoveCC:
            return isTaught(move.point) && isTaught(move.point1);
        default:
            return false;
    }
}

void append(QByteArray* key, const double* numbers, std::size_t count) {
    key->append(reinterpret_cast<const char*>(numbers), static_cast<int>(count * sizeof(double)));
}

void append(QByteArray* key, const TaughtPoint& point) {
    const double place[] = {point.trans.x, point.trans.y, point.trans.z,
                            point.rot[0],  point.rot[1],  point.rot[2]};
    append(key, place, std::size(place));
}

/// All that the answer of an arm depends on.
QByteArray question(const Statement& move, double speedMmPerS, const ArmPosture& from) {
    QByteArray key(1, static_cast<char>(move.type));
    const double place[] = {from.trans.x, from.trans.y, from.trans.z, from.rot[0],
                            from.rot[1],  from.rot[2],  speedMmPerS};
    append(&key, place, std::size(place));
    append(&key, from.joints.data(), from.joints.size());
    if (move.type == StatementType::MoveJ) {
        append(&key, move.point.joints.data(), move.point.joints.size());
    } else {
        append(&key, move.point);
        append(&key, move.point1);
    }
    return key;
}

Finding findingOf(const ReachFault& fault, int line) {
    constexpr double degreesPerRad = 180.0 / 3.14159265358979323846;
    const auto rounded = [](double value) { return qRound64(value); };
    Finding finding;
    finding.element = line;
    finding.line = line;
    finding.severity = Severity::Error;
    switch (fault.kind) {
        case ReachFault::Kind::OutOfReach:
            finding.fault = Fault::OutOfReach;
            finding.arguments = {rounded(fault.atMm)};
            break;
        case ReachFault::Kind::JointLimit:
            finding.fault = Fault::JointLimit;
            finding.arguments = {rounded(fault.atMm)};
            break;
        case ReachFault::Kind::JointSpeed:
            finding.fault = Fault::JointTooFast;
            finding.arguments = {fault.axis, rounded(fault.value * degreesPerRad),
                                 rounded(fault.limit * degreesPerRad)};
            break;
    }
    return finding;
}

}  // namespace

void ReachCheck::begin(const RunProgram& program) {
    kept_ = std::move(results_);
    results_ = {};
    moves_.clear();
    findings_.clear();
    next_ = 0;
    posture_ = arm_.home();
    int weld = -1;
    for (int line = 0; line < program.lineCount(); ++line) {
        const Statement& statement = program.statement(line);
        if (!statement.executed) {
            continue;
        }
        if (statement.type == StatementType::Open || statement.type == StatementType::Close) {
            weld = statement.type == StatementType::Open ? line : -1;
        }
        const double speed = program.speedMmPerS(line, weld >= 0);
        if (speed > 0.0 && canBeAsked(statement, posture_.joints.size())) {
            moves_.push_back({line, speed, statement});
        }
    }
}

bool ReachCheck::advance(int moves) {
    for (int done = 0; done < moves && next_ < moves_.size(); ++done, ++next_) {
        const Move& move = moves_[next_];
        const Result result = resultOf(move);
        posture_ = result.end;
        if (result.fault) {
            findings_.push_back(findingOf(*result.fault, move.line));
        }
    }
    return next_ == moves_.size();
}

ReachCheck::Result ReachCheck::resultOf(const Move& move) {
    const QByteArray key = question(move.statement, move.speedMmPerS, posture_);
    auto known = kept_.constFind(key);
    if (known == kept_.constEnd()) {
        Result result;
        result.end = posture_;
        result.fault = arm_.follow(move.statement, move.speedMmPerS, &result.end);
        return *results_.insert(key, result);
    }
    return *results_.insert(key, *known);
}

Findings checkReach(const RunProgram& program, const ArmModel& arm) {
    ReachCheck check(arm);
    check.begin(program);
    check.advance(program.lineCount());
    return check.findings();
}

}  // namespace prog
