#include "undo/recording.h"

#include <algorithm>

namespace lumo {

namespace {

/// A statement of the program and the path of a node below it; no statement for a node elsewhere.
struct Place {
    const ModuleObject* statement = nullptr;
    QString path;
};

Place placeOf(const ModuleObject* program, const ModuleObject* node) {
    QString path;
    for (const ModuleObject* at = node; !at->isNull(); at = at->pmobj()) {
        const ModuleObject* const parent = at->pmobj();
        if (parent == program) {
            return {at, path};
        }
        path = mName(parent->isList() ? mIndex(at->indexInPmobj()) : at->name(), path);
    }
    return {};
}

QJsonArray contentBefore(EditedList page) {
    return page == EditedList::Program ? QJsonArray() : listOf(page)->exportToJson().toArray();
}

}  // namespace

Recording::Recording(EditedList page, const QString& text)
    : page_(page), text_(text), before_(contentBefore(page)), program_(listOf(EditedList::Program)) {}

void Recording::touch(const ModuleObject* node) {
    const ModuleObject* const statement = placeOf(program_, node).statement;
    if (!statement) {
        return;
    }
    // What was written there before may lose its place by what comes now.
    const QList<std::size_t> earlier = byStatement_.values(statement);
    for (const std::size_t index : earlier) {
        compare(touched_[index]);
    }
    byStatement_.insert(statement, touched_.size());
    touched_.push_back({node, node->exportToJson()});
}

/// `insertedRow`: the rows below it have moved since the values were written.
void Recording::compareTouched(int insertedRow) {
    for (Touched& touched : touched_) {
        compare(touched, insertedRow);
    }
}

void Recording::compare(Touched& touched, int insertedRow) {
    const Place place = touched.node ? placeOf(program_, touched.node) : Place();
    if (!place.statement || isInserted(place.statement)) {
        return;
    }
    const QJsonValue now = touched.node->exportToJson();
    const int row = place.statement->indexInPmobj();
    Change change = Change::ofRow(EditedList::Program, Change::Kind::Write,
                                  insertedRow >= 0 && row > insertedRow ? row - 1 : row);
    change.path = place.path;
    appendWrites(&changes_, change, touched.before, now);
    touched.before = now;
}

bool Recording::isInserted(const ModuleObject* statement) const {
    return std::any_of(inserted_.begin(), inserted_.end(),
                       [statement](const Inserted& inserted) { return inserted.node == statement; });
}

void Recording::added(const QString& name) {
    const ModuleObject* const statement = program_->c(name);
    const int row = statement->indexInPmobj();
    compareTouched(row);
    inserted_.push_back({statement, changes_.size()});
    changes_.push_back(Change::ofRow(EditedList::Program, Change::Kind::Insert, row));
}

void Recording::removed(const QString& name) {
    const ModuleObject* const statement = program_->c(name);
    compareTouched();
    keepInserted(statement);
    Change change = Change::ofRow(EditedList::Program, Change::Kind::Remove, statement->indexInPmobj());
    change.before = statement->exportToJson();
    changes_.push_back(change);
}

void Recording::moving(int from, int to) {
    compareTouched();
    Change change = Change::ofRow(EditedList::Program, Change::Kind::Move, from);
    change.to = to;
    changes_.push_back(change);
    isMoving_ = true;
}

void Recording::changed() {
    isReplaced_ = isReplaced_ || !isMoving_;
    isMoving_ = false;
}

/// Keeps the content of the statements that were inserted, or of the one that leaves again.
void Recording::keepInserted(const ModuleObject* leaving) {
    const auto keep = [this, leaving](const Inserted& inserted) {
        const bool isDue = inserted.node && (!leaving || inserted.node == leaving);
        if (isDue) {
            changes_[inserted.change].after = inserted.node->exportToJson();
        }
        return isDue;
    };
    inserted_.erase(std::remove_if(inserted_.begin(), inserted_.end(), keep), inserted_.end());
}

Changes Recording::finish() {
    if (isReplaced_) {
        return {};
    }
    compareTouched();
    keepInserted();
    if (page_ != EditedList::Program) {
        appendRows(&changes_, page_, before_, listOf(page_)->exportToJson().toArray());
    }
    return std::move(changes_);
}

}  // namespace lumo
