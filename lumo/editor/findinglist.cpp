#include "editor/findinglist.h"

#include "editor/programcheck.h"
#include "look/icon.h"
#include "look/scale.h"
#include "widgets/findingtext.h"
#include "widgets/severitymark.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

using prog::Finding;
using prog::Severity;

namespace lumo {

namespace {

/// A program with more findings has one cause for most of them, and each row takes time to lay out.
constexpr int mostRows = 200;
constexpr int lineRole = Qt::UserRole;
constexpr int markEdge = 24;
constexpr int touchHeight = 48;

/// Rows that a finger hits.
class TouchRows : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        constexpr int air = 12;
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return {size.width(), std::max(look::px(touchHeight), size.height() + look::px(air))};
    }
};

}  // namespace

FindingList::FindingList(const ProgramCheck* check, QWidget* area, QWidget* page)
    : QFrame(page), check_(check), area_(area), counts_(new QLabel), rows_(new QListWidget) {
    setObjectName(QStringLiteral("findingList"));
    setAutoFillBackground(true);
    setProperty("covers", true);
    rows_->setObjectName(QStringLiteral("lstFindings"));
    rows_->setItemDelegate(new TouchRows(rows_));
    rows_->setWordWrap(true);
    rows_->setResizeMode(QListView::Adjust);
    rows_->setIconSize({look::px(markEdge), look::px(markEdge)});
    rows_->setSelectionMode(QAbstractItemView::NoSelection);
    rows_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    rows_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(2, 2, 2, 2);
    column->setSpacing(0);
    column->addWidget(makeHead());
    column->addWidget(rows_);
    hide();
    area->installEventFilter(this);
    connect(rows_, &QListWidget::itemClicked, this, &FindingList::choose);
    connect(check, &ProgramCheck::changed, this, &FindingList::refresh);
}

QWidget* FindingList::makeHead() {
    auto* const head = new QWidget;
    auto* const row = new QHBoxLayout(head);
    constexpr int left = 14;
    row->setContentsMargins(look::px(left), 2, 2, 2);
    counts_->setObjectName(QStringLiteral("lblFindings"));
    auto* const close = new QToolButton;
    close->setObjectName(QStringLiteral("btnCloseFindings"));
    close->setIcon(look::icon(QStringLiteral("close")));
    close->setIconSize({look::px(markEdge), look::px(markEdge)});
    close->setAccessibleName(tr("关闭"));
    row->addWidget(counts_, 1);
    row->addWidget(close);
    connect(close, &QToolButton::clicked, this, &FindingList::hide);
    return head;
}

// --- Showing --------------------------------------------------------------------------------------

void FindingList::toggle() {
    if (isVisible()) {
        hide();
        return;
    }
    fill();
    show();  // before it is placed: hidden rows have no sizes
    raise();
    place();
    rows_->setFocus();
}

void FindingList::refresh() {
    if (check_->findings().empty()) {
        hide();
    }
    if (isVisible()) {
        const int scrolled = rows_->verticalScrollBar()->value();
        fill();
        place();
        rows_->verticalScrollBar()->setValue(scrolled);
    }
}

void FindingList::fill() {
    counts_->setText(countText(check_->errors(), check_->warnings()));
    rows_->clear();
    for (const Severity severity : {Severity::Error, Severity::Warning}) {
        for (const Finding& finding : check_->findings()) {
            if (finding.severity == severity && rows_->count() < mostRows) {
                add(finding);
            }
        }
    }
    const int more = static_cast<int>(check_->findings().size()) - rows_->count();
    if (more > 0) {
        auto* const row = new QListWidgetItem(tr("另有 %n 项", nullptr, more), rows_);
        row->setData(lineRole, -1);
    }
}

void FindingList::add(const Finding& finding) {
    auto* const row = new QListWidgetItem(markIcon(finding.severity), findingAtLine(finding), rows_);
    const QString remedy = findingRemedy(finding);
    if (!remedy.isEmpty()) {
        row->setText(row->text() + QLatin1Char('\n') + remedy.left(1).toUpper() + remedy.mid(1));
    }
    row->setData(lineRole, finding.line);
    row->setData(Qt::AccessibleTextRole, severityWord(finding.severity) + QStringLiteral(": ") + row->text());
}

/// As wide as the area, and as high as the rows need.
void FindingList::place() {
    QRect place(area_->mapTo(parentWidget(), QPoint()), area_->size());
    setGeometry(place);
    layout()->activate();
    rows_->doItemsLayout();
    const QRect last = rows_->visualItemRect(rows_->item(rows_->count() - 1));
    const int needed =
        height() - rows_->viewport()->height() + last.bottom() + 1 + rows_->verticalScrollBar()->value();
    place.setHeight(std::min(place.height(), needed));
    setGeometry(place);
}

bool FindingList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Hide) {
        hide();
    } else if (isVisible() && (event->type() == QEvent::Resize || event->type() == QEvent::Move)) {
        place();
    }
    return QFrame::eventFilter(watched, event);
}

void FindingList::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && isVisible()) {
        fill();
    }
}

// --- Choosing -------------------------------------------------------------------------------------

void FindingList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        hide();
    } else if (event->key() == Qt::Key_Return && rows_->currentItem()) {
        choose(rows_->currentItem());
    } else {
        QFrame::keyPressEvent(event);
    }
}

void FindingList::choose(const QListWidgetItem* item) {
    const int line = item->data(lineRole).toInt();
    if (line >= 0) {
        hide();
        emit lineChosen(line);
    }
}

}  // namespace lumo
