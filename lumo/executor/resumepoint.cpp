#include "executor/resumepoint.h"

#include "program/runprogram.h"
#include "program/words.h"

#include <QtMath>

using namespace prog;

namespace lumo {

ResumePoint::ResumePoint(ModuleObject* program, QObject* sender) : program_(program), sender_(sender) {
    connect(program, &ModuleObject::changed, this, &ResumePoint::onProgram);
    connect(program, &ModuleObject::added, this, &ResumePoint::onProgram);
    connect(program, &ModuleObject::removed, this, &ResumePoint::onRemoved);
    connect(m(key::currentLine), &ModuleObject::changed, this, &ResumePoint::onLineWritten);
    connect(m(key::weldOpen), &ModuleObject::changed, this, &ResumePoint::onFlag);
}

void ResumePoint::hold(ModuleObject* statement) {
    suspended_ = false;
    statement_ = statement;
    follow();
}

void ResumePoint::release() {
    suspended_ = false;
    follow();
}

void ResumePoint::stopIn(ModuleObject* statement, bool ofHandProgram) {
    isStopped_ = ofHandProgram;
    stoppedStatement_ = statement;
    hold(statement);
}

bool ResumePoint::isStoppedAt(int line) const {
    if (!isStopped_ || m(key::currentPausePoint)->size() == 0) {
        return false;
    }
    const bool isThere = stoppedStatement_ && stoppedStatement_->pmobj() == program_;
    return line == (isThere ? stoppedStatement_->indexInPmobj() : m(key::currentLine)->getInt(-1));
}

bool ResumePoint::isStoppedIn(const ModuleObject* statement) const {
    return statement && statement == stoppedStatement_ && isStoppedAt(statement->indexInPmobj());
}

bool ResumePoint::mustGoBack(int line, bool goesOnThere, double* distanceMm) const {
    return (goesOnThere ||
            (isStoppedAt(line) && opensBeforeItMoves(line, program_->size(), kindsIn(program_)))) &&
           isAway(distanceMm);
}

bool ResumePoint::isAway(double* distanceMm) {
    constexpr double nearMm = 2.0;
    const double nearRad = qDegreesToRadians(2.0);
    const Record stop = m(key::currentPausePoint);
    if (!stop.at(field::trans).exists()) {
        return false;
    }
    const TaughtPoint kept = TaughtPoint::from(stop);
    const TaughtPoint tool = TaughtPoint::from(kordservice()->get(nullptr, key::posture));
    const double away = mmPerM * prog::distance(kept.trans, tool.trans);
    if (distanceMm) {
        *distanceMm = away;
    }
    return away > nearMm || (stop.at(field::rot).exists() && angleBetween(kept.rot, tool.rot) > nearRad);
}

void ResumePoint::weldOpened(ModuleObject* open) {
    open_ = open;
    weldIsOurs_ = open;
}

bool ResumePoint::liesInWeld(int line) const {
    const ModuleObject* const statement = program_->c(line);
    return weldIsOurs_ && !statement->isNull() && isInWeld(statement, nullptr);
}

/// Others than the executor chose the line: its statement is the one to follow.
void ResumePoint::onLineWritten(const QVariant& line, const QVariant& /*old*/, QObject* sender) {
    if (sender == sender_) {
        return;
    }
    isFinished_ = false;
    if (suspended_) {
        return;
    }
    ModuleObject* const chosen = program_->c(line.toInt());
    statement_ = chosen->isNull() ? nullptr : chosen;
    watch();
}

/// A weld that was closed does not count as left open when others set the flag again.
void ResumePoint::onFlag(const QVariant& open) {
    if (!open.toBool()) {
        weldIsOurs_ = false;
        open_ = nullptr;
    }
}

void ResumePoint::onProgram() {
    isFinished_ = false;
    follow();
}

void ResumePoint::onRemoved(const QString& name) {
    isFinished_ = false;
    follow(program_->c(name));
}

bool ResumePoint::isHeld() const {
    return statement_ && statement_->pmobj() == program_;
}

void ResumePoint::follow(const ModuleObject* leaving) {
    if (suspended_) {
        return;
    }
    if (!isHeld() || statement_ == leaving) {
        statement_ = nullptr;  // the number stays
    } else {
        const int index = statement_->indexInPmobj();
        const int line = leaving && leaving->indexInPmobj() < index ? index - 1 : index;
        if (m(key::currentLine)->getInt(-1) != line) {
            m(key::currentLine)->setValue(sender_, line);
        }
    }
    // Listeners of that write may have started a run or edited the program: what holds now counts.
    const bool open = weldIsOurs_ && !suspended_ && m(key::weldOpen)->getBool(false);
    if (open && !(isHeld() && isInWeld(statement_, leaving))) {
        m(key::weldOpen)->setValue(sender_, false);
    }
    watch();
}

bool ResumePoint::isInWeld(const ModuleObject* statement, const ModuleObject* leaving) const {
    const int leavingLine = leaving ? leaving->indexInPmobj() : -1;
    const int open = weldOf(statement->indexInPmobj(), [this, leavingLine](int line) {
        return line == leavingLine ? LineKind() : LineKind::of(program_->c(line));
    });
    return open >= 0 && program_->c(open) == open_;
}

/// The fields whose change can take the statement out of its weld: only those of the weld's lines.
void ResumePoint::watch() {
    for (const QMetaObject::Connection& connection : qAsConst(watched_)) {
        disconnect(connection);
    }
    watched_.clear();
    if (suspended_ || !isHeld() || !weldIsOurs_ || !m(key::weldOpen)->getBool(false)) {
        return;
    }
    for (ModuleObject* line = statement_; !line->isNull(); line = line->prevBmobj()) {
        watchField(line, field::execute);
        watchField(line, field::type);
        watched_ << connect(line, &ModuleObject::added, this, &ResumePoint::recheck);
        watched_ << connect(line, &ModuleObject::changed, this, &ResumePoint::recheck);
        if (line == open_) {
            return;
        }
    }
}

void ResumePoint::watchField(ModuleObject* statement, const QString& name) {
    if (statement->hasCmobj(name)) {
        watched_ << connect(statement->c(name), &ModuleObject::changed, this, &ResumePoint::recheck);
    }
}

}  // namespace lumo
