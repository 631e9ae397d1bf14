#pragma once

#include "editor/rowview.h"
#include "module/host.h"

#include <QPersistentModelIndex>
#include <QTimer>

namespace lumo {
struct Restored;
}  // namespace lumo

/// The table of the program: one row for each statement, following the notifications of `lumo.program`.
///
/// Its cells hold the full texts of the statements; what is drawn of them is up to its base. The rows of a
/// long program get no cells before the table is first visible.
class ProgramTable : public lumo::RowView {
    Q_OBJECT
public:
    explicit ProgramTable(QWidget* parent = nullptr);

    /// Begins to show `lumo.program`. To be called once, after the form has made the columns.
    void follow();
    [[nodiscard]] static ModuleObject* program();

    [[nodiscard]] ModuleObject* statementAt(int row) const override;
    void addStatement(int row);
    void delStatement(int row);
    /// Shows the present texts of a statement. Ignores a row that does not exist.
    void changeStatement(int row) override;
    /// Shows the present texts of every statement.
    void changeStatements();
    /// The same; where a stop must not wait for a long program some rows at a time, those in view first.
    void catchUp();
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

protected:
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
    void changeRows(int first, int end);
    void catchUpNext();
    [[nodiscard]] bool showsOtherThan(int row, const ModuleObject* statement) const;
    void drawRunFlag(int row, const ModuleObject* statement);
    void drawCell(int row, Column column, const QString& text);

    QPersistentModelIndex marker_;
    bool wasShown_ = false;
    bool isEmpty_ = false;  ///< the rows have no cells
    bool moving_ = false;
    int leaving_ = -1;  ///< of the program: a statement that is about to be removed and has no row any more
    int changesWhileMoving_ = 0;
    int caughtUp_ = 0;  ///< rows that catchUp() has been through
    QTimer catchUp_;
};
