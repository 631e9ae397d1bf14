#include "widgets/answerdialog.h"

#include "module/host.h"

#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QPushButton>

AnswerDialog::AnswerDialog(Closing closing, QWidget* parent) : QDialog(parent), closing_(closing) {
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
}

void AnswerDialog::setUpButtons(QDialogButtonBox* box, const QString& okText, const QString& cancelText) {
    okButton_ = box->button(QDialogButtonBox::Ok);
    QPushButton* cancelButton = box->button(QDialogButtonBox::Cancel);
    okButton_->setText(okText);
    cancelButton->setText(cancelText);
    for (QPushButton* button : {okButton_, cancelButton}) {
        button->setStyleSheet(QStringLiteral("min-width: 96px; min-height: 48px;"));
    }
    connect(box, &QDialogButtonBox::accepted, this, &AnswerDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &AnswerDialog::reject);
}

void AnswerDialog::accept() {
    answer(true);
}

void AnswerDialog::reject() {
    answer(false);
}

void AnswerDialog::answer(bool ok) {
    if (answered_) {
        return;
    }
    answered_ = true;
    const QString name = QString::fromLatin1(metaObject()->className());
    lumo::logW() << QStringLiteral("%1::%1  QDialogButtonBox::%2")
                        .arg(name, ok ? QStringLiteral("Ok") : QStringLiteral("Cancel"));
    if (closing_ == Closing::ByItself) {
        done(ok ? Accepted : Rejected);
    }
    announce(ok);
}

void AnswerDialog::showEvent(QShowEvent* event) {
    answered_ = false;
    QDialog::showEvent(event);
    // No window manager does it for this kind of window.
    activateWindow();
}

void AnswerDialog::closeEvent(QCloseEvent* event) {
    answer(false);
    event->accept();
}
