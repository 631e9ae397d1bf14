#include "panel/choicebox.h"

#include "look/dialog.h"
#include "module/globals.h"
#include "module/host.h"
#include "program/words.h"

#include <QPushButton>
#include <QStackedWidget>

using namespace prog;

namespace lumo {

namespace {

void closeOnChange(QMessageBox* box) {
    const ModuleObject* const program = m(key::program);
    for (const auto change : {&ModuleObject::added, &ModuleObject::removed}) {
        QObject::connect(program, change, box, &QDialog::reject);
    }
    QObject::connect(program, &ModuleObject::changed, box, &QDialog::reject);
    QObject::connect(m(key::executeState), &ModuleObject::changed, box, [box](const QVariant& state) {
        if (state.toString() != word::idle) {
            box->reject();
        }
    });
}

}  // namespace

QMessageBox* askChoice(QObject* owner, QWidget* page, const Choice& choice,
                       const std::function<void(int)>& answered) {
    const QStackedWidget* const center = instantiatedCenterWidget();
    QWidget* const parent = center && center->currentWidget() ? center->currentWidget() : page;
    auto* const box =
        new QMessageBox(QMessageBox::Question, choice.title, choice.text, QMessageBox::NoButton, parent);
    look::dress(box);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    QList<QAbstractButton*> buttons;
    const int last = choice.answers.size() - 1;
    for (int i = 0; i <= last; ++i) {
        QPushButton* const button =
            box->addButton(choice.answers[i], i == last ? QMessageBox::RejectRole : QMessageBox::AcceptRole);
        button->setObjectName(QStringLiteral("answer%1").arg(i));
        if (i == choice.preferred) {
            box->setDefaultButton(button);
        }
        if (i == last) {
            box->setEscapeButton(button);
        }
        buttons << button;
    }
    QObject::connect(box, &QDialog::finished, owner, [owner, box, buttons, last, answered] {
        box->disconnect(owner);  // a change of the program would finish it again
        const int index = buttons.indexOf(box->clickedButton());
        const int answer = index < 0 ? last : index;
        QMetaObject::invokeMethod(
            owner, [answered, answer] { answered(answer); }, Qt::QueuedConnection);
    });
    closeOnChange(box);
    if (isRunning()) {  // a modal box would block the Stop button
        box->setModal(false);
        box->show();
    } else {
        box->open();
    }
    return box;
}

}  // namespace lumo
