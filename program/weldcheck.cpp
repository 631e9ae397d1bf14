#include "program/weldcheck.h"

#include "program/words.h"

#include <algorithm>
#include <cmath>

namespace prog {

namespace {

constexpr double msPerS = 1000.0;

/// How much of a circle of this radius, along it, lies within a distance of one of its points.
double arcWithin(double distanceM, double radiusM) {
    const double halfSine = distanceM / (2 * radiusM);
    return halfSine >= 1.0 ? std::numeric_limits<double>::infinity() : 2 * radiusM * std::asin(halfSine);
}

}  // namespace

WeldCheck::WeldCheck(const RunProgram& program, const std::vector<int>& elements,
                     const std::vector<LaserParams>& sets, const CellFacts& cell, PortNeeds* needs,
                     Collector* found)
    : program_(program),
      elements_(elements),
      sets_(sets),
      cell_(cell),
      needs_(*needs),
      found_(*found),
      pairTold_(elements.size()) {}

void WeldCheck::lookAt(int line) {
    found_.lookAt(elements_.at(static_cast<std::size_t>(line)), line, program_.isExecuted(line));
}

void WeldCheck::walk() {
    for (int line = 0; line < program_.lineCount(); ++line) {
        const Statement statement = program_.statement(line);
        lookAt(line);
        if (statement.moves) {
            checkArc(line, statement.executed);
        }
        if (!statement.executed) {
            continue;
        }
        if (statement.moves) {
            move(line);
        } else if (statement.type == StatementType::Open) {
            open(line);
        } else if (statement.type == StatementType::Close) {
            close(line);
        } else if (statement.type == StatementType::Param) {
            takeSet(statement.set);
        } else if (open_ >= 0) {
            stand(line);
        }
    }
    if (open_ >= 0) {
        lookAt(open_);
        found_.add(Fault::OpenNotClosed, {}, {linesLit(program_.lineCount())});
        pairTold_.at(static_cast<std::size_t>(open_)) = true;
    }
    tellSwitchedOffPairs();
}

/// The lines behind the weld's start up to another one, as a person reads them.
QString WeldCheck::linesLit(int upTo) const {
    const int first = std::min(open_ + 2, upTo);
    return first == upTo ? QString::number(first) : QStringLiteral("%1-%2").arg(first).arg(upTo);
}

void WeldCheck::takeSet(int set) {
    set_ = set >= 0 && set < int(sets_.size()) ? set : -1;
    if (set_ >= 0 && open_ >= 0) {
        needs_.add(sets_.at(static_cast<std::size_t>(set_)), open_);
    }
}

void WeldCheck::open(int line) {
    if (open_ >= 0) {
        lookAt(open_);
        found_.add(Fault::OpenNotClosedHere, {}, {line + 1, linesLit(line)});
        pairTold_.at(static_cast<std::size_t>(open_)) = true;
    }
    open_ = line;
    lastMove_ = -1;
    movedM_ = 0.0;
    lookAt(line);
    takeSet(program_.statement(line).set);
    const int dwellMs = set_ < 0 ? 0 : sets_.at(static_cast<std::size_t>(set_)).stayMs;
    if (dwellMs > cell_.standingMs) {
        found_.add(Fault::StandingDwell, field::index, {dwellMs});
    }
}

void WeldCheck::close(int line) {
    constexpr double sameM = 1e-5;
    if (open_ < 0) {
        found_.add(Fault::CloseWithoutOpen);
        pairTold_.at(static_cast<std::size_t>(line)) = true;
        return;
    }
    if (lastMove_ < 0 || movedM_ < sameM) {
        lookAt(open_);
        found_.add(Fault::NothingWelded, {}, {line + 1});
    } else {
        checkZone();
    }
    open_ = -1;
}

/// A delay or an input in a weld.
void WeldCheck::stand(int line) {
    const Statement statement = program_.statement(line);
    if (statement.type == StatementType::Delay && statement.delayMs > cell_.standingMs) {
        found_.add(Fault::StandingDelay, field::delaytime, {statement.delayMs});
    } else if (statement.type == StatementType::WaitDI && !statement.signal.name().isEmpty()) {
        found_.add(Fault::StandingInput, {}, {statement.signal.text()});
    }
}

void WeldCheck::move(int line) {
    const Statement statement = program_.statement(line);
    lastStart_ = at_;
    double lengthM = std::numeric_limits<double>::infinity();
    const bool hasPoint1 = statement.type == StatementType::MoveC || statement.type == StatementType::MoveCC;
    if (statement.type == StatementType::MoveCC) {
        const auto start = program_.targetBefore(line);
        at_ = start ? std::make_optional(program_.point(*start).trans) : at_;
    } else {
        const TaughtPoint& target = hasPoint1 ? statement.point1 : statement.point;
        const std::optional<Position> end = target.taught ? std::make_optional(target.trans) : std::nullopt;
        const bool turns = statement.type == StatementType::MoveJ;
        if (lastStart_ && end && !hasPoint1 && !turns) {
            lengthM = distance(*lastStart_, *end);
        }
        at_ = end;
    }
    if (open_ >= 0) {
        lastMove_ = line;
        movedM_ += lengthM;
    }
}

void WeldCheck::checkArc(int line, bool executed) {
    const Statement statement = program_.statement(line);
    const bool isCircle = statement.type == StatementType::MoveCC;
    if ((!isCircle && statement.type != StatementType::MoveC) || !statement.point.taught ||
        !statement.point1.taught) {
        return;
    }
    CircleFault fault = CircleFault::None;
    const auto before = program_.targetBefore(line);
    if (isCircle && before && program_.point(*before).taught) {
        fault = program_.circleFaultAt(line);
    } else if (!isCircle && executed && at_) {
        fault = arcFault(*at_, statement.point.trans, statement.point1.trans);
    } else if (!isCircle && !executed && before && program_.point(*before).taught) {
        fault = arcFault(program_.point(*before).trans, statement.point.trans, statement.point1.trans);
    }
    if (fault == CircleFault::Coincident) {
        found_.add(isCircle ? Fault::CircleCoincident : Fault::ArcCoincident, field::point);
    } else if (fault == CircleFault::Collinear) {
        found_.add(isCircle ? Fault::CircleCollinear : Fault::ArcCollinear, field::point);
    }
}

/// How much of a move lies in the zone at its end.
double WeldCheck::lengthInZoneM(const Statement& move) const {
    const double zoneM = move.zoneMm.value_or(0.0) / mmPerM;
    if (!lastStart_ || zoneM <= 0.0) {
        return 0.0;
    }
    switch (move.type) {
        case StatementType::MoveL:
        case StatementType::MoveJ:
            return move.point.taught ? std::min(zoneM, distance(*lastStart_, move.point.trans)) : 0.0;
        case StatementType::MoveC:
        case StatementType::MoveCC: {
            const std::optional<Arc> arc =
                move.type == StatementType::MoveC
                    ? Arc::through(*lastStart_, move.point.trans, move.point1.trans)
                    : Arc::circle(*lastStart_, move.point.trans, move.point1.trans);
            return arc ? std::min(arcWithin(zoneM, arc->radiusM()), arc->lengthM()) : 0.0;
        }
        default:
            return 0.0;
    }
}

/// The close begins when the tool enters the zone at the end of the weld's last move; the laser is on for the
/// length of the ramp from there.
void WeldCheck::checkZone() {
    const Statement move = program_.statement(lastMove_);
    if (set_ < 0 || !program_.isLastBeforeClose(lastMove_)) {
        return;
    }
    const double speedMmPerS = program_.speedMmPerS(lastMove_, true);
    if (speedMmPerS <= 0) {
        return;
    }
    const double rampMm = speedMmPerS * sets_.at(static_cast<std::size_t>(set_)).decreaseMs / msPerS;
    const double darkMm = lengthInZoneM(move) * mmPerM - rampMm;
    if (darkMm > cell_.darkSeamMm) {
        lookAt(lastMove_);
        found_.add(Fault::ZoneEndsEarly, field::zone, {*move.zoneMm, std::round(darkMm * 10) / 10});
    }
}

/// The page counts the pairs of all lines, also of those that are switched off.
void WeldCheck::tellSwitchedOffPairs() {
    int open = -1;
    const auto tell = [this](int line) {
        if (!program_.isExecuted(line) && !pairTold_.at(static_cast<std::size_t>(line))) {
            lookAt(line);
            found_.add(Fault::PairIncomplete);
            pairTold_.at(static_cast<std::size_t>(line)) = true;
        }
    };
    for (int line = 0; line < program_.lineCount(); ++line) {
        const StatementType type = program_.statement(line).type;
        if (type == StatementType::Open) {
            if (open >= 0) {
                tell(program_.isExecuted(open) ? line : open);
            }
            open = line;
        } else if (type == StatementType::Close) {
            if (open < 0) {
                tell(line);
            }
            open = -1;
        }
    }
    if (open >= 0) {
        tell(open);
    }
}

}  // namespace prog
