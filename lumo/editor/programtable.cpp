#include "editor/programtable.h"

#include "editor/programwidget.h"
#include "editor/statementtext.h"
#include "equipment/handlit.h"
#include "program/statement.h"
#include "program/words.h"
#include "undo/history.h"

#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>

using namespace lumo;
using namespace prog;

namespace {

/// The rows of longer programs are filled only when somebody sees them.
constexpr int longProgram = 1000;
/// So many are compared with their statements in about 0.2 ms. A view of 2560x1440 shows fewer.
constexpr int rowsAtOnce = 50;

QString runFlagText(const ModuleObject* statement) {
    return isExecuted(statement) ? ProgramWidget::tr("运行") : ProgramWidget::tr("不运行");
}

}  // namespace

ProgramTable::ProgramTable(QWidget* parent) : RowView(parent) {
    catchUp_.setSingleShot(true);
    catchUp_.setInterval(0);
    connect(&catchUp_, &QTimer::timeout, this, &ProgramTable::catchUpNext);
}

void ProgramTable::follow() {
    beginRows();
    rebuild();
    connect(program(), &ModuleObject::changed, this, &ProgramTable::onChanged);
    connect(program(), &ModuleObject::added, this, &ProgramTable::onAdded);
    connect(program(), &ModuleObject::removed, this, &ProgramTable::onRemoved);
    History::instance()->setMover(
        this, [this](QObject* sender, int from, int to) { moveStatement(sender, from, to); });
    connect(History::instance(), &History::restored, this, &ProgramTable::showRestored);
}

ModuleObject* ProgramTable::program() {
    return m(key::program);
}

// --- Following the tree ---------------------------------------------------------------------------

void ProgramTable::onChanged() {
    if (moving_) {
        ++changesWhileMoving_;
        return;
    }
    rebuild();
}

void ProgramTable::onAdded(const QString& name) {
    // Statements inserted without a notification, or by another listener of this one, have no row yet.
    if (isEmpty_ || rowCount() + 1 != program()->cmobjCount()) {
        rebuild();
        return;
    }
    const ModuleObject* const statement = program()->c(name);
    const int row = statement->indexInPmobj();
    addStatement(row);
    renumber(row);
    drawRow(row, statement);
    rowChanged(row, statement);
    emit programShown();
}

void ProgramTable::onRemoved(const QString& name) {
    const ModuleObject* const leaving = program()->c(name);
    const QScopedValueRollback<int> isLeaving(leaving_, leaving->indexInPmobj());
    if (isEmpty_ || rowCount() != program()->cmobjCount()) {
        rebuild(leaving);
        return;
    }
    delStatement(leaving_);
    renumber(leaving_);
    emit programShown();
}

ModuleObject* ProgramTable::statementAt(int row) const {
    return program()->c(leaving_ >= 0 && row >= leaving_ ? row + 1 : row);
}

void ProgramTable::rebuild(const ModuleObject* leaving) {
    const int count = program()->cmobjCount() - (leaving ? 1 : 0);
    isEmpty_ = count > longProgram && !wasShown_;
    if (isEmpty_) {
        forgetRows();
        setRowCount(count);
    } else {
        QList<ModuleObject*> statements = program()->cmobjs();
        statements.removeOne(const_cast<ModuleObject*>(leaving));
        fillRows(statements);
    }
    emit rebuilt();
    emit programShown();
}

void ProgramTable::fillRows(const QList<ModuleObject*>& statements) {
    const int scrolled = verticalScrollBar()->value();
    setRowCount(statements.size());
    {
        const QSignalBlocker oneUpdateForAll(model());
        for (int row = 0; row < statements.size(); ++row) {
            createCells(row);
            drawRow(row, statements.at(row));
        }
        renumber(0);
    }
    resetRows(statements);
    verticalScrollBar()->setValue(scrolled);
}

void ProgramTable::moveStatement(QObject* sender, int from, int to) {
    changesWhileMoving_ = 0;
    moving_ = true;
    program()->reorder(sender, from, to);
    moving_ = false;
    if (isEmpty_ || changesWhileMoving_ != 1 || rowCount() != program()->cmobjCount()) {
        rebuild();  // a listener changed the program
        return;
    }
    for (int row = std::min(from, to); row <= std::max(from, to); ++row) {
        drawRow(row, program()->c(row));
        rowChanged(row, program()->c(row));
    }
    rowsMoved();
    emit rowMoved(from, to);
    emit programShown();
}

/// Selects the lines that an undo or a redo has changed, and brings the first into view.
void ProgramTable::showRestored(const Restored& what) {
    if (what.lines.size() == 1) {
        changeStatement(what.lines.first());
    } else if (!what.lines.isEmpty()) {
        changeStatements();
    }
    if (what.page != EditedList::Program || what.lines.isEmpty()) {
        return;
    }
    selectOnly(what.lines.first());
    if (selectionMode() == MultiSelection) {
        QItemSelection lines;
        for (const int line : what.lines) {
            lines.select(model()->index(line, MarkerColumn), model()->index(line, RunColumn));
        }
        selectionModel()->select(lines, QItemSelectionModel::ClearAndSelect);
    }
    scrollTo(model()->index(what.lines.first(), LineColumn));
}

