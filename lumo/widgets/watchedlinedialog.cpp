#include "widgets/watchedlinedialog.h"

#include "widgets/fieldanswer.h"

#include <QBoxLayout>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

bool isPressOnLine(QLineEdit* line, const QEvent* event) {
    if (event->type() == QEvent::FocusIn &&
        static_cast<const QFocusEvent*>(event)->reason() == Qt::MouseFocusReason) {
        line->selectAll();
    }
    return event->type() == QEvent::MouseButtonPress;
}

void WatchedLineDialog::watch(QLineEdit* line) {
    line_ = line;
    line->installEventFilter(this);
    connect(this, &WatchedLineDialog::lineeditclicked, line, &QWidget::activateWindow);
}

void WatchedLineDialog::require(const prog::EntryRange& range, const QString& caption) {
    auto* const note = new QLabel(this);
    note->setObjectName(QStringLiteral("lblRange"));
    auto* const rows = qobject_cast<QBoxLayout*>(layout());
    rows->insertWidget(rows->indexOf(line_) + 1, note);
    answer_ = new lumo::FieldAnswer(line_, range);
    answer_->nameIt(caption);
    answer_->tellIn(note);
    connect(answer_, &lumo::FieldAnswer::answered, this, &WatchedLineDialog::refreshOk);
    refreshOk();
}

bool WatchedLineDialog::canAccept() const {
    return !answer_ || answer_->isTaken();
}

void WatchedLineDialog::refreshOk() {
    okButton()->setEnabled(canAccept());
}

bool WatchedLineDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == line_ && isPressOnLine(line_, event)) {
        emit lineeditclicked();
        return true;
    }
    return AnswerDialog::eventFilter(watched, event);
}

void WatchedLineDialog::showEvent(QShowEvent* event) {
    AnswerDialog::showEvent(event);
    if (answer_) {
        answer_->selectAll();
    } else {
        line_->selectAll();
    }
}
