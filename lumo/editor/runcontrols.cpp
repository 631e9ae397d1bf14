#include "editor/runcontrols.h"

#include "editor/programcheck.h"
#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "executor/lumoexecutor.h"
#include "executor/runmessages.h"
#include "files/projectfile.h"
#include "files/resumedata.h"
#include "look/dialog.h"
#include "module/globals.h"
#include "program/runprogram.h"
#include "program/statement.h"
#include "program/words.h"
#include "widgets/findingtext.h"
#include "widgets/messagebox.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QStackedWidget>

#include <algorithm>
#include <cmath>

using namespace lumo;
using namespace prog;

namespace {

constexpr int handRun = 0;
constexpr int singleStep = 2;

}  // namespace

RunControls::RunControls(ProgramTable* table, ProgramCheck* check, QWidget* page)
    : QObject(page), table_(table), check_(check), page_(page) {}

RunControls::~RunControls() {
    delete question_;
}

bool RunControls::refusedForPairs() const {
    if (WeldPairs::of(ProgramTable::program()).match()) {
        return false;
    }
    Advice advice;
    const Findings& findings = check_->checkNow();
    const auto first = std::find_if(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.rule() == Rule::Pairing && finding.isError();
    });
    if (first != findings.end()) {
        advice = {ProgramWidget::tr("%1。").arg(findingAtLine(*first)),
                  ProgramWidget::tr("处理方法：%1。").arg(findingRemedy(*first)), Way::toLine(first->line)};
    }
    showMessage(QMessageBox::Warning, ProgramWidget::tr("程序错误"),
                ProgramWidget::tr("当前程序中的\"开始焊接\"和\"停止焊接\"个数或者顺序不匹配!"), advice);
    return true;
}

/// Names the first error and selects its line.
void RunControls::refuse(const Findings& errors) const {
    showMessage(QMessageBox::Warning, ProgramWidget::tr("程序错误"), refusalText(errors));
    table_->selectOnly(firstError(errors)->line);
}

bool RunControls::refusedForErrors() const {
    const Findings& findings = check_->checkNow();
    if (!firstError(findings)) {
        return false;
    }
    refuse(findings);
    return true;
}

bool RunControls::stepRefusedForErrors(int row) const {
    if (row < 0 || !isMove(ProgramTable::program()->c(row)->c(field::type)->getString())) {
        return false;  // the executor tells why
    }
    Findings errors;
    for (const Finding& finding : check_->checkNow()) {
        const Rule rule = finding.rule();
        const bool isOfLineAlone =
            rule == Rule::Type || rule == Rule::Field || rule == Rule::Point || rule == Rule::Speed;
        if (finding.line == row && finding.isError() && isOfLineAlone) {
            errors.push_back(finding);
        }
    }
    if (errors.empty()) {
        return false;
    }
    refuse(errors);
    return true;
}

void RunControls::later(Action action) {
    if (pending_.contains(action)) {
        return;
    }
    pending_.append(action);
    const auto perform = [this, action] {
        pending_.removeOne(action);
        (this->*action)();
    };
    QMetaObject::invokeMethod(this, perform, Qt::QueuedConnection);
}

void RunControls::startNow() {
    if (question_ && question_->isVisible()) {
        return;
    }
    if (!isRunning()) {
        if (refusedForPairs()) {
            return;
        }
        const int row = table_->selectedRow();
        if (row >= 0 && row != m(key::currentLine)->getInt()) {
            askedFor_ = ProgramTable::program()->c(row);
            ask(ProgramWidget::tr("选中行警告"), ProgramWidget::tr("是否跳转到当前行并开始执行!"),
                &RunControls::jumpNow);
            return;
        }
    }
    goOn();
}

void RunControls::goOn() {
    const int line = m(key::currentLine)->getInt();
    const LumoExecutor::Outlook outlook = executor ? executor->outlook(line) : LumoExecutor::Outlook();
    if (isRunning() || !outlook.goesBack || executor->finished()) {
        run();
        return;
    }
    if (outlook.reopens) {
        askResume(line);
        return;
    }
    askedFor_ = ProgramTable::program()->c(line);
    askedMm_ = outlook.distanceMm;
    ask(ProgramWidget::tr("警告"),
        ProgramWidget::tr("焊枪距中断点 %1 mm，先不出光回到中断点，再继续焊接？")
            .arg(QString::number(outlook.distanceMm, 'f', 1)),
        &RunControls::goBackNow);
}

void RunControls::resumeNow() {
    const int line = m(key::currentLine)->getInt();
    const bool goesOn = !isRunning() && executor && executor->outlook(line).reopens;
    if (!(question_ && question_->isVisible()) && goesOn && !refusedForPairs()) {
        askResume(line);
    }
}

