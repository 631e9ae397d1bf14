#include "editor/programtable.h"

#include "editor/programcheck.h"
#include "editor/programwidget.h"
#include "editor/rowdelegate.h"
#include "editor/statementtext.h"
#include "program/statement.h"
#include "program/words.h"
#include "undo/history.h"

#include <QHeaderView>
#include <QResizeEvent>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>

using namespace lumo;
using namespace prog;

namespace {

constexpr int widestNote = 200;
/// Notes get this width even if the details become narrower than usual.
constexpr int usualNote = 90;
constexpr int leastDetails = 180;
/// Details get this width before notes become wider than their caption.
constexpr int usualDetails = 320;
constexpr int mostDetails = 520;
/// The rows of longer programs are filled only when somebody sees them.
constexpr int longProgram = 1000;
/// All rows are sized when the width of a column has not changed for this time.
constexpr int restMs = 200;

}  // namespace

ProgramTable::ProgramTable(QWidget* parent) : QTableWidget(parent), delegate_(new RowDelegate(this)) {
    setItemDelegate(delegate_);
    setTabKeyNavigation(false);  // Tab moves on to the buttons, not to the next cell
    sizeRows_.setSingleShot(true);
    sizeRows_.setInterval(restMs);
    connect(&sizeRows_, &QTimer::timeout, this, &ProgramTable::resizeRowsToContents);
}

void ProgramTable::follow() {
    QHeaderView* const header = horizontalHeader();
    header->setTextElideMode(Qt::ElideNone);
    header->setDefaultAlignment(Qt::Alignment(QFlag(int(Qt::AlignCenter) | int(Qt::TextWordWrap))));
    for (const auto& [column, width] : {std::pair{MarkerColumn, 5}, std::pair{LineColumn, 5},
                                        std::pair{CommandColumn, 100}, std::pair{DetailColumn, 400}}) {
        setColumnWidth(column, width);
    }
    rebuild();
    connect(header, &QHeaderView::sectionResized, this, [this](int column) {
        if (column == DetailColumn || column == NoteColumn) {
            sizeRows_.start();
        }
    });
    connect(program(), &ModuleObject::changed, this, &ProgramTable::onChanged);
    connect(program(), &ModuleObject::added, this, &ProgramTable::onAdded);
    connect(program(), &ModuleObject::removed, this, &ProgramTable::onRemoved);
    History::instance()->setMover(
        this, [this](QObject* sender, int from, int to) { moveStatement(sender, from, to); });
    connect(History::instance(), &History::restored, this, &ProgramTable::showRestored);
}

void ProgramTable::setEditLock(QWidget* button) {
    lock_ = button;
    button->installEventFilter(this);
}

bool ProgramTable::isEditable() const {
    return lock_ && lock_->isEnabled();
}

bool ProgramTable::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lock_ && event->type() == QEvent::EnabledChange) {
        emit editableChanged();
    }
    return QTableWidget::eventFilter(watched, event);
}

void ProgramTable::setInspected(bool inspected) {
    isInspected_ = inspected;
}

void ProgramTable::setFullRows(bool full) {
    isFull_ = full;
}

void ProgramTable::showFindings(const lumo::ProgramCheck* check) {
    delegate_->setCheck(check);
    connect(check, &lumo::ProgramCheck::changed, viewport(), QOverload<>::of(&QWidget::update));
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
    resizeRowToContents(row);
    emit programShown();
}

void ProgramTable::onRemoved(const QString& name) {
    const ModuleObject* const leaving = program()->c(name);
    if (isEmpty_ || rowCount() != program()->cmobjCount()) {
        rebuild(leaving);
        return;
    }
    const int row = leaving->indexInPmobj();
    delStatement(row);
    renumber(row);
    emit programShown();
}

void ProgramTable::rebuild(const ModuleObject* leaving) {
    const int count = program()->cmobjCount() - (leaving ? 1 : 0);
    isEmpty_ = count > longProgram && !wasShown_;
    if (isEmpty_) {
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
    fitColumns();
    resizeRowsToContents();
    sizeRows_.stop();
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
        resizeRowToContents(row);
    }
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
}

