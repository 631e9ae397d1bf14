#include "editor/rowview.h"

#include "editor/inlineedit.h"
#include "editor/listheader.h"
#include "editor/programcheck.h"
#include "editor/statementtext.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "program/words.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QToolTip>

#include <algorithm>

using namespace prog;

namespace lumo {

RowView::RowView(QWidget* parent)
    : QTableWidget(parent), painter_(grid_), header_(new ListHeader(grid_, this)) {
    setHorizontalHeader(header_);
    setShowGrid(false);
    setVerticalScrollMode(ScrollPerPixel);
    setTabKeyNavigation(false);  // Tab moves on to the buttons, not to the next cell
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The bar keeps its place, so that the columns stay; without anything to scroll its handle is not drawn.
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, verticalScrollBar(),
            [bar = verticalScrollBar()](int least, int most) { bar->setEnabled(most > least); });
    verticalScrollBar()->setEnabled(false);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);   // scrolling moves what is painted
    viewport()->setProperty("drawsFixedColours", true);  // the pure green of the marker
    inline_ = new InlineEdit(this);
    connect(&seams_, &SeamRows::changed, this, &RowView::updateRows);
}

RowView::~RowView() = default;

void RowView::setEditLock(QWidget* button) {
    lock_ = button;
    button->installEventFilter(this);
    lockChanged();
}

bool RowView::isEditable() const {
    return lock_ && lock_->isEnabled();
}

bool RowView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lock_ && event->type() == QEvent::EnabledChange) {
        lockChanged();
    }
    return QTableWidget::eventFilter(watched, event);
}

void RowView::lockChanged() {
    if (!isEditable()) {
        inline_->abandon();
    }
    openSelected();
    updateRow(onlySelected());
    emit editableChanged();
}

void RowView::setInspected(bool inspected) {
    isInspected_ = inspected;
    openSelected();
}

void RowView::setFullRows(bool full) {
    if (isFull_ != full) {
        isFull_ = full;
        opened_ = -1;
        sizeAllRows();
        openSelected();
    }
}

void RowView::showFindings(const ProgramCheck* check) {
    check_ = check;
    connect(check, &ProgramCheck::changed, viewport(), QOverload<>::of(&QWidget::update));
}

// --- Rows -----------------------------------------------------------------------------------------

void RowView::beginRows() {
    horizontalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setMinimumSectionSize(1);
    fitColumns();
}

void RowView::takeKind(int row, const ModuleObject* statement) {
    seams_.setKind(row, LineKind::of(Record(statement)));
    tools_.set(row, toolOf(statement));
}

void RowView::resetRows(const QList<ModuleObject*>& statements) {
    inline_->place();
    known_ = statements.size();
    joints_ = kordservice()->get(nullptr, key::sysInfo, field::jointNum)->getInt();
    seams_.reset(known_);
    tools_.reset(known_);
    painter_.forgetAll();
    for (int row = 0; row < known_; ++row) {
        takeKind(row, statements.at(row));
    }
    fitColumns();
    sizeAllRows();
    openSelected();
}

void RowView::rowInserted(int row) {
    seams_.insert(row);
    tools_.insert(row);
    ++known_;
    opened_ = -1;
    painter_.forgetAll();
    refit();
}

void RowView::rowRemoved(int row) {
    inline_->rowLeaves(row);
    seams_.remove(row);
    tools_.remove(row);
    --known_;
    opened_ = -1;
    painter_.forgetAll();
    refit();
    toolsChangedFrom(row);
    openSelected();
    inline_->place();
}

void RowView::rowChanged(int row, const ModuleObject* statement) {
    takeKind(row, statement);
    painter_.forget(row);
    sizeRow(row);
    toolsChangedFrom(row + 1);
    openSelected();
    updateRow(row);
}

void RowView::rowsMoved() {
    seams_.moved();
    inline_->place();
}

/// The next move below may show its tool now, or need not any more.
void RowView::toolsChangedFrom(int row) {
    const int next = tools_.nextFrom(row);
    if (next >= 0) {
        sizeRow(next);
        updateRow(next);
    }
}

int RowView::onlySelected() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.size() == 1 ? rows.first().row() : -1;
}

// --- Sizes ----------------------------------------------------------------------------------------

void RowView::fitColumns() {
    const QStringList captions = header_->captions();
    if (captions.size() != RowGrid::columns) {
        return;
    }
    grid_.fit(width(), viewport()->width(), rowCount(), captions);
    look_ = presentLook();
    for (int column = 0; column < RowGrid::columns; ++column) {
        setColumnHidden(column, grid_.columnWidth(column) == 0);
        if (grid_.columnWidth(column) > 0) {
            setColumnWidth(column, grid_.columnWidth(column));
        }
    }
    header_->setFont(grid_.headerFont());
    painter_.forgetAll();
    header_->updateGeometry();
    header_->viewport()->update();
}

