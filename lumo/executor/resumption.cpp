#include "executor/resumption.h"

#include "executor/weldflag.h"
#include "program/seamahead.h"
#include "program/words.h"

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

/// The overlap that is asked for, mm.
double overlapAsked() {
    const double mm = m(key::executeOverlap)->getDouble(0.0);
    return mm > 0.0 ? std::min(mm, mostOverlapMm) : 0.0;  // not-a-number asks for no overlap
}

}  // namespace

Resumption::Resumption(QObject* sender, Laser& laser, Motions& motions, ResumePoint& resume)
    : sender_(sender), laser_(laser), motions_(motions), resume_(resume) {}

int Resumption::takeUp(Run& run, int line) {
    if (isWeldFlagged() && (!run.inWeld || run.isDry())) {
        setWeldFlag(sender_, false);  // a dry run leaves the weld as it is: no later start goes on with it
    }
    const bool ofArc = isStoppedArc(run.original(line)) && run.program.isExecuted(line);
    const bool reopens = run.inWeld && isWeldFlagged() && weldingPermitted();
    if (run.inWeld && !weldingPermitted()) {
        resume_.weldOpened(nullptr);  // from here on its seam is left dark: no later start may go on with it
    }
    const bool goesOnThere = resume_.isStoppedAt(line);
    if (!run.isAborted && run.ofHandProgram() && resume_.mustGoBack(line, reopens || ofArc)) {
        goBack(run, line);
    }
    if (!run.isAborted && ofArc && !motions_.takeUpArc(line)) {
        setWeldFlag(sender_, false);  // all of it is run, dark
    }
    if (!goesOnThere) {
        motions_.welded().clear();  // what lies between the stop and this line is not welded
    }
    int begins = line;
    if (!run.isAborted && reopens && isWeldFlagged()) {
        begins = goBackAlong(run, line);
    }
    if (!run.isAborted && run.inWeld && isWeldFlagged()) {
        const int open = run.program.openBefore(line);
        const Statement statement = open < 0 ? Statement() : run.program.statement(open);
        laser_.openIfPermitted(open < 0 ? nullptr : &statement);
    }
    return begins;
}

void Resumption::goBack(const Run& run, int line) {
    const int code = motions_.goBack(line);
    if (!run.isAborted && code != 0) {
        emit failed(code);
    }
    double awayMm = 0.0;
    if (!run.isAborted && ResumePoint::isAway(&awayMm)) {
        emit notThere(awayMm);
    }
}

/// To where the overlap begins. Returns the line at which the walk begins.
int Resumption::goBackAlong(const Run& run, int line) {
    const Overlap overlap = motions_.overlap(line, overlapAsked());
    if (m(key::executeOverlapped)->getDouble(0.0) != overlap.weldedMm) {
        m(key::executeOverlapped)->setValue(sender_, overlap.weldedMm);
    }
    if (overlap.way.empty() || run.isAborted) {
        return line;
    }
    const int code = motions_.goBackAlong(overlap.way, line);
    if (!run.isAborted && code != 0) {
        emit failed(code);
    }
    constexpr double nearMm = 2.0;
    const double awayMm = distance(toolPose().trans, overlap.way.back().target.trans) * mmPerM;
    if (!run.isAborted && awayMm > nearMm) {
        emit notThere(awayMm);
    }
    motions_.beginOverlap(overlap);
    return overlap.line;
}

/// Whether the last stop interrupted this statement, and on an arc.
bool Resumption::isStoppedArc(const ModuleObject* statement) const {
    return motions_.arcs().hasStopped() && resume_.isStoppedIn(statement);
}

Outlook Resumption::outlook(int line) const {
    Outlook outlook;
    ModuleObject* const stmt = m(key::program)->c(line);
    outlook.permitted = weldingPermitted() && !m(key::executeDry)->getBool(false);
    outlook.inWeld = isWeldFlagged() && resume_.liesInWeld(line);
    outlook.reopens = outlook.inWeld && outlook.permitted;
    outlook.restOfArc = !stmt->isNull() && isStoppedArc(stmt) && isExecuted(stmt);
    outlook.goesBack = resume_.mustGoBack(line, outlook.reopens || outlook.restOfArc, &outlook.distanceMm);
    return outlook;
}

ResumeView Resumption::view(int line) const {
    const Run run(m(key::program), runmode::byHand, false);
    ResumeView view;
    view.line = line;
    view.stop = positionOf(m(key::currentPausePoint));
    view.tool = toolPose().trans;
    Pose start{view.stop, {}};
    int next = line;
    const WeldedPath::Pieces welded = motions_.weldedUpTo(run, line, view.stop);
    for (auto piece = welded.list.rbegin(); piece != welded.list.rend(); ++piece) {
        view.welded.push_back({piece->path, 0.0, piece->toM});
    }
    if (!welded.list.empty() && welded.list.front().line == line) {
        const WeldedPath::Piece& stopped = welded.list.front();
        view.ahead.push_back({stopped.path, stopped.toM, stopped.path.lengthM()});
        start = stopped.path.at(stopped.path.lengthM());
        ++next;
    }
    for (const PathPiece& path : seamAhead(run.program, next, start)) {
        view.ahead.push_back({path, 0.0, path.lengthM()});
    }
    return view;
}

}  // namespace lumo
