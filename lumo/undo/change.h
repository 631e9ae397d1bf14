#pragma once

#include "module/host.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QString>

#include <vector>

namespace lumo {

/// The lists of the tree whose edits can be undone. Each is edited on a page of its own.
enum class EditedList { Program, Ports, Params, Stations };

constexpr EditedList editedLists[] = {EditedList::Program, EditedList::Ports, EditedList::Params,
                                      EditedList::Stations};

[[nodiscard]] ModuleObject* listOf(EditedList which);

/// One change of a list: a row that came, went or moved, or a value in a row. Contents are kept as JSON, so
/// that no node of the tree is needed later.
struct Change {
    enum class Kind { Insert, Remove, Move, Write };

    EditedList list = EditedList::Program;
    Kind kind = Kind::Write;
    int row = -1;
    int to = -1;        ///< of Move: the row afterwards
    QString path;       ///< of Write: below the row; empty for the whole row
    QJsonValue before;  ///< of Remove and Write
    QJsonValue after;   ///< of Insert and Write

    [[nodiscard]] static Change ofRow(EditedList list, Kind kind, int row) {
        return {list, kind, row, -1, QString(), QJsonValue(), QJsonValue()};
    }
};

using Changes = std::vector<Change>;

/// Appends the writes that turn `before` into `after`, as few and as deep as possible. `place` tells list,
/// row and path.
void appendWrites(Changes* changes, const Change& place, const QJsonValue& before, const QJsonValue& after);
/// Appends what turns one content of a list into another. Rows that are alike at both ends stay as they are.
void appendRows(Changes* changes, EditedList which, const QJsonArray& before, const QJsonArray& after);

/// Carries out a change, or takes it back with `forward` false. Writes as an edit by hand does: a row that
/// stays is the same object afterwards. False, and nothing written, where the list has no such row or value.
/// A move is not for it.
[[nodiscard]] bool carryOut(QObject* sender, const Change& change, bool forward);

/// The row that shows the change after it was carried out or taken back.
[[nodiscard]] int shownRow(const Change& change, bool forward);

}  // namespace lumo