// --- Rows -----------------------------------------------------------------------------------------

void ProgramTable::addStatement(int row) {
    insertRow(row);
    createCells(row);
    rowInserted(row);
}

void ProgramTable::delStatement(int row) {
    removeRow(row);
    rowRemoved(row);
    caughtUp_ = 0;
}

void ProgramTable::changeStatement(int row) {
    if (isEmpty_ || row < 0 || row >= rowCount()) {
        return;
    }
    drawTexts(row, program()->c(row));
    rowChanged(row, program()->c(row));
    emit programShown();
}

void ProgramTable::changeStatements() {
    if (isEmpty_) {
        return;
    }
    catchUp_.stop();
    changeRows(0, rowCount());
    emit programShown();
}

void ProgramTable::changeRows(int first, int end) {
    const QList<ModuleObject*> statements = program()->cmobjs();
    for (int row = std::max(first, 0); row < std::min({end, rowCount(), statements.size()}); ++row) {
        const ModuleObject* const statement = statements.at(row);
        if (showsOtherThan(row, statement)) {
            drawTexts(row, statement);
            drawRunFlag(row, statement);
            rowChanged(row, statement);
        }
    }
}

void ProgramTable::catchUp() {
    if (!mustStopAtOnce()) {
        changeStatements();
    } else if (!isEmpty_) {
        const int first = rowAt(0);
        changeRows(first, first + rowsAtOnce);
        caughtUp_ = 0;
        catchUp_.start();
    }
}

void ProgramTable::catchUpNext() {
    if (isEmpty_) {
        return;
    }
    changeRows(caughtUp_, caughtUp_ + rowsAtOnce);
    caughtUp_ += rowsAtOnce;
    if (caughtUp_ < rowCount()) {
        catchUp_.start();
    } else {
        emit programShown();
    }
}

bool ProgramTable::showsOtherThan(int row, const ModuleObject* statement) const {
    return item(row, DetailColumn)->text() != statementDetails(statement) ||
           item(row, NoteColumn)->text() != statement->c(field::note)->getString() ||
           item(row, RunColumn)->text() != runFlagText(statement);
}

void ProgramTable::showRunFlag(int row) {
    if (!isEmpty_ && row >= 0 && row < rowCount()) {
        drawRunFlag(row, program()->c(row));
        rowChanged(row, program()->c(row));
    }
}

void ProgramTable::createCells(int row) {
    for (int column = 0; column < columnCount(); ++column) {
        if (!item(row, column)) {
            setItem(row, column, new QTableWidgetItem);
        }
    }
}

void ProgramTable::renumber(int fromRow) {
    for (int row = fromRow; row < rowCount(); ++row) {
        drawCell(row, LineColumn, QString::number(row + 1));
    }
}

/// Draws a row that may show the texts of another statement.
void ProgramTable::drawRow(int row, const ModuleObject* statement) {
    if (!drawTexts(row, statement)) {
        drawCell(row, DetailColumn, QString());
        drawCell(row, NoteColumn, QString());
        drawRunFlag(row, statement);
    }
}

/// False for a statement that shows only its command: the other cells are not changed.
bool ProgramTable::drawTexts(int row, const ModuleObject* statement) {
    drawCell(row, CommandColumn, type2cn(statement->c(field::type)->getString()));
    const QString details = statementDetails(statement);
    if (details.isNull()) {
        return false;
    }
    drawCell(row, DetailColumn, details);
    drawCell(row, NoteColumn, statement->c(field::note)->getString());
    drawRunFlag(row, statement);
    return true;
}

void ProgramTable::drawRunFlag(int row, const ModuleObject* statement) {
    drawCell(row, RunColumn, runFlagText(statement));
    item(row, RunColumn)->setForeground(isExecuted(statement) ? Qt::black : Qt::red);
}

void ProgramTable::drawCell(int row, Column column, const QString& text) {
    if (!isEmpty_) {
        item(row, column)->setText(text);
    }
}

void ProgramTable::showEvent(QShowEvent* event) {
    RowView::showEvent(event);
    wasShown_ = true;
    if (!isEmpty_) {
        return;
    }
    rebuild();
    if (marker_.isValid()) {
        setMarker(marker_.row());
    }
}

// --- Selection and marker -------------------------------------------------------------------------

int ProgramTable::selectedRow() const {
    const QList<QModelIndex> rows = selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

QList<QModelIndex> ProgramTable::selectedRows() const {
    QList<QModelIndex> rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ProgramTable::selectOnly(int row) {
    if (row >= 0 && row < rowCount()) {
        selectionModel()->setCurrentIndex(model()->index(row, MarkerColumn),
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
}

void ProgramTable::setMarker(int row) {
    if (marker_.isValid()) {
        drawCell(marker_.row(), MarkerColumn, QString());
    }
    marker_ = QPersistentModelIndex();
    if (row >= 0 && row < rowCount()) {
        drawCell(row, MarkerColumn, QStringLiteral("-->"));
        marker_ = model()->index(row, MarkerColumn);
    }
}
