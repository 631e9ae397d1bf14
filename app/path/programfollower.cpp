#include "app/path/programfollower.h"

#include "mendo/modulemanager.h"
#include "program/words.h"

namespace app {

using mendo::ModuleObject;

namespace {

// What of a statement tells where it leads. Points are written whole or coordinate by coordinate.
const char* const fieldRows[] = {"type", "execute", "zone", "point", "point1"};

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

QJsonArray ProgramFollower::statements() const {
    return program_->exportToJson().toArray();
}

/// Moving a statement announces itself as a replacement does, but leaves the statements' objects.
void ProgramFollower::onChanged() {
    if (!anchor_ || anchor_->pmobj() != program_) {
        anchor_ = program_->c(0);
        emit replaced();
    }
    changedLater();
}

void ProgramFollower::onRemoved(const QString& name) {
    ModuleObject* const gone = program_->c(name);
    if (gone == anchor_) {
        ModuleObject* const next = gone->nextBmobj();
        anchor_ = next->isNull() ? gone->prevBmobj() : next;
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
        for (const char* field : fieldRows) {
            follow(statement->c(QLatin1String(field)));
        }
        for (const QString& point : {QStringLiteral("point.trans"), QStringLiteral("point1.trans")}) {
            const QList<ModuleObject*> coordinates = statement->r(point)->cmobjs();
            for (const ModuleObject* coordinate : coordinates) {
                follow(coordinate);
            }
        }
    }
}

}  // namespace app
