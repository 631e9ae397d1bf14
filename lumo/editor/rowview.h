#pragma once

#include "editor/linefield.h"
#include "editor/rowgrid.h"
#include "editor/rowpainter.h"
#include "editor/seamrows.h"
#include "editor/toolrows.h"
#include "module/host.h"

#include <QTableWidget>

namespace lumo {

class InlineEdit;
class ListHeader;
class ProgramCheck;

/// The look of the program's list: compact rows, one of which may be open with its full text, in columns that
/// follow width, scale and language; and the fields of the selected row, which a tap opens for editing.
///
/// The class that fills the table calls rowChanged() for each row. The texts in the cells are not drawn.
class RowView : public QTableWidget {
    Q_OBJECT
    /// The view paints other texts than its cells hold.
    Q_PROPERTY(bool drawsRows READ drawsRows CONSTANT)
    Q_PROPERTY(bool fullRows READ isFullRows WRITE setFullRows)
public:
    enum Column { MarkerColumn, LineColumn, CommandColumn, DetailColumn, NoteColumn, RunColumn };

    explicit RowView(QWidget* parent = nullptr);
    ~RowView() override;

    /// Lines can be changed in the list and beside it while this button is enabled; at first never. It must
    /// outlive the view.
    void setEditLock(QWidget* button);
    [[nodiscard]] bool isEditable() const;
    /// The selected line is shown in full beside the list: its row stays compact.
    void setInspected(bool inspected);
    /// Shows the full text of each statement, or the compact rows of the beginning.
    void setFullRows(bool full);
    [[nodiscard]] bool isFullRows() const { return isFull_; }
    [[nodiscard]] static bool drawsRows() { return true; }
    /// Where the lines stand in their seams.
    [[nodiscard]] const SeamRows& seams() const { return seams_; }
    /// Marks the lines that have findings; the check must outlive the view.
    void showFindings(const ProgramCheck* check);

    /// The statement of a row has other values. Ignores a row that does not exist.
    virtual void changeStatement(int row) = 0;
    /// The statement that a row shows.
    [[nodiscard]] virtual ModuleObject* statementAt(int row) const = 0;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    /// Where a field of a row is, in the viewport.
    [[nodiscard]] QRect fieldPlace(int row, LineField field) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// isEditable() is another.
    void editableChanged();

protected:
    // --- For the filler -----------------------------------------------------------------------

    /// To be called once, when there are columns.
    void beginRows();
    /// All rows show other statements.
    void resetRows(const QList<ModuleObject*>& statements);
    void rowInserted(int row);
    void rowRemoved(int row);
    /// The rows exist, but their statements are not known yet.
    void forgetRows() { known_ = -1; }
    /// The row shows this statement, as it is now.
    void rowChanged(int row, const ModuleObject* statement);
    /// Rows have changed places; rowChanged() was called for each.
    void rowsMoved();
    void updateRow(int row);

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void updateGeometries() override;

private:
    [[nodiscard]] bool knowsRows() const { return known_ == rowCount(); }
    [[nodiscard]] int onlySelected() const;
    [[nodiscard]] RowForm formOf(int row) const;
    [[nodiscard]] RowPainter::State stateOf(int row) const;
    [[nodiscard]] RowShape shapeOf(int row) const;
    [[nodiscard]] int heightOf(int row) const;
    [[nodiscard]] LineField fieldAt(const QPoint& point, int* row) const;
    void takeKind(int row, const ModuleObject* statement);
    void fitColumns();
    void refit();
    [[nodiscard]] QString presentLook() const;
    void sizeRow(int row);
    void sizeAllRows();
    void toolsChangedFrom(int row);
    void openSelected();
    void lockChanged();
    void updateRows(int first, int last);

    RowGrid grid_;
    RowPainter painter_;
    SeamRows seams_;
    ToolRows tools_;
    ListHeader* header_;
    InlineEdit* inline_ = nullptr;
    const ProgramCheck* check_ = nullptr;
    QWidget* lock_ = nullptr;
    int known_ = 0;  ///< rows whose statements were told
    int joints_ = 0;
    bool hasPlace_ = false;  ///< the layout has given the view its width
    bool isInspected_ = false;
    bool isFull_ = false;
    int opened_ = -1;  ///< the selected row, while it shows its full text
    QString look_;     ///< what the columns depend on beside the width
    LineField pressed_ = LineField::None;
    int pressedRow_ = -1;
};

}  // namespace lumo
