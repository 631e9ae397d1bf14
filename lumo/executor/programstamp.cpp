#include "executor/programstamp.h"

ProgramStamp::ProgramStamp(ModuleObject* program, QObject* parent) : QObject(parent), program_(program) {
    takeAnchor(program->c(0));
    connect(program, &ModuleObject::changed, this, &ProgramStamp::onChanged);
    connect(program, &ModuleObject::added, this, &ProgramStamp::onAdded);
    connect(program, &ModuleObject::removed, this, &ProgramStamp::onRemoved);
}

void ProgramStamp::onChanged() {
    // A reorder announces itself like a replacement, but leaves the statements' objects in place.
    if (anchor_ && anchor_->pmobj() == program_) {
        return;
    }
    ++value_;
    takeAnchor(program_->c(0));
}

void ProgramStamp::onAdded() {
    if (!anchor_) {
        takeAnchor(program_->c(0));
    }
}

void ProgramStamp::onRemoved(const QString& name) {
    ModuleObject* const gone = program_->c(name, false);
    if (gone != anchor_) {
        return;
    }
    ModuleObject* const next = gone->nextBmobj();
    takeAnchor(next->isNull() ? gone->prevBmobj() : next);
    if (!anchor_) {
        ++value_;  // nothing of the program is left
    }
}

void ProgramStamp::takeAnchor(ModuleObject* candidate) {
    anchor_ = candidate->isNull() ? nullptr : candidate;
}
