#pragma once

#include "undo/change.h"

#include <QObject>
#include <QPointer>
#include <QUndoStack>
#include <QVector>

#include <functional>
#include <memory>
#include <optional>
#include <set>

namespace lumo {

class Recording;

/// What an undo or a redo has changed, for the pages that show it.
struct Restored {
    EditedList page = EditedList::Program;  ///< on which the action was
    QVector<int> lines;                     ///< of the program, ascending; without those that went
    int row = -1;                           ///< of the page's list: the first that changed; -1 for none
};

/// The steps that can be undone and redone: edits of the program, the ports, the parameter sets and the
/// stations, in one order. A child of the node `lumo`; outlives the pages.
///
/// An edit is recorded by lumo::Edit. Whatever else adds, removes or replaces rows of these lists (a project
/// that is opened, a host, a scenario) ends the history: the steps would meet other rows. Values that others
/// write leave it as it is: an undo restores the values that its own action changed.
///
/// Nothing is undone or redone while a program runs. Lists that their pages save at once are saved by an undo
/// and a redo, too, and a port that gets another assignment is switched off first.
class History : public QObject {
    Q_OBJECT
public:
    enum class Way { Undo, Redo };
    struct Step {
        EditedList page;
        QString text;
    };

    static History* instance();
    ~History() override;

    /// The step that would be undone or redone next; nothing where no step is left.
    [[nodiscard]] std::optional<Step> next(Way way) const;
    /// Undoes or redoes a step. False, and nothing changed, while a program runs or where no step is left.
    bool go(Way way);
    /// Forgets all steps.
    void clear();

    /// Who moves a row of the program, in place of the history, as long as `owner` lives: a table that
    /// redraws the rows between, and not all.
    using Mover = std::function<void(QObject* sender, int from, int to)>;
    void setMover(QObject* owner, const Mover& mover);

    // For Edit.
    void begin(EditedList page, const QString& text);
    void end();
    [[nodiscard]] Recording* recording() const { return recording_.get(); }

signals:
    /// Another step is the next one.
    void changed();
    /// An undo or a redo is over.
    void restored(const lumo::Restored& what);

private:
    class Command;

    explicit History(ModuleObject* lumo);
    void follow(EditedList which);
    void onAdded(EditedList which, const QString& name, const QObject* sender);
    void onRemoved(EditedList which, const QString& name, const QObject* sender);
    void onChanged(EditedList which, const QObject* sender);
    [[nodiscard]] bool isRecordedAsWhole(EditedList which) const;
    void changedElsewhere();
    void restore(const Changes& changes, EditedList page, bool forward);
    void saveLater(EditedList which);
    void saveNow();
    bool carryOutOne(const Change& change, bool forward);

    QUndoStack stack_;
    std::unique_ptr<Recording> recording_;
    int depth_ = 0;  ///< of edits
    QPointer<QObject> moverOwner_;
    Mover mover_;
    std::set<EditedList> unsaved_;  ///< lists whose files are to be written
    bool restoring_ = false;
    bool isIntact_ = true;  ///< the lists are as the steps expect them
    Restored what_;
};

}  // namespace lumo
