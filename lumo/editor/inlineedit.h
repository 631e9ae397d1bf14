#pragma once

#include "editor/linefield.h"

#include <QObject>
#include <QPointer>

class QLabel;

namespace lumo {

class RowView;

/// Edits speed, zone or remark of a line in its row of the list.
///
/// Enter takes the value and Escape leaves the old one. When the focus goes elsewhere, a value that can be
/// taken is taken; one that cannot is told and stays to be corrected. One entry is open at a time.
class InlineEdit : public QObject {
    Q_OBJECT
public:
    explicit InlineEdit(RowView* list);

    /// Opens the entry of a row that shows the field; false where its statement has no such field.
    bool open(int row, LineField field);
    [[nodiscard]] bool isOpen() const { return entry_ != nullptr; }
    /// Puts the entry over its row again, which may have moved; closes it when its statement has left.
    void place();
    /// Leaves the old value.
    void cancel() { close(); }
    /// The editor was locked, or the program replaced: what was typed is told and not taken.
    void abandon();
    /// The statement of this row is about to leave the program.
    void rowLeaves(int row);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void take();
    void close();
    void focusMoved(QWidget* now);
    [[nodiscard]] bool isOwn(const QWidget* widget) const;

    RowView* list_;
    QPointer<LineEntry> entry_;
    QPointer<QLabel> range_;  ///< what the entry takes, below it
    bool isTaking_ = false;
};

}  // namespace lumo
