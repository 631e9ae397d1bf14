#pragma once

#include "undo/change.h"

#include <QMultiHash>
#include <QPointer>

namespace lumo {

/// What one action of the operator changes, while it goes on.
///
/// Rows of the program that come and go are learned from the tree. A value is compared with what it was when
/// it was touched, so an action costs as much as it changes. The other lists are short: they are compared as
/// a whole, where the action is one of their page.
class Recording {
public:
    Recording(EditedList page, const QString& text);

    [[nodiscard]] EditedList page() const { return page_; }
    [[nodiscard]] const QString& text() const { return text_; }

    /// Something at or below this node of the program is about to be written. Any other node is ignored.
    void touch(const ModuleObject* node);
    /// The next `changed` of the program moves this row.
    void moving(int from, int to);

    // The program's notifications.
    void added(const QString& name);
    void removed(const QString& name);
    void changed();

    /// What was changed; nothing where the program was replaced meanwhile.
    [[nodiscard]] Changes finish();
    /// Whether the program was replaced meanwhile: earlier steps belong to another program, too.
    [[nodiscard]] bool isReplaced() const { return isReplaced_; }

private:
    struct Touched {
        QPointer<const ModuleObject> node;
        QJsonValue before;
    };
    struct Inserted {
        QPointer<const ModuleObject> node;
        std::size_t change;  ///< which gets the content when the action is over
    };
    void compareTouched(int insertedRow = -1);
    void compare(Touched& touched, int insertedRow = -1);
    void keepInserted(const ModuleObject* leaving = nullptr);
    [[nodiscard]] bool isInserted(const ModuleObject* statement) const;

    const EditedList page_;
    const QString text_;
    const QJsonArray before_;  ///< of the page's list; of the program nothing
    const ModuleObject* program_;
    Changes changes_;
    std::vector<Touched> touched_;
    QMultiHash<const ModuleObject*, std::size_t> byStatement_;  ///< positions in touched_
    std::vector<Inserted> inserted_;
    bool isMoving_ = false;
    bool isReplaced_ = false;
};

}  // namespace lumo
