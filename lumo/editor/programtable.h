#pragma once

#include "module/host.h"

#include <QPersistentModelIndex>
#include <QTableWidget>
#include <QTimer>

/// The table of the program: one row a statement, following the notifications of `lumo.program`.
///
/// It keeps nothing of the program but the texts it shows. Rows are sized once when the table is built
/// anew; afterwards only the row that changed is.
class ProgramTable : public QTableWidget {
    Q_OBJECT
public:
    enum Column { MarkerColumn, LineColumn, CommandColumn, DetailColumn, NoteColumn, RunColumn };

    explicit ProgramTable(QWidget* parent = nullptr);

    /// Begins to show `lumo.program`. Call it once, when the columns are there.
    void follow();
    [[nodiscard]] static ModuleObject* program();

    void addStatement(int row);
    void delStatement(int row);
    /// Shows a statement's present texts. A row that does not exist is passed over.
    void changeStatement(int row);
    /// Shows the present texts of every statement.
    void changeStatements();
    /// Shows whether a statement is executed, also where it has nothing else to show.
    void showRunFlag(int row);
    /// Moves a statement of the program and redraws the rows between, instead of all.
    void moveStatement(QObject* sender, int from, int to);

    /// The first selected row, -1 when none is.
    [[nodiscard]] int selectedRow() const;
    /// The selected rows in their order.
    [[nodiscard]] QList<QModelIndex> selectedRows() const;
    /// Selects the row and nothing else. A row that does not exist leaves the selection as it is.
    void selectOnly(int row);
    /// Gives the cell of the running-line marker its text in a row and in no other; none when there is no
    /// such row. Costs the same in a short and a long program.
    void setMarker(int row);

signals:
    /// The rows have followed a change of the program or of a statement.
    void programShown();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void onChanged();
    void onAdded(const QString& name);
    void onRemoved(const QString& name);
    /// `leaving`: a child that is still there, but about to go.
    void rebuild(const ModuleObject* leaving = nullptr);
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

    QPersistentModelIndex marker_;
    QTimer sizeRows_;
    bool hasPlace_ = false;  ///< it was laid out, its width is known
    bool moving_ = false;
    int changesWhileMoving_ = 0;
};
