#include "editor/inlineedit.h"

#include "editor/programtable.h"
#include "editor/rowview.h"
#include "look/scale.h"
#include "widgets/fieldanswer.h"
#include "widgets/messagebox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScopedValueRollback>

#include <algorithm>

namespace lumo {

InlineEdit::InlineEdit(RowView* list) : QObject(list), list_(list) {
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*old*/, QWidget* now) { focusMoved(now); });
}

bool InlineEdit::open(int row, LineField field) {
    ModuleObject* const statement = ProgramTable::program()->c(row);
    if (fieldName(statement, field).isEmpty()) {
        return false;
    }
    if (entry_) {
        take();
    }
    if (entry_) {
        return false;  // a value that is not taken is to be corrected first
    }
    entry_ = new LineEntry(statement, field, list_->viewport());
    entry_->setObjectName(QStringLiteral("inlineEntry"));
    entry_->installEventFilter(this);
    if (field != LineField::Note) {
        range_ = new QLabel(list_->viewport());
        range_->setObjectName(QStringLiteral("inlineRange"));
        entry_->tellIn(range_);
        range_->setWordWrap(false);
        range_->show();
        connect(entry_, &LineEntry::answered, this, &InlineEdit::place);
    }
    entry_->show();
    place();
    entry_->selectAll();
    entry_->setFocus(Qt::MouseFocusReason);
    return true;
}

void InlineEdit::place() {
    if (!entry_) {
        return;
    }
    if (!entry_->isInProgram()) {
        close();
        return;
    }
    QRect place = list_->fieldPlace(entry_->statement()->indexInPmobj(), entry_->field());
    const int tall = std::min(std::max(place.height(), look::px(36)), look::px(40));
    place = QRect(place.left(), place.center().y() - tall / 2, place.width(), tall);
    entry_->setGeometry(place);
    if (range_) {
        range_->adjustSize();
        const int left = std::min(place.left(), list_->viewport()->width() - range_->width());
        const bool hasRoom = place.bottom() + range_->height() < list_->viewport()->height();
        range_->move(std::max(0, left), hasRoom ? place.bottom() + 2 : place.top() - range_->height() - 2);
        range_->raise();
    }
}

/// The list must not see these keys: Enter would open an entry again.
bool InlineEdit::eventFilter(QObject* watched, QEvent* event) {
    if (watched != entry_ || event->type() != QEvent::KeyPress) {
        return QObject::eventFilter(watched, event);
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape) {
        close();
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        take();
    } else {
        return false;
    }
    return true;
}

/// Leaves the entry open where its value is not taken.
void InlineEdit::take() {
    if (!entry_ || isTaking_) {
        return;
    }
    const QScopedValueRollback<bool> taking(isTaking_, true);
    if (entry_->store(list_) || !entry_->isInProgram()) {
        close();
    } else if (!entry_->isTaken()) {
        entry_->selectAll();
    }
}

void InlineEdit::close() {
    if (!entry_) {
        return;
    }
    LineEntry* const entry = entry_;
    entry_.clear();
    const bool hadFocus = entry->hasFocus() || entry->isAncestorOf(QApplication::focusWidget());
    entry->disconnect(this);
    entry->hide();
    entry->deleteLater();
    if (range_) {
        range_->hide();
        range_->deleteLater();
    }
    if (hadFocus) {
        list_->setFocus();
    }
}

void InlineEdit::abandon() {
    if (!entry_) {
        return;
    }
    const bool isLost = entry_->isChanged();
    const QString text = entry_->shownText();
    close();
    if (isLost) {
        showMessage(QMessageBox::Warning, ProgramTable::tr("输入错误"),
                    ProgramTable::tr("输入的内容未采用：%1").arg(text));
    }
}

void InlineEdit::rowLeaves(int row) {
    if (entry_ && (!entry_->isInProgram() || entry_->statement()->indexInPmobj() == row)) {
        abandon();
    }
}

bool InlineEdit::isOwn(const QWidget* widget) const {
    return widget == entry_ || entry_->isAncestorOf(widget);
}

/// Focus that goes to another window, such as a message or the keys of a pad, leaves the entry as it is.
void InlineEdit::focusMoved(QWidget* now) {
    if (!entry_ || !now || isTaking_ || isOwn(now) || now->window() != entry_->window()) {
        return;
    }
    take();
    if (entry_ && !entry_->isTaken()) {
        showMessage(QMessageBox::Warning, ProgramTable::tr("输入错误"), rangeText(entry_->range()));
    }
}

}  // namespace lumo
