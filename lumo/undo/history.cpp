#include "undo/history.h"

#include "equipment/ports.h"
#include "files/settingsfile.h"
#include "module/globals.h"
#include "program/words.h"
#include "undo/recording.h"
#include "widgets/messagebox.h"

#include <algorithm>
#include <utility>

using namespace prog;

namespace lumo {

namespace {

/// So many steps are kept: a day's work, and no more memory than that takes.
constexpr int mostSteps = 20000;

Settings settingsOf(EditedList which) {
    switch (which) {
        case EditedList::Ports:
            return Settings::Ports;
        case EditedList::Params:
            return Settings::Params;
        default:
            return Settings::Stations;
    }
}

/// A bit that one port leaves may belong to another one afterwards, so this comes before all writes.
void switchOffPorts(QObject* sender, const Changes& changes) {
    for (const Change& change : changes) {
        if (change.list == EditedList::Ports) {
            switchOffPort(sender, static_cast<I_PORT>(change.row));
        }
    }
}

}  // namespace

class History::Command : public QUndoCommand {
public:
    Command(History* history, EditedList page, const QString& text, Changes changes)
        : QUndoCommand(text), history_(history), page_(page), changes_(std::move(changes)) {}

    [[nodiscard]] EditedList page() const { return page_; }
    void undo() override { history_->restore(changes_, page_, false); }
    void redo() override {
        if (isDone_) {
            history_->restore(changes_, page_, true);
        }
        isDone_ = true;  // the stack calls it once when the step is new
    }

private:
    History* history_;
    const EditedList page_;
    const Changes changes_;
    bool isDone_ = false;
};

History* History::instance() {
    static QPointer<History> history;
    if (!history) {
        history = new History(m(key::lumo));
    }
    return history;
}

History::History(ModuleObject* lumo) : QObject(lumo) {
    stack_.setUndoLimit(mostSteps);
    connect(&stack_, &QUndoStack::indexChanged, this, &History::changed);
    for (const EditedList which : editedLists) {
        follow(which);
    }
}

History::~History() {
    disconnect(&stack_, nullptr, this, nullptr);
}

// --- Recording ------------------------------------------------------------------------------------

void History::follow(EditedList which) {
    const ModuleObject* const list = listOf(which);
    connect(list, &ModuleObject::added, this,
            [this, which](const QString& name, QObject* sender) { onAdded(which, name, sender); });
    connect(list, &ModuleObject::removed, this,
            [this, which](const QString& name, QObject* sender) { onRemoved(which, name, sender); });
    connect(list, &ModuleObject::changed, this,
            [this, which](const QVariant& /*value*/, const QVariant& /*old*/, QObject* sender) {
                onChanged(which, sender);
            });
}

void History::begin(EditedList page, const QString& text) {
    if (++depth_ == 1 && !restoring_) {
        recording_ = std::make_unique<Recording>(page, text);
    }
}

void History::end() {
    if (--depth_ > 0 || !recording_) {
        return;
    }
    const std::unique_ptr<Recording> recording = std::move(recording_);
    Changes changes = recording->finish();
    if (recording->isReplaced()) {
        clear();
    } else if (!changes.empty()) {
        stack_.push(new Command(this, recording->page(), recording->text(), std::move(changes)));
    }
}

bool History::isRecordedAsWhole(EditedList which) const {
    return recording_ && which != EditedList::Program && recording_->page() == which;
}

void History::onAdded(EditedList which, const QString& name, const QObject* sender) {
    if (recording_ && which == EditedList::Program) {
        recording_->added(name);
    } else if (sender != this && !isRecordedAsWhole(which)) {
        changedElsewhere();
    }
}

void History::onRemoved(EditedList which, const QString& name, const QObject* sender) {
    if (recording_ && which == EditedList::Program) {
        recording_->removed(name);
    } else if (sender != this && !isRecordedAsWhole(which)) {
        changedElsewhere();
    }
}

void History::onChanged(EditedList which, const QObject* sender) {
    if (recording_ && which == EditedList::Program) {
        recording_->changed();
    } else if (sender != this && !isRecordedAsWhole(which)) {
        changedElsewhere();
    }
}

void History::changedElsewhere() {
    if (restoring_) {
        isIntact_ = false;  // the stack is at work
    } else {
        clear();
    }
}

void History::clear() {
    if (stack_.count() > 0) {
        stack_.clear();
    }
}

// --- Undoing --------------------------------------------------------------------------------------

std::optional<History::Step> History::next(Way way) const {
    const int index = way == Way::Undo ? stack_.index() - 1 : stack_.index();
    if (index < 0 || index >= stack_.count()) {
        return std::nullopt;
    }
    const auto* const command = static_cast<const Command*>(stack_.command(index));
    return Step{command->page(), command->text()};
}

bool History::go(Way way) {
    if (isRunning() || restoring_ || recording_ || !next(way)) {
        return false;
    }
    restoring_ = true;
    isIntact_ = true;
    way == Way::Undo ? stack_.undo() : stack_.redo();
    restoring_ = false;
    if (!isIntact_) {
        clear();
        showMessage(QMessageBox::Warning, tr("提示"), tr("内容已在别处更改，之前的步骤不能再撤销。"));
    }
    emit restored(what_);
    return true;
}

void History::setMover(QObject* owner, const Mover& mover) {
    moverOwner_ = owner;
    mover_ = mover;
}

bool History::carryOutOne(const Change& change, bool forward) {
    if (change.kind != Change::Kind::Move) {
        return carryOut(this, change, forward);
    }
    const int from = forward ? change.row : change.to, to = forward ? change.to : change.row;
    ModuleObject* const list = listOf(change.list);
    if (std::max(from, to) >= list->size()) {
        return false;
    }
    if (moverOwner_) {
        mover_(this, from, to);
    } else {
        list->reorder(this, from, to);
    }
    return true;
}

void History::restore(const Changes& changes, EditedList page, bool forward) {
    switchOffPorts(this, changes);
    what_ = {page, {}, -1};
    const int count = int(changes.size());
    for (int i = 0; i < count && isIntact_; ++i) {
        const Change& change = changes[std::size_t(forward ? i : count - 1 - i)];
        isIntact_ = carryOutOne(change, forward) && isIntact_;
        const int row = shownRow(change, forward);
        if (change.list == page && (what_.row < 0 || row < what_.row)) {
            what_.row = row;
        }
        if (change.list == EditedList::Program && row >= 0) {
            what_.lines.append(row);
        }
    }
    std::sort(what_.lines.begin(), what_.lines.end());
    what_.lines.erase(std::unique(what_.lines.begin(), what_.lines.end()), what_.lines.end());
    for (const Change& change : changes) {
        if (change.list != EditedList::Program) {
            saveLater(change.list);
        }
    }
}

/// Once for all steps that are undone in one go.
void History::saveLater(EditedList which) {
    if (unsaved_.empty()) {
        QMetaObject::invokeMethod(this, &History::saveNow, Qt::QueuedConnection);
    }
    unsaved_.insert(which);
}

void History::saveNow() {
    const std::set<EditedList> lists = std::exchange(unsaved_, {});
    for (const EditedList which : lists) {
        saveSettings(settingsOf(which));
    }
}

}  // namespace lumo
