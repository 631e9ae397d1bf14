#include "widgets/answerdialog.h"

#include "look/dialog.h"
#include "look/scale.h"
#include "module/host.h"

#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QLayout>
#include <QPushButton>

AnswerDialog::AnswerDialog(Closing closing, QWidget* parent) : QDialog(parent), closing_(closing) {
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    look::dress(this);
}

void AnswerDialog::setUpButtons(QDialogButtonBox* box, const QString& okText, const QString& cancelText) {
    okButton_ = box->button(QDialogButtonBox::Ok);
    QPushButton* cancelButton = box->button(QDialogButtonBox::Cancel);
    okButton_->setText(okText);
    cancelButton->setText(cancelText);
    okButton_->setDefault(true);
    measure(box);
    connect(box, &QDialogButtonBox::accepted, this, &AnswerDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &AnswerDialog::reject);
}

void AnswerDialog::measure(QDialogButtonBox* buttons) {
    constexpr int leastWidth = 480, padding = 24, gap = 8;
    setMinimumWidth(look::px(leastWidth));
    layout()->setContentsMargins(look::px(padding), look::px(padding), look::px(padding), look::px(padding));
    layout()->setSpacing(look::px(gap));
    buttons->layout()->setContentsMargins(0, look::px(gap), 0, 0);
    buttons->layout()->setSpacing(look::px(gap));
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
