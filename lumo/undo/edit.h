#pragma once

#include "undo/change.h"

#include <QString>

namespace lumo {

/// One action of the operator, which becomes one step of the history. Lives on the stack while the action
/// writes to the tree. An edit within another one belongs to that.
///
/// Rows that come and go are recorded by themselves, and so is every change of the list of the page, unless
/// the page is the program's: its statements are told before they are written, with touch().
class Edit {
public:
    /// `page`: whose page the action belongs to. `text` names the action in the operator's language.
    Edit(EditedList page, const QString& text);
    ~Edit();
    Edit(const Edit&) = delete;
    Edit& operator=(const Edit&) = delete;

    /// Something at or below this node of the program is about to be written. Does nothing outside of an
    /// edit.
    static void touch(const ModuleObject* node);
    /// The program's row `from` is about to be moved.
    static void moving(int from, int to);
};

}  // namespace lumo
