#pragma once

#include "module/host.h"

#include <QPersistentModelIndex>
#include <QTableWidget>
#include <QTimer>

class RowDelegate;

namespace lumo {
class ProgramCheck;
struct Restored;
}  // namespace lumo

/// The table of the program: one row for each statement, following the notifications of `lumo.program`.
///
/// It keeps only the texts that it shows. A rebuild sizes all rows; other changes size the changed row only.
/// The rows of a long program get no cells before the table is first visible.
class ProgramTable : public QTableWidget {
    Q_OBJECT
public:
    enum Column { MarkerColumn, LineColumn, CommandColumn, DetailColumn, NoteColumn, RunColumn };

    explicit ProgramTable(QWidget* parent = nullptr);

    /// Begins to show `lumo.program`. To be called once, after the form has made the columns.
    void follow();
    /// Lines can be changed in the list and beside it while this button is enabled; at first never. It must
    /// outlive the table.
    void setEditLock(QWidget* button);
    [[nodiscard]] bool isEditable() const;
    /// The selected line is shown in full beside the list: its row stays compact.
    void setInspected(bool inspected);
    /// Shows the full text of each statement, or the compact rows of the beginning.
    void setFullRows(bool full);
    [[nodiscard]] bool isFullRows() const { return isFull_; }

    /// Marks the lines that have findings; the check must outlive the table.
    void showFindings(const lumo::ProgramCheck* check);
    [[nodiscard]] static ModuleObject* program();

    void addStatement(int row);
    void delStatement(int row);
    /// Shows the present texts of a statement. Ignores a row that does not exist.
    void changeStatement(int row);
    /// Shows the present texts of every statement.
    void changeStatements();
    /// Shows whether a statement is executed, also for one that shows nothing else.
    void showRunFlag(int row);
    /// Moves a statement of the program and redraws the rows between, instead of all.
    void moveStatement(QObject* sender, int from, int to);

    /// The first selected row, -1 when none is.
    [[nodiscard]] int selectedRow() const;
    /// The selected rows in their order.
    [[nodiscard]] QList<QModelIndex> selectedRows() const;
    /// Selects the row and nothing else. A row that does not exist leaves the selection as it is.
    void selectOnly(int row);
    /// Shows the running-line marker in this row only; in none if there is no such row. Constant time.
    void setMarker(int row);

signals:
    /// The rows have followed a change of the program or of a statement.
    void programShown();
    /// A statement and its row have another place; the rows between have moved by one.
    void rowMoved(int from, int to);
    /// The rows show the statements of another program, or in another order.
    void rebuilt();
    /// isEditable() is another.
    void editableChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void onChanged();
    void onAdded(const QString& name);
    void onRemoved(const QString& name);
    void showRestored(const lumo::Restored& what);
    /// `leaving`: a child that is about to be removed and gets no row.
    void rebuild(const ModuleObject* leaving = nullptr);
    void fillRows(const QList<ModuleObject*>& statements);
    void createCells(int row);
    void renumber(int fromRow);
    void drawRow(int row, const ModuleObject* statement);
    bool drawTexts(int row, const ModuleObject* statement);
    [[nodiscard]] bool showsOtherThan(int row, const ModuleObject* statement) const;
    void drawRunFlag(int row, const ModuleObject* statement);
    void drawCell(int row, Column column, const QString& text);
    void fitColumns();
    [[nodiscard]] int captionWidth(Column column) const;
    [[nodiscard]] int runFlagWidth() const;

    RowDelegate* delegate_;
    QWidget* lock_ = nullptr;
    bool isInspected_ = false;
    bool isFull_ = false;
    QPersistentModelIndex marker_;
    QTimer sizeRows_;
    bool hasPlace_ = false;  ///< the layout has given the table its width
    bool wasShown_ = false;
    bool isEmpty_ = false;  ///< the rows have no cells
    bool moving_ = false;
    int changesWhileMoving_ = 0;
};