/// Scale, language and the digits of the last row's number.
QString RowView::presentLook() const {
    return header_->captions().join(QLatin1Char('|')) + QString::number(look::factor()) +
           QString(QString::number(rowCount()).size(), QLatin1Char('#'));
}

void RowView::refit() {
    if (presentLook() != look_) {
        fitColumns();
        sizeAllRows();
    }
}

int RowView::heightOf(int row) const {
    const RowForm form = formOf(row);
    const ModuleObject* const statement = statementAt(row);
    if (row == opened_) {
        return shapeOf(row).height;
    }
    const QString details = form.isFull ? statementDetails(statement) : QString();
    if (details.isEmpty()) {
        return grid_.heightOf(RowLines::of(statement, form.showsTool, joints_).countIn(grid_));
    }
    const int notes = grid_.lineCount(statement->c(field::note)->getString().simplified(), grid_.noteWidth());
    const int lines = grid_.fullLineCount(details);
    return grid_.heightOfFull(grid_.isWide() ? std::max(lines, notes) : lines + notes + grid_.commandLines());
}

void RowView::sizeRow(int row) {
    if (row >= 0 && row < rowCount() && knowsRows()) {
        setRowHeight(row, heightOf(row));
    }
}

/// The first row in view stays where it is.
void RowView::sizeAllRows() {
    if (!knowsRows()) {
        return;
    }
    const int first = rowAt(0);
    const int offset = first >= 0 ? rowViewportPosition(first) : 0;
    {
        const QSignalBlocker oneUpdateForAll(verticalHeader());
        verticalHeader()->setUpdatesEnabled(false);
        for (int row = 0; row < rowCount(); ++row) {
            verticalHeader()->resizeSection(row, heightOf(row));
        }
        verticalHeader()->setUpdatesEnabled(true);
    }
    updateGeometries();
    if (first >= 0) {
        QScrollBar* const bar = verticalScrollBar();
        bar->setValue(bar->value() + rowViewportPosition(first) - offset);
    }
    painter_.forgetAll();
    viewport()->update();
}

/// Opens the selected row while nothing else shows it in full and it can be edited: rows stay as they are in
/// a run. The row under the finger stays where it is.
void RowView::openSelected() {
    const bool opens = !isInspected_ && isEditable() && knowsRows();
    const int now = opens ? onlySelected() : -1;
    if (now == opened_) {
        return;
    }
    const int before = opened_;
    opened_ = now;
    const int place = now >= 0 ? rowViewportPosition(now) : 0;
    sizeRow(before);
    sizeRow(now);
    if (now >= 0) {
        QScrollBar* const bar = verticalScrollBar();
        updateGeometries();
        bar->setValue(bar->value() + rowViewportPosition(now) - place);
        scrollTo(model()->index(now, MarkerColumn));
    }
}

void RowView::updateGeometries() {
    QTableWidget::updateGeometries();
    if (inline_) {
        inline_->place();
    }
}

/// A selected row that was in view stays in view.
void RowView::resizeEvent(QResizeEvent* event) {
    const int selected = onlySelected();
    const int place = selected >= 0 ? rowViewportPosition(selected) : -1;
    const bool wasInView = place >= 0 && place < event->oldSize().height();
    QTableWidget::resizeEvent(event);
    const bool isFirst = !hasPlace_;
    hasPlace_ = true;
    if (isFirst || event->oldSize().width() != event->size().width()) {
        fitColumns();
        sizeAllRows();
    }
    if (wasInView) {
        scrollTo(model()->index(selected, MarkerColumn));
    }
}

void RowView::changeEvent(QEvent* event) {
    QTableWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::LanguageChange) {
        refit();
    }
}

// --- Painting -------------------------------------------------------------------------------------

RowForm RowView::formOf(int row) const {
    RowForm form;
    form.isFull = isFull_ || row == opened_;
    form.hasFields = isEditable() && row == onlySelected() && (!form.isFull || row == opened_);
    form.showsTool = tools_.shows(row);
    return form;
}

RowShape RowView::shapeOf(int row) const {
    const ModuleObject* const statement = statementAt(row);
    return RowShape::of(grid_, statement, summaryOf(statement), formOf(row));
}

