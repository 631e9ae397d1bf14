#include "app/path/programfollower.h"

#include "mendo/modulemanager.h"
#include "program/words.h"

namespace app {

using mendo::ModuleObject;

namespace {

/// The fields that decide about the path. Points are written whole or coordinate by coordinate.
constexpr QLatin1String pathFields[] = {prog::field::type, prog::field::execute, prog::field::zone,
                                        prog::field::point, prog::field::point1};

}  // namespace

ProgramFollower::ProgramFollower(QObject* parent)
    : QObject(parent), program_(m(prog::key::program)), anchor_(program_->c(0)) {
    connect(program_, &ModuleObject::changed, this, &ProgramFollower::onChanged);
    connect(program_, &ModuleObject::added, this, &ProgramFollower::changedLater);
    connect(program_, &ModuleObject::removed, this, &ProgramFollower::onRemoved);
}

void ProgramFollower::setFollowing(bool following) {
    following_ = following;
    if (following) {
        followStatements();
    }
}

/// Reordering emits the same signal as a replacement, but the statements stay the same objects.
void ProgramFollower::onChanged() {
    if (!anchor_ || anchor_->pmobj() != program_) {
        anchor_ = program_->c(0);
        emit replaced();
    }
    changedLater();
}

void ProgramFollower::onRemoved(const QString& name) {
    const ModuleObject* const leaving = program_->c(name);
    if (leaving == anchor_) {
        ModuleObject* const next = leaving->nextBmobj();
        anchor_ = next->isNull() ? leaving->prevBmobj() : next;
    }
    changedLater();
}

void ProgramFollower::changedLater() {
    if (posted_) {
        return;
    }
    posted_ = true;
    QMetaObject::invokeMethod(this, &ProgramFollower::announce, Qt::QueuedConnection);
}

void ProgramFollower::announce() {
    posted_ = false;
    if (following_) {
        followStatements();
    }
    emit changed();
}

void ProgramFollower::followStatements() {
    const auto follow = [this](const ModuleObject* node) {
        if (!node->isNull()) {
            connect(node, &ModuleObject::changed, this, &ProgramFollower::changedLater, Qt::UniqueConnection);
        }
    };
    const QList<ModuleObject*> statements = program_->cmobjs();
    for (const ModuleObject* statement : statements) {
        follow(statement);
        for (const QLatin1String field : pathFields) {
            follow(statement->c(field));
        }
        for (const QLatin1String point : {prog::field::point, prog::field::point1}) {
            const QList<ModuleObject*> coordinates = statement->c(point)->c(prog::field::trans)->cmobjs();
            for (const ModuleObject* coordinate : coordinates) {
                follow(coordinate);
            }
        }
    }
}

}  // namespace app