void RunControls::askResume(int line) {
    const QStackedWidget* const center = instantiatedCenterWidget();
    auto* const dialog =
        new ResumeDialog(line, center && center->currentWidget() ? center->currentWidget() : page_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    question_ = dialog;
    askedFor_ = ProgramTable::program()->c(line);
    connect(dialog, &ResumeDialog::chosen, this, [this, dialog](ResumeDialog::Choice choice) {
        choice_ = choice;
        overlapMm_ = dialog->overlapMm();
        later(&RunControls::resumeChosen);
    });
    dialog->open();
}

void RunControls::resumeChosen() {
    // The program or the resume line may have changed since the answer.
    const ModuleObject* const statement = ProgramTable::program()->c(m(key::currentLine)->getInt());
    if (!isRunning() && (statement != askedFor_ || refusedForPairs() || refusedForErrors())) {
        return;
    }
    if (!isRunning() && choice_ == ResumeDialog::Choice::GoOnDark) {
        m(key::weldSwitch)->setValue(page_, false);
    } else if (!isRunning()) {
        const bool overlaps = choice_ == ResumeDialog::Choice::GoOnWithOverlap;
        m(key::executeOverlap)->setValue(page_, overlaps ? overlapMm_ : 0.0);
    }
    begin();
}

void RunControls::goBackNow() {
    // The program or the resume line may have changed since the answer.
    const int line = m(key::currentLine)->getInt();
    if (!isRunning() && (ProgramTable::program()->c(line) != askedFor_ || refusedForPairs())) {
        return;
    }
    // The robot was jogged while the question was open: the distance named in it is out of date.
    constexpr double sameMm = 2.0;
    if (executor && std::abs(executor->outlook(line).distanceMm - askedMm_) > sameMm) {
        goOn();
        return;
    }
    run();
}

void RunControls::ask(const QString& title, const QString& text, Action yes) {
    const QStackedWidget* const center = instantiatedCenterWidget();
    auto* const box = new QMessageBox(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No,
                                      center && center->currentWidget() ? center->currentWidget() : page_);
    box->button(QMessageBox::Yes)->setText(ProgramWidget::tr("是"));
    box->button(QMessageBox::No)->setText(ProgramWidget::tr("否"));
    box->setDefaultButton(QMessageBox::No);
    look::dress(box);
    box->setAttribute(Qt::WA_DeleteOnClose);
    question_ = box;
    connect(box, &QDialog::finished, this, [this, yes](int answer) {
        if (answer == QMessageBox::Yes) {
            later(yes);
        }
    });
    // The question would be about another program.
    for (const auto change : {&ModuleObject::added, &ModuleObject::removed}) {
        connect(ProgramTable::program(), change, box, &QDialog::reject);
    }
    connect(ProgramTable::program(), &ModuleObject::changed, box, &QDialog::reject);
    box->open();
}

void RunControls::jumpNow() {
    if (!isRunning()) {
        const int row = table_->selectedRow();
        // The program may have changed since the answer.
        if (row < 0 || ProgramTable::program()->c(row) != askedFor_ || refusedForPairs() ||
            refusedForErrors()) {
            return;
        }
        m(key::weldOpen)->setValue(page_, false);
        m(key::currentLine)->setValue(page_, row);
    }
    begin();
}

void RunControls::run() {
    if (isRunning() || !refusedForErrors()) {
        begin();
    }
}

void RunControls::begin() {
    if (!isRunning()) {
        if (!filePath_.isEmpty() && saveProject(filePath_)) {
            emit saved();
        }
        hand_or_signalbing = handRun;
        emit aboutToRun();
        m(key::processTime)->setValue(page_, 0);
    }
    m(key::triggerStart)->setValue(page_, executor ? executor->startLine() : m(key::currentLine)->getInt());
}

void RunControls::moveNow() {
    if (!isRunning()) {
        if (stepRefusedForErrors(table_->selectedRow())) {
            return;
        }
        hand_or_signalbing = singleStep;
        emit aboutToRun();
        m(key::weldOpen)->setValue(page_, false);
    }
    m(key::triggerOnce)->setValue(page_, table_->selectedRow());
}

void RunControls::pauseNow() {
    m(key::triggerPause)->trigger();
}

void RunControls::reset() {
    if (isRunning()) {
        showMessage(QMessageBox::Warning, ProgramWidget::tr("运行错误"),
                    ProgramWidget::tr("当前不是空闲状态"), RunMessage::notIdle().advice);
        return;
    }
    resetResumeData(page_);
    table_->selectOnly(0);
}
