#include "widgets/watchedlinedialog.h"

#include <QFocusEvent>
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

void WatchedLineDialog::require(bool (*passes)(const QString& text)) {
    passes_ = passes;
    connect(line_, &QLineEdit::textChanged, this, &WatchedLineDialog::refreshOk, Qt::UniqueConnection);
    refreshOk();
}

bool WatchedLineDialog::canAccept() const {
    return !passes_ || passes_(line_->text());
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
    line_->selectAll();
}