RowPainter::State RowView::stateOf(int row) const {
    RowPainter::State state;
    state.form = formOf(row);
    state.isSelected = selectionModel()->isRowSelected(row, QModelIndex());
    state.hasFocus = state.isSelected && hasFocus();
    const QTableWidgetItem* const marker = item(row, MarkerColumn);
    state.hasMarker = marker && !marker->text().isEmpty();
    state.isUntaught = check_ && check_->isUntaught(row);
    state.severity = check_ ? check_->worstAt(row) : std::nullopt;
    state.seam = seams_.at(row);
    return state;
}

void RowView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QRect area = event->rect();
    int end = area.top();
    const int first = knowsRows() ? rowAt(area.top()) : -1;
    for (int row = first; row >= 0 && row < rowCount() && end <= area.bottom(); ++row) {
        const QRect place(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
        if (event->region().intersects(place)) {
            painter_.paint(&painter, row, place, stateOf(row));
        }
        end = place.bottom() + 1;
    }
    if (end <= area.bottom()) {
        painter.fillRect(QRect(QPoint(area.left(), end), area.bottomRight()), QColor(look::white));
    }
}

void RowView::updateRow(int row) {
    if (row >= 0 && row < rowCount()) {
        viewport()->update(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
    }
}

void RowView::updateRows(int first, int last) {
    if (first == last) {
        updateRow(first);
    } else {
        viewport()->update();
    }
}

void RowView::focusInEvent(QFocusEvent* event) {
    QTableWidget::focusInEvent(event);
    viewport()->update();
}

void RowView::focusOutEvent(QFocusEvent* event) {
    QTableWidget::focusOutEvent(event);
    viewport()->update();
}

/// Tells a marked line's findings as a tool tip, too.
bool RowView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip && check_) {
        const auto* const help = static_cast<QHelpEvent*>(event);
        const int row = rowAt(help->pos().y());
        QToolTip::showText(help->globalPos(), row >= 0 ? check_->textAt(row) : QString(), viewport());
        return true;
    }
    return QTableWidget::viewportEvent(event);
}

// --- Selection and editing ------------------------------------------------------------------------

void RowView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableWidget::selectionChanged(selected, deselected);
    openSelected();
    for (const QItemSelection& ranges : {selected, deselected}) {
        for (const QItemSelectionRange& range : ranges) {
            for (int row = range.top(); row <= std::min(range.bottom(), rowCount() - 1); ++row) {
                updateRow(row);
            }
        }
    }
}

/// The column of an index may be hidden in a narrow list.
void RowView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    QTableWidget::scrollTo(index.sibling(index.row(), MarkerColumn), hint);
}

QRect RowView::fieldPlace(int row, LineField field) const {
    const RowShape shape = shapeOf(row);
    const QRect place = field == LineField::Speed  ? shape.speed
                        : field == LineField::Zone ? shape.zone
                                                   : shape.note;
    return place.translated(0, rowViewportPosition(row));
}

/// A field of the selected row that can be edited now.
LineField RowView::fieldAt(const QPoint& point, int* row) const {
    *row = rowAt(point.y());
    if (*row < 0 || *row != onlySelected() || !isEditable()) {
        return LineField::None;
    }
    const LineField field = shapeOf(*row).fieldAt(point - QPoint(0, rowViewportPosition(*row)));
    return fieldName(statementAt(*row), field).isEmpty() ? LineField::None : field;
}

void RowView::mousePressEvent(QMouseEvent* event) {
    // Before the press selects the row: the first tap on a row only selects it.
    pressed_ = event->button() == Qt::LeftButton && selectionMode() == SingleSelection
                   ? fieldAt(event->pos(), &pressedRow_)
                   : LineField::None;
    QTableWidget::mousePressEvent(event);
}

void RowView::mouseReleaseEvent(QMouseEvent* event) {
    QTableWidget::mouseReleaseEvent(event);
    int row = -1;
    const LineField pressed = pressed_;
    pressed_ = LineField::None;
    if (pressed != LineField::None && fieldAt(event->pos(), &row) == pressed && row == pressedRow_) {
        inline_->open(row, pressed);
    }
}

/// Two quick taps on a field are two taps.
void RowView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (selectionMode() == SingleSelection && fieldAt(event->pos(), &pressedRow_) != LineField::None) {
        mousePressEvent(event);
    } else {
        QTableWidget::mouseDoubleClickEvent(event);
    }
}

/// A key that the open entry does not take comes here. Enter edits the selected row.
void RowView::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape && inline_->isOpen()) {
        inline_->cancel();
    } else if (isEnter && !inline_->isOpen() && isEditable() && onlySelected() >= 0) {
        const int row = onlySelected();
        inline_->open(row, LineField::Speed) || inline_->open(row, LineField::Note);
    } else {
        QTableWidget::keyPressEvent(event);
    }
}

}  // namespace lumo
