#include "editor/projectface.h"

#include "editor/buttonrow.h"
#include "editor/inspector.h"
#include "editor/programwidget.h"
#include "editor/runpanel.h"
#include "editor/startline.h"
#include "look/scale.h"
#include "look/type.h"
#include "ui_programwidget.h"

#include <algorithm>

namespace lumo {

namespace {

// All lengths at factor 1.
constexpr int control = 48;
constexpr int gap = 8;
constexpr int margin = 16;
constexpr int smallMargin = 8;
constexpr int titleHeight = 32;
constexpr int jumpField = 72, leastJumpField = 52;
constexpr int smallColumn = 232;
constexpr int largeColumn = 288;   // where the list beside it has all of its columns
constexpr int usualColumn = 277;   // elsewhere
constexpr int secondColumn = 320;  // of the inspector
/// Widths of a page from which on it has rows, a column with captions below the icons, a column, and two.
constexpr int rowsFrom = 688, smallColumnFrom = 780, columnFrom = 1000, twoColumnsFrom = 1400;
constexpr int largeColumnFrom = 1080;
/// Height of a column that holds what changes a line, too.
constexpr int tallColumn = 732;

int rowHeight() {
    return look::px(gap + control + gap);
}

QRect takenFromTop(QRect* area, int height) {
    QRect taken = *area;
    taken.setHeight(height);
    area->setTop(taken.bottom() + 1);
    return taken;
}

QRect takenFromBottom(QRect* area, int height) {
    QRect taken = *area;
    taken.setTop(area->bottom() + 1 - height);
    area->setBottom(taken.top() - 1);
    return taken;
}

}  // namespace

ProjectFace::ProjectFace(const Ui::ProgramWidget* form, const StartLine* start, QWidget* page)
    : QObject(page), form_(form), start_(start), page_(page) {
    connect(start, &StartLine::specialChanged, this, &ProjectFace::rearrange);
    connect(form->btnTools, &QAbstractButton::toggled, this, &ProjectFace::rearrange);
    connect(form->btnFullRows, &QAbstractButton::toggled, form->tableWidget, &ProgramTable::setFullRows);
    form->toolGround->lower();
    form->toolGround->setAttribute(Qt::WA_TransparentForMouseEvents);
    form->runBar->setParts({form->btnStart, form->btnRunOnce, form->btnPause, form->btnReset, form->label_3,
                            form->widget_weld, form->label_2, form->widget_handweld, form->dryRunRow,
                            form->btnFindings});
    form->btnStart->setCaptionFont(look::Size::Title, look::Weight::Strong);
    connect(form->tableWidget, &ProgramTable::itemSelectionChanged, this, &ProjectFace::showPlace);
    connect(form->tableWidget, &ProgramTable::programShown, this, &ProjectFace::showPlace);
    dress();
    showPlace();
}

void ProjectFace::dress() {
    const std::pair<WrapButton*, const char*> icons[] = {{form_->btnEdit, "edit"},
                                                         {form_->btnDown, "down"},
                                                         {form_->btnUp, "up"},
                                                         {form_->btnCopy, "copy"},
                                                         {form_->btnPaste, "paste"},
                                                         {form_->btnDel, "delete"},
                                                         {form_->multiBtn, "multiple"},
                                                         {form_->speedBtn, "velocity"},
                                                         {form_->turningBtn, "radius"},
                                                         {form_->anotationBtn, "enabled"},
                                                         {form_->btnFullRows, "document"},
                                                         {form_->btnMoveJ, "joint"},
                                                         {form_->btnMoveL, "line"},
                                                         {form_->btnMoveCC, "circle"},
                                                         {form_->btnMoveC, "arc"},
                                                         {form_->btnOpenLaser, "laser"},
                                                         {form_->btnClose, "laser_off"},
                                                         {form_->btnParam, "welding_parameters"},
                                                         {form_->btnWaitDI, "wait_input"},
                                                         {form_->btnSetDO, "set_output"},
                                                         {form_->btnDelay, "delay"},
                                                         {form_->btnSteptojump, "goto"},
                                                         {form_->btnTools, "plus"}};
    for (const auto& [button, icon] : icons) {
        button->setFace(QLatin1String(icon), ButtonFace::Place::Before);
        button->setLeftAligned(true);
    }
}

QSize ProjectFace::leastSize() {
    return {look::px(432), look::px(400)};
}

void ProjectFace::setLocked(bool locked) {
    if (locked != locked_) {
        locked_ = locked;
        rearrange();
    }
}

/// Where a statement button inserts, and which line the others change.
void ProjectFace::showPlace() {
    const int row = form_->tableWidget->selectedRow();
    form_->lblInsert->setText(row < 0 ? ProgramWidget::tr("未选中：插入到最前")
                                      : ProgramWidget::tr("插入到第 %1 行之后").arg(row + 1));
    form_->lblLine->setText(row < 0 ? ProgramWidget::tr("未选中行")
                                    : ProgramWidget::tr("第 %1 行").arg(row + 1));
}

// --- What there is --------------------------------------------------------------------------------

ProjectFace::Widgets ProjectFace::insertButtons() const {
    return {form_->btnMoveJ, form_->btnMoveL,  form_->btnMoveCC, form_->btnMoveC, form_->btnOpenLaser,
            form_->btnClose, form_->btnWaitDI, form_->btnSetDO,  form_->btnDelay};
}

QList<QList<WrapButton*>> ProjectFace::editGroups() const {
    QList<QList<WrapButton*>> groups = {{form_->btnEdit},
                                        {form_->btnDown, form_->btnUp},
                                        {form_->btnCopy, form_->btnPaste, form_->btnDel},
                                        {form_->multiBtn, form_->speedBtn, form_->turningBtn},
                                        {form_->anotationBtn}};
    if (width_ != Width::SmallColumn) {
        groups.append({form_->btnFullRows});
    }
    return groups;
}

ProjectFace::Widgets ProjectFace::editButtons() const {
    return {form_->btnEdit, form_->btnDown,  form_->btnUp,    form_->btnCopy,    form_->btnPaste,
            form_->btnDel,  form_->multiBtn, form_->speedBtn, form_->turningBtn, form_->anotationBtn};
}

ProjectFace::Widgets ProjectFace::jumpParts() const {
    return {form_->lineEdit_steptojump, form_->btnSteptojump};
}

ProjectFace::Width ProjectFace::widthOf(int pagePx) {
    const std::pair<int, Width> widths[] = {{twoColumnsFrom, Width::TwoColumns},
                                            {columnFrom, Width::Column},
                                            {smallColumnFrom, Width::SmallColumn},
                                            {rowsFrom, Width::Rows}};
    for (const auto& [from, width] : widths) {
        if (pagePx >= look::px(from)) {
            return width;
        }
    }
    return Width::Two;
}

int ProjectFace::columnWidth() const {
    if (width_ == Width::SmallColumn) {
        return look::px(smallColumn);
    }
    const bool large = width_ == Width::Column && page_->width() >= look::px(largeColumnFrom);
    return look::px(large ? largeColumn : usualColumn);
}

bool ProjectFace::isTall(int columnPx) const {
    return width_ >= Width::Column && columnPx >= look::px(tallColumn);
}

void ProjectFace::show(QWidget* widget, const QRect& place) {
    widget->setGeometry(place);
    shown_.append(widget);
    if (widget->isHidden()) {
        widget->show();
    }
}

/// What has no place now.
void ProjectFace::hideOthers() {
    Widgets all = insertButtons() + editButtons();
    all += {form_->btnFullRows, form_->lblInsert,     form_->lblLine,
            form_->label,       form_->btnSteptojump, form_->lineEdit_steptojump,
            form_->btnTools,    form_->btnStepBack,   form_->toolGround,
            form_->lblStart,    form_->btnStepForward};
    for (QWidget* const made : {static_cast<QWidget*>(run_), static_cast<QWidget*>(inspector_)}) {
        if (made) {
            all.append(made);
        }
    }
    for (QWidget* const widget : all) {
        if (!shown_.contains(widget) && !widget->isHidden()) {
            widget->hide();
        }
    }
}

// --- Dividing the page ----------------------------------------------------------------------------

void ProjectFace::rearrange() {
    if (isArranged_) {
        arrange();
    }
}

void ProjectFace::arrange() {
    isArranged_ = true;
    shown_.clear();
    width_ = widthOf(page_->width());
    QRect area = page_->rect();
    const int bar = form_->runBar->heightFor(area.width());
    form_->runBar->setGeometry(takenFromBottom(&area, bar));
    const auto place = width_ >= Width::Column ? ButtonFace::Place::Before : ButtonFace::Place::Over;
    const Widgets inserting = insertButtons();
    for (QWidget* const button : inserting) {
        static_cast<WrapButton*>(button)->setPlace(place);
    }
    if (width_ >= Width::SmallColumn) {
        placeColumns(area);
    } else {
        placeRows(area);
    }
    hideOthers();
}

void ProjectFace::placeColumns(QRect area) {
    const bool two = width_ == Width::TwoColumns;
    const bool small = width_ == Width::SmallColumn;
    const bool large = columnWidth() == look::px(largeColumn);
    const bool tall = isTall(area.height());
    QRect columns = area;
    columns.setLeft(area.right() + 1 - columnWidth() - (two ? look::px(secondColumn) : 0));
    show(form_->toolGround, columns);
    const int edge = look::px(small ? smallMargin : margin);
    area.setLeft(area.left() + edge);
    area.setRight(columns.left() - 1 - (large ? edge : small ? look::px(12) : 0));
    for (WrapButton* const button : {form_->btnFullRows}) {
        button->setPlace(small || tall ? ButtonFace::Place::Before : ButtonFace::Place::Over);
    }
    const Widgets editing = editButtons();
    for (QWidget* const button : editing) {
        static_cast<WrapButton*>(button)->setPlace(tall ? ButtonFace::Place::Before
                                                        : ButtonFace::Place::Over);
    }
    const QRect first(columns.left(), columns.top(), columnWidth(), columns.height());
    if (tall && !two && !locked_) {
        takeNotice(&area);  // the column is full
    }
    if (!tall && !locked_) {
        takeEditRow(&area);
    }
    form_->tableWidget->setGeometry(area);
    if (locked_) {
        placeBench(first);
    } else {
        placeDesk(first);
    }
    if (two) {
        QRect second = columns;
        second.setLeft(first.right() + 1 + look::px(margin));
        second.setRight(second.right() - look::px(margin));
        if (tall && !locked_) {
            placeNotice(&second);
        }
        placeInspector(second);
    }
}

/// Very narrow: what inserts and what changes lines takes the same two rows in turn.
void ProjectFace::placeRows(QRect area) {
    const int edge = look::px(margin);
    area.adjust(edge, 0, -edge, 0);
    const Widgets editing = editButtons();
    for (QWidget* const button : editing) {
        static_cast<WrapButton*>(button)->setPlace(ButtonFace::Place::Over);
    }
    for (WrapButton* const button : {form_->btnFullRows, form_->btnTools, form_->btnSteptojump}) {
        button->setPlace(ButtonFace::Place::Over);
    }
    form_->lineEdit_steptojump->setPlaceholderText(ProgramWidget::tr("行"));
    if (locked_) {
        takeSteps(&area);
    } else if (width_ == Width::Rows) {
        takeEditRow(&area);
        area.setBottom(area.bottom() + look::px(gap));
        takeRowOfCells(&area, insertButtons() + jumpParts());
    } else {
        Widgets cells = form_->btnTools->isChecked() ? insertButtons() + jumpParts()
                                                     : editButtons() + Widgets{form_->btnFullRows};
        cells.append(form_->btnTools);
        takeRowOfCells(&area, cells.mid(6));
        area.setBottom(area.bottom() + look::px(gap));
        takeRowOfCells(&area, cells.mid(0, 6));
    }
    takeNotice(&area);
    form_->tableWidget->setGeometry(area);
}

// --- Below the list -------------------------------------------------------------------------------

void ProjectFace::takeRowOfCells(QRect* area, const Widgets& cells) {
    const QRect row = takenFromBottom(area, rowHeight()).adjusted(0, look::px(gap), 0, -look::px(gap));
    const QVector<QRect> places = equalPlaces(row, cells.size());
    for (int i = 0; i < cells.size(); ++i) {
        show(cells[i], places[i]);
    }
}

void ProjectFace::takeEditRow(QRect* area) {
    const QRect row = takenFromBottom(area, rowHeight()).adjusted(0, look::px(gap), 0, -look::px(gap));
    const QList<QList<WrapButton*>> groups = editGroups();
    const QVector<QRect> places = groupPlaces(row, groups);
    int at = 0;
    for (const auto& group : groups) {
        for (WrapButton* const button : group) {
            show(button, places[at++]);
        }
    }
}

/// The hold-to-step buttons, in narrow pages below the list.
void ProjectFace::takeSteps(QRect* area) {
    const Widgets steps{form_->btnStepBack, form_->btnStepForward};
    for (QWidget* const button : steps) {
        static_cast<WrapButton*>(button)->setPlace(ButtonFace::Place::Before);
    }
    takeRowOfCells(area, steps);
}

/// The sentence about the next start with its button, below the list.
void ProjectFace::takeNotice(QRect* area) {
    const bool resumes = !form_->btnResume->isHidden();
    if (!start_->isSpecial()) {
        return;
    }
    QRect row = takenFromBottom(area, look::px(gap + control)).adjusted(0, look::px(gap), 0, 0);
    if (resumes) {
        const int width = std::max(look::px(120), form_->btnResume->sizeHint().width());
        show(form_->btnResume, QRect(row.right() + 1 - width, row.top(), width, row.height()));
        row.setRight(form_->btnResume->x() - look::px(margin));
    }
    show(form_->lblStart, row);
}

// --- The column -----------------------------------------------------------------------------------

void ProjectFace::takeTitle(QRect* column, QLabel* title) {
    show(title, takenFromTop(column, look::px(titleHeight)));
}

/// Two in a row; a last one alone takes both places.
void ProjectFace::takeGrid(QRect* column, const Widgets& cells) {
    const int between = look::px(gap);
    for (int i = 0; i < cells.size(); i += 2) {
        QRect row = takenFromTop(column, look::px(control));
        column->setTop(column->top() + between);
        if (i + 1 < cells.size()) {
            QRect right = row;
            row.setWidth((row.width() - between) / 2);
            right.setLeft(row.right() + 1 + between);
            show(cells[i + 1], right);
        }
        show(cells[i], row);
    }
}

/// Caption, field and button; in a small column the caption stands over the others.
void ProjectFace::takeJump(QRect* column) {
    form_->btnSteptojump->setPlace(ButtonFace::Place::Before);
    form_->lineEdit_steptojump->setPlaceholderText(QString());  // it has its caption
    const int between = look::px(gap);
    QRect caption;
    if (width_ == Width::SmallColumn) {
        caption = takenFromTop(column, look::px(titleHeight) - between);
    }
    QRect row = takenFromTop(column, look::px(control));
    QRect button = row, field = row;
    button.setLeft(row.center().x() + 1 + between / 2);
    if (width_ == Width::SmallColumn) {
        field.setRight(button.left() - 1 - between);
    } else {
        const int goTo = form_->btnSteptojump->faceSize().width() + look::px(24);
        button.setLeft(row.right() + 1 - goTo);
        field.setRight(button.left() - 1 - between);
        const int words = form_->label->fontMetrics().horizontalAdvance(form_->label->text());
        const int room = field.width() - words - between;
        field.setLeft(field.right() + 1 - std::clamp(room, look::px(leastJumpField), look::px(jumpField)));
        caption = row;
        caption.setRight(field.left() - 1 - between / 2);
    }
    show(form_->label, caption);
    show(form_->lineEdit_steptojump, field);
    show(form_->btnSteptojump, button);
    column->setTop(column->top() + between);
}

void ProjectFace::placeDesk(QRect column) {
    const bool tall = isTall(column.height());
    column.adjust(look::px(margin), 0, -look::px(margin), 0);
    takeTitle(&column, form_->lblInsert);
    takeGrid(&column, insertButtons());
    if (tall) {
        takeTitle(&column, form_->lblLine);
        takeGrid(&column, editButtons());
    }
    column.setTop(column.top() + (tall ? 0 : look::px(gap)));
    takeJump(&column);
    if (tall || width_ == Width::SmallColumn) {
        column.setBottom(column.bottom() - look::px(tall ? 4 : gap));
        show(form_->btnFullRows, takenFromBottom(&column, look::px(control)));
    }
    if (tall) {
        return;
    }
    placeNotice(&column);
    if (width_ == Width::Column) {
        placeInspector(column);
    }
}

void ProjectFace::placeBench(QRect column) {
    QRect inner = column.adjusted(look::px(margin), 0, -look::px(margin), -look::px(gap));
    QRect steps = takenFromBottom(&inner, look::px(control));
    const Widgets both{form_->btnStepBack, form_->btnStepForward};
    for (QWidget* const button : both) {
        static_cast<WrapButton*>(button)->setPlace(width_ == Width::SmallColumn ? ButtonFace::Place::Over
                                                                                : ButtonFace::Place::Before);
    }
    takeGrid(&steps, both);
    const bool hasNotice = start_->isSpecial();
    if (hasNotice) {
        QRect notice = takenFromBottom(&inner, noticeHeight(inner.width()));
        placeNotice(&notice);
    }
    if (!run_) {
        run_ = new RunPanel(page_);
    }
    column.setBottom(inner.bottom());
    show(run_, column);
}

int ProjectFace::noticeHeight(int width) const {
    const int words = form_->lblStart->heightForWidth(width);
    return look::px(gap) + words + look::px(gap) +
           (form_->btnResume->isHidden() ? 0 : look::px(control + gap));
}

/// The sentence about the next start, with its button below it; whether there is one and it fits.
bool ProjectFace::placeNotice(QRect* column) {
    if (!start_->isSpecial() || noticeHeight(column->width()) > column->height()) {
        if (!form_->btnResume->isHidden()) {
            form_->btnResume->setGeometry(
                takenFromBottom(column, std::min(column->height(), look::px(control))));
        }
        return false;
    }
    column->setTop(column->top() + look::px(gap));
    show(form_->lblStart, takenFromTop(column, form_->lblStart->heightForWidth(column->width())));
    column->setTop(column->top() + look::px(gap));
    if (!form_->btnResume->isHidden()) {
        show(form_->btnResume, takenFromTop(column, look::px(control)));
        column->setTop(column->top() + look::px(gap));
    }
    return true;
}

void ProjectFace::placeInspector(const QRect& place) {
    if (!inspector_) {
        inspector_ = new Inspector(form_->tableWidget, page_);
    }
    inspector_->setWithEntries(width_ == Width::TwoColumns && !locked_);
    inspector_->setBrief(locked_);
    constexpr int leastHeight = 150;
    if (place.height() >= look::px(leastHeight)) {
        show(inspector_, place.adjusted(0, look::px(gap), 0, 0));
    }
}

}  // namespace lumo
