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

/// The speed of a move that an arm can be asked for; 0 for every other line. `inWeld`: whether the line lies
/// in a weld, and then whether the next does.
double speedOfMove(const RunProgram& program, int line, bool* inWeld, std::size_t axes) {
    const Statement statement = program.statement(line);
    if (!statement.executed) {
        return 0.0;
    }
    if (statement.type == StatementType::Open || statement.type == StatementType::Close) {
        *inWeld = statement.type == StatementType::Open;
    }
    return canBeAsked(statement, axes) ? program.speedMmPerS(line, *inWeld) : 0.0;
}

}  // namespace

void ReachCheck::begin(RunProgram program) {
    kept_ = std::move(results_);
    results_ = {};
    findings_.clear();
    program_ = std::move(program);
    next_ = 0;
    inWeld_ = false;
    posture_ = arm_.home();
}

bool ReachCheck::advance(int moves) {
    for (int done = 0; program_ && done < moves; ++next_) {
        if (next_ == program_->lineCount()) {
            program_.reset();
            kept_ = {};
            break;
        }
        const double speed = speedOfMove(*program_, next_, &inWeld_, posture_.joints.size());
        if (speed > 0.0) {
            ++done;
            const Result result = resultOf(program_->statement(next_), speed);
            posture_ = result.end;
            if (result.fault) {
                findings_.push_back(findingOf(*result.fault, next_));
            }
        }
    }
    return !program_;
}

ReachCheck::Result ReachCheck::resultOf(const Statement& move, double speedMmPerS) {
    const QByteArray key = question(move, speedMmPerS, posture_);
    const auto known = kept_.constFind(key);
    if (known != kept_.constEnd()) {
        return *results_.insert(key, *known);
    }
    Result result;
    result.end = posture_;
    result.fault = arm_.follow(move, speedMmPerS, &result.end);
    return *results_.insert(key, result);
}

Findings checkReach(const RunProgram& program, const ArmModel& arm) {
    Findings findings;
    ArmPosture posture = arm.home();
    bool inWeld = false;
    for (int line = 0; line < program.lineCount(); ++line) {
        const double speed = speedOfMove(program, line, &inWeld, posture.joints.size());
        const std::optional<ReachFault> fault =
            speed > 0.0 ? arm.follow(program.statement(line), speed, &posture) : std::nullopt;
        if (fault) {
            findings.push_back(findingOf(*fault, line));
        }
    }
    return findings;
}

}  // namespace prog