void ProgramTable::delStatement(int row) {
    removeRow(row);
}

void ProgramTable::changeStatement(int row) {
    if (isEmpty_ || row < 0 || row >= rowCount()) {
        return;
    }
    drawTexts(row, program()->c(row));
    resizeRowToContents(row);
    emit programShown();
}

void ProgramTable::changeStatements() {
    if (isEmpty_) {
        return;
    }
    const QList<ModuleObject*> statements = program()->cmobjs();
    for (int row = 0; row < std::min(rowCount(), statements.size()); ++row) {
        if (showsOtherThan(row, statements.at(row))) {
            drawTexts(row, statements.at(row));
            resizeRowToContents(row);
        }
        drawRunFlag(row, statements.at(row));
    }
    emit programShown();
}

bool ProgramTable::showsOtherThan(int row, const ModuleObject* statement) const {
    return item(row, DetailColumn)->text() != statementDetails(statement) ||
           item(row, NoteColumn)->text() != statement->c(field::note)->getString();
}

void ProgramTable::showRunFlag(int row) {
    if (!isEmpty_ && row >= 0 && row < rowCount()) {
        drawRunFlag(row, program()->c(row));
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
    const bool executed = isExecuted(statement);
    drawCell(row, RunColumn, executed ? ProgramWidget::tr("运行") : ProgramWidget::tr("不运行"));
    item(row, RunColumn)->setForeground(executed ? Qt::black : Qt::red);
}

void ProgramTable::drawCell(int row, Column column, const QString& text) {
    if (!isEmpty_) {
        item(row, column)->setText(text);
    }
}

/// Divides the width that captions and commands leave between details and notes.
void ProgramTable::fitColumns() {
    resizeColumnToContents(NoteColumn);
    if (!hasPlace_) {
        return;
    }
    const int notes = columnWidth(NoteColumn);
    const int leastNote = std::max(captionWidth(NoteColumn), std::min(notes, usualNote));
    int room = viewport()->width() - runFlagWidth();
    for (const Column column : {MarkerColumn, LineColumn, CommandColumn}) {
        setColumnWidth(column, std::max(columnWidth(column), captionWidth(column)));
        room -= columnWidth(column);
    }
    setColumnWidth(NoteColumn, std::min({notes, widestNote, std::max(leastNote, room - usualDetails)}));
    setColumnWidth(DetailColumn, std::clamp(room - columnWidth(NoteColumn), leastDetails, mostDetails));
    // The header stretches its last section when the header is resized, not when another section is.
    setColumnWidth(RunColumn,
                   runFlagWidth() + std::max(0, room - columnWidth(NoteColumn) - columnWidth(DetailColumn)));
}

/// Width of the widest word: a caption of several words is wrapped.
int ProgramTable::captionWidth(Column column) const {
    constexpr int aroundCaption = 12;
    const QFontMetrics metrics = horizontalHeader()->fontMetrics();
    const QStringList words = horizontalHeaderItem(column)->text().split(QLatin1Char(' '));
    int width = 0;
    for (const QString& word : words) {
        width = std::max(width, metrics.horizontalAdvance(word));
    }
    return std::max(width + aroundCaption, horizontalHeader()->minimumSectionSize());
}

/// Wide enough for both words of the flag.
int ProgramTable::runFlagWidth() const {
    constexpr int aroundFlag = 14;
    const int flag = std::max(fontMetrics().horizontalAdvance(ProgramWidget::tr("运行")),
                              fontMetrics().horizontalAdvance(ProgramWidget::tr("不运行")));
    return std::max(flag + aroundFlag, captionWidth(RunColumn));
}

void ProgramTable::resizeEvent(QResizeEvent* event) {
    QTableWidget::resizeEvent(event);
    hasPlace_ = true;
    if (event->oldSize().width() != event->size().width()) {
        fitColumns();
    }
}

void ProgramTable::showEvent(QShowEvent* event) {
    QTableWidget::showEvent(event);
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
