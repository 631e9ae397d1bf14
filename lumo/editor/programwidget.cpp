#include "editor/programwidget.h"

#include "editor/findinglist.h"
#include "editor/heldstep.h"
#include "editor/pendantkeys.h"
#include "editor/programcheck.h"
#include "editor/projectface.h"
#include "editor/runcontrols.h"
#include "editor/startline.h"
#include "editor/statementcreation.h"
#include "editor/statementtext.h"
#include "editor/storedstate.h"
#include "editor/weldswitch.h"
#include "executor/lumoexecutor.h"
#include "executor/runmessages.h"
#include "module/globals.h"
#include "params/setuse.h"
#include "program/runprogram.h"
#include "program/statement.h"
#include "program/words.h"
#include "ui_programwidget.h"
#include "undo/edit.h"
#include "undo/steptext.h"
#include "widgets/fieldanswer.h"
#include "widgets/messagebox.h"
#include "widgets/switchbutton.h"

#include <QEvent>
#include <QPointer>
#include <QRegularExpressionValidator>

#include <algorithm>

using namespace lumo;
using namespace prog;

namespace {

/// Dynamic property of the buttons that insert statements, set in the form: the type of the statement.
constexpr char statementProperty[] = "statement";

constexpr EntryRange jumpRange{1};

QString statementOf(const QPushButton* button) {
    return button->property(statementProperty).toString();
}

/// The caption of a line's command.
QString commandOf(int row) {
    return type2cn(ProgramTable::program()->c(row)->c(field::type)->getString());
}

bool holdsDialog(QLatin1String path) {
    const QVariant value = m(path)->value();
    return value.isValid() && !value.isNull();
}

}  // namespace

ProgramWidget::ProgramWidget(QWidget* parent)
    : QWidget(parent),
      ui_(std::make_unique<Ui::ProgramWidget>()),
      clipboard_(std::make_unique<ModuleObject>(QStringLiteral("temp"))),
      jointCount_(kordservice()->get(nullptr, key::sysInfo, field::jointNum)->getInt()) {
    ui_->setupUi(this);
    ui_->tableWidget->follow();
    ui_->tableWidget->setEditLock(ui_->btnEdit);
    dialogs_ = new EditorDialogs(this);
    creation_ = new StatementCreation(dialogs_, ui_->tableWidget, this);
    check_ = new ProgramCheck(ui_->tableWidget, this);
    findings_ = new FindingList(check_, ui_->tableWidget, this);
    run_ = new RunControls(ui_->tableWidget, check_, this);
    startLine_ =
        new StartLine(ui_->tableWidget, check_,
                      {ui_->btnStart, ui_->btnRunOnce, ui_->btnReset, ui_->lblStart, ui_->btnResume}, this);
    face_ = new ProjectFace(ui_.get(), startLine_, this);
    stored_ = new StoredState(this);
    rules_ = std::make_unique<EnablingRules>(buttons());
    setUpJump();
    connectStatementButtons();
    connectEditing();
    connectFindings();
    connectRunControls();
    connectKeys();
    setUpWeldSwitch(ui_->widget_weld, true, key::weldSwitch);
    setUpWeldSwitch(ui_->widget_handweld, false, key::handWeldSwitch);

    ui_->tableWidget->selectOnly(m(key::executeLine)->getInt(0));
    onState(m(key::executeState)->value());
    refreshMoveOrderEnable(isEnable_moveorder);
    rcPower(m(key::robotPower)->value());
    onActivity();
}

ProgramWidget::~ProgramWidget() {
    delete run_;
    delete dialogs_;
    m(key::dialogProgram)->setValue(this, QVariant());
}

// --- Construction ---------------------------------------------------------------------------------

void ProgramWidget::setUpJump() {
    // A single digit is only an intermediate text of this pattern, but the button jumps to that line.
    ui_->lineEdit_steptojump->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[1-9][0-9]+$")), ui_->lineEdit_steptojump));
    jumpAnswer_ = new FieldAnswer(ui_->lineEdit_steptojump, jumpRange);
    jumpAnswer_->allowEmpty();
    ui_->btnParam->hide();
}

void ProgramWidget::connectStatementButtons() {
    for (QPushButton* const button : statementButtons()) {
        initStatementBtn(this, button, ProgramTable::program(),
                         m(key::defaultProgram)->c(statementOf(button)));
    }
}

void ProgramWidget::initStatementBtn(QObject* owner, QPushButton* button, ModuleObject* /*program*/,
                                     ModuleObject* templateRecord) {
    connect(button, &QPushButton::clicked, owner, [this, record = QPointer<ModuleObject>(templateRecord)] {
        if (record) {
            creation_->create(record);
        }
    });
}

void ProgramWidget::connectEditing() {
    connect(ui_->btnEdit, &QPushButton::clicked, this, &ProgramWidget::editSelected);
    connect(ui_->tableWidget, &QTableWidget::cellDoubleClicked, ui_->btnEdit, &QPushButton::click);
    connect(ui_->btnDel, &QPushButton::clicked, this, &ProgramWidget::deleteSelected);
    connect(ui_->btnCopy, &QPushButton::clicked, this, &ProgramWidget::copySelected);
    connect(ui_->btnPaste, &QPushButton::clicked, this, &ProgramWidget::paste);
    connect(ui_->btnUp, &QPushButton::clicked, this, [this] { moveSelected(-1); });
    connect(ui_->btnDown, &QPushButton::clicked, this, [this] { moveSelected(+1); });
    connect(ui_->anotationBtn, &QPushButton::clicked, this, &ProgramWidget::toggleRunFlags);
    connect(ui_->multiBtn, &QPushButton::clicked, this, &ProgramWidget::toggleMultiSelection);
    connect(ui_->speedBtn, &QPushButton::clicked, this, [this] { changeSelected(&EditorDialogs::askSpeed); });
    connect(ui_->turningBtn, &QPushButton::clicked, this,
            [this] { changeSelected(&EditorDialogs::askZone); });
    connect(ui_->btnSteptojump, &QPushButton::clicked, this, &ProgramWidget::jump);
    connect(ui_->tableWidget, &ProgramTable::programShown, stored_, &StoredState::touch);
}

void ProgramWidget::connectFindings() {
    ui_->tableWidget->showFindings(check_);
    connect(check_, &ProgramCheck::changed, this, [this] { showFindings(false); });
    connect(check_, &ProgramCheck::checked, this, [this] { showFindings(true); });
    connect(ui_->btnFindings, &FindingsButton::clicked, findings_, &FindingList::toggle);
    connect(findings_, &FindingList::lineChosen, this, [this](int line) {
        ui_->tableWidget->selectOnly(line);
        ui_->tableWidget->setFocus();
    });
}

void ProgramWidget::connectRunControls() {
    connect(ui_->btnStart, &QToolButton::clicked, run_, &RunControls::start);
    connect(ui_->btnRunOnce, &QToolButton::clicked, run_, &RunControls::moveToPoint);
    connect(ui_->btnPause, &QToolButton::clicked, run_, &RunControls::pause);
    connect(ui_->btnReset, &QToolButton::clicked, run_, &RunControls::reset);
    connect(ui_->btnResume, &QPushButton::clicked, run_, &RunControls::resume);
    auto* const step = new HeldStep(ui_->tableWidget, run_, this);
    step->follow(ui_->btnStepBack, -1);
    step->follow(ui_->btnStepForward, +1);
    connect(run_, &RunControls::aboutToRun, this, &ProgramWidget::updateUItoolwobj);
    connect(run_, &RunControls::saved, stored_, &StoredState::saved);
    connect(m(key::executeState), &ModuleObject::changed, this, &ProgramWidget::onState);
    if (executor) {
        connect(executor, &LumoExecutor::activityChanged, this, &ProgramWidget::onActivity);
    }
    connect(m(key::executeLine), &ModuleObject::changed, this, &ProgramWidget::onLine);
    connect(m(key::robotPower), &ModuleObject::changed, this, &ProgramWidget::rcPower);
}

void ProgramWidget::connectKeys() {
    auto* const keys = new PendantKeys(this);
    ProgramTable* const table = ui_->tableWidget;
    connect(keys, &PendantKeys::next, table, [table] { table->selectOnly(table->selectedRow() + 1); });
    connect(keys, &PendantKeys::last, table,
            [table] { table->selectOnly(std::max(0, table->selectedRow() - 1)); });
    connect(keys, &PendantKeys::center, ui_->btnEdit, &QPushButton::click);
    connect(keys, &PendantKeys::enter, this, &ProgramWidget::insertByKey);
    connect(keys, &PendantKeys::remove, this, &ProgramWidget::deleteByKey);
    followDragKeys(this);
}

void ProgramWidget::setUpWeldSwitch(QWidget* button, bool on, QLatin1String path) {
    m(path)->setValue(this, on);
    setUpSwitch(qobject_cast<SwitchButton*>(button), this, path);
}

QList<QPushButton*> ProgramWidget::statementButtons() const {
    QList<QPushButton*> buttons = findChildren<QPushButton*>();
    const auto isOther = [](const QPushButton* button) { return statementOf(button).isEmpty(); };
    buttons.erase(std::remove_if(buttons.begin(), buttons.end(), isOther), buttons.end());
    return buttons;
}

QList<QPushButton*> ProgramWidget::moveButtons() const {
    QList<QPushButton*> buttons = statementButtons();
    const auto isOther = [](const QPushButton* button) { return !isMove(statementOf(button)); };
    buttons.erase(std::remove_if(buttons.begin(), buttons.end(), isOther), buttons.end());
    return buttons;
}

EditorButtons ProgramWidget::buttons() const {
    EditorButtons all;
    for (QPushButton* const button : statementButtons()) {
        all.statementGroup.append(button);
    }
    all.statementGroup.append(ui_->btnSteptojump);
    all.editingGroup = {ui_->btnEdit, ui_->btnDown,  ui_->btnUp,    ui_->btnCopy,    ui_->btnPaste,
                        ui_->btnDel,  ui_->multiBtn, ui_->speedBtn, ui_->turningBtn, ui_->anotationBtn};
    all.runTools = {ui_->btnStart, ui_->btnRunOnce,  ui_->btnPause,
                    ui_->btnReset, ui_->btnStepBack, ui_->btnStepForward};
    all.pause = ui_->btnPause;
    all.multi = ui_->multiBtn;
    all.batchSpeed = ui_->speedBtn;
    all.batchZone = ui_->turningBtn;
    return all;
}

// --- For the main panel ---------------------------------------------------------------------------

void ProgramWidget::setProjectPath(const QString& path) {
    run_->setProjectPath(path);
    stored_->setProjectPath(path);
    startLine_->refresh();
}

void ProgramWidget::checkStored() {
    stored_->check();
}

void ProgramWidget::toolsetChanged() {
    stored_->touch();
    check_->touch();
}

void ProgramWidget::moveToLine(int row) {
    ui_->tableWidget->selectOnly(row);
    run_->moveToPoint();
}

void ProgramWidget::showFromTheTop() {
    ui_->tableWidget->setMarker(-1);
    ui_->tableWidget->selectOnly(0);
}

void ProgramWidget::addStatement(int row) {
    ui_->tableWidget->addStatement(row);
}

void ProgramWidget::delStatement(int row) {
    ui_->tableWidget->delStatement(row);
}

void ProgramWidget::changeStatement(int row) {
    ui_->tableWidget->changeStatement(row);
}

bool ProgramWidget::checkOpenMatchClose() {
    const auto pairs = prog::WeldPairs::of(ProgramTable::program());
    openRows_ = pairs.opens;
    closeRows_ = pairs.closes;
    return pairs.match();
}

// --- Enabling -------------------------------------------------------------------------------------

bool ProgramWidget::isMultiSelection() const {
    return ui_->tableWidget->selectionMode() == QAbstractItemView::MultiSelection;
}

void ProgramWidget::refreshUIEnable(bool enable) {
    rules_->refreshUIEnable(enable);
}

void ProgramWidget::refreshMoveOrderEnable(bool enable) {
    rules_->refreshMoveOrderEnable(enable);
    startLine_->refresh();
}

void ProgramWidget::rcPower(const QVariant& power) {
    rules_->rcPower(power.toString(), isMultiSelection());
    onActivity();
}

void ProgramWidget::onState(const QVariant& state) {
    rules_->executorState(state.toString());
    if (state.toString() == word::busy) {
        findings_->hide();  // the running line is to be seen
    }
    onActivity();
}

/// Stop is enabled for every run, also for a station's, and for the closing before it.
void ProgramWidget::onActivity() {
    rules_->running(isRunning());
    face_->setLocked(isRunning() || m(key::robotPower)->getString() == word::on);
}

void ProgramWidget::onLine(const QVariant& line) {
    const int row = line.toInt();
    if (hand_or_signalbing == 0) {
        ui_->tableWidget->setMarker(row);
    }
    ui_->tableWidget->selectOnly(row);
}

// --- Editing --------------------------------------------------------------------------------------

void ProgramWidget::editSelected() {
    const int row = ui_->tableWidget->selectedRow();
    if (row < 0 || holdsDialog(key::dialogStatement) || dialogs_->isOpen()) {
        return;
    }
    const QPointer<ModuleObject> edited = ProgramTable::program()->c(row);
    if (isMove(edited->c(field::type)->getString())) {
        emit pointBtnClicked(row, edited, jointCount_);
        return;
    }
    dialogs_->ask(edited, key::dialogStatement, [this, edited](bool ok, const EditorDialogs::Store& store) {
        // The statement may have been removed while the dialog was open.
        if (ok && edited && edited->pmobj() == ProgramTable::program()) {
            const int place = edited->indexInPmobj();
            const Edit edit(EditedList::Program, steptext::lineEdited(place, commandOf(place)));
            Edit::touch(edited);
            store(edited);
            changeStatement(place);
        }
    });
}

void ProgramWidget::deleteSelected() {
    const int row = ui_->tableWidget->selectedRow();
    if (row >= 0) {
        const Edit edit(EditedList::Program, steptext::lineDeleted(row, commandOf(row)));
        ProgramTable::program()->remove(this, mIndex(row));
    }
}

void ProgramWidget::copySelected() {
    const int row = ui_->tableWidget->selectedRow();
    if (row >= 0) {
        clipboard_->copyFrom(this, ProgramTable::program()->c(row));
        copiedSet_ = setOf(clipboard_.get());
    }
}

void ProgramWidget::paste() {
    const int row = ui_->tableWidget->selectedRow();
    if (row < 0 || clipboard_->size() == 0) {
        return;
    }
    ModuleObject* const program = ProgramTable::program();
    auto pasted = std::make_unique<ModuleObject>(ModuleObject::generateId(program));
    pasted->copyFrom(this, clipboard_.get());
    useSet(this, pasted.get(), copiedSet_);
    const QString command = type2cn(pasted->c(field::type)->getString());
    const Edit edit(EditedList::Program, steptext::linePasted(row + 1, command));
    if (program->insert(this, pasted.get(), true, row + 1)) {
        pasted.release();
    }
}

void ProgramWidget::moveSelected(int by) {
    const int from = ui_->tableWidget->selectedRow();
    const int to = from + by;
    if (from >= 0 && to >= 0 && to < ui_->tableWidget->rowCount()) {
        const Edit edit(EditedList::Program, steptext::lineMoved(from, to));
        Edit::moving(from, to);
        ui_->tableWidget->moveStatement(this, from, to);
        ui_->tableWidget->selectOnly(to);
    }
}

void ProgramWidget::toggleRunFlags() {
    const QList<QModelIndex> rows = ui_->tableWidget->selectedRows();
    if (rows.isEmpty()) {
        return;
    }
    const Edit edit(EditedList::Program, steptext::runFlag(rows.first().row(), rows.size()));
    for (const QModelIndex& index : rows) {
        ModuleObject* const flag = ProgramTable::program()->c(index.row())->c(field::execute);
        if (!flag->isNull()) {
            Edit::touch(flag);
            flag->setValue(this, !flag->getBool());
            ui_->tableWidget->showRunFlag(index.row());
            changeStatement(index.row());
        }
    }
}

void ProgramWidget::toggleMultiSelection() {
    if (isMultiSelection()) {
        ui_->tableWidget->setSelectionMode(QAbstractItemView::SingleSelection);
        ui_->multiBtn->setText(tr("多选"));
        ui_->tableWidget->clearSelection();
        rules_->leaveMultiSelection();
    } else {
        ui_->tableWidget->setSelectionMode(QAbstractItemView::MultiSelection);
        ui_->multiBtn->setText(tr("单选"));
        rules_->enterMultiSelection();
    }
}

void ProgramWidget::changeSelected(AskBatch ask) {
    const QList<QModelIndex> rows = ui_->tableWidget->selectedRows();
    if (rows.isEmpty() || dialogs_->isOpen()) {
        return;
    }
    const QString text =
        ask == &EditorDialogs::askSpeed ? steptext::speed(rows.size()) : steptext::zone(rows.size());
    (dialogs_->*ask)(rows, [this, text](bool ok, const EditorDialogs::Store& store) {
        if (ok) {
            const Edit edit(EditedList::Program, text);
            store(nullptr);
            ui_->tableWidget->changeStatements();
        }
    });
}

void ProgramWidget::jump() {
    if (m(key::executeState)->getString() != word::idle) {
        showMessage(QMessageBox::Warning, tr("运行错误"), tr("当前不是空闲状态"),
                    RunMessage::notIdle().advice);
        return;
    }
    if (!jumpAnswer_->isTaken()) {
        showMessage(QMessageBox::Warning, tr("输入错误"), rangeText(jumpRange));
        return;
    }
    const int line = ui_->lineEdit_steptojump->text().toInt();
    if (line > ui_->tableWidget->rowCount()) {
        showMessage(QMessageBox::Warning, tr("输入错误"), tr("跳转行数大于当前程序行数!"),
                    {tr("程序有 %1 行。").arg(ui_->tableWidget->rowCount()), QString(), {}});
        return;
    }
    ui_->tableWidget->selectOnly(line - 1);
}

void ProgramWidget::insertByKey() {
    logW() << QStringLiteral("lumo.keypad.enter.clicked isActiveWindow yes");
    moveButtons().at(keyedMove_)->click();
}

void ProgramWidget::deleteByKey() {
    logW() << QStringLiteral("lumo.keypad.delete.clicked isActiveWindow yes");
    keyedMove_ = (keyedMove_ + 1) % moveButtons().size();
    ui_->btnDel->click();
}

// --- Showing --------------------------------------------------------------------------------------

void ProgramWidget::showFindings(bool done) {
    ui_->btnFindings->showCounts(errors(), warnings(), done);
    emit findingsChanged();
}

int ProgramWidget::errors() const {
    return check_->errors();
}

int ProgramWidget::warnings() const {
    return check_->warnings();
}

QVariantList ProgramWidget::impossibleLines() const {
    return check_->impossibleLines();
}

void ProgramWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Other pages may have changed values that rows show: parameter sets, ports and points.
    ui_->tableWidget->catchUp();
    stored_->touch();
}

void ProgramWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    face_->arrange();
}

QSize ProgramWidget::minimumSizeHint() const {
    return ProjectFace::leastSize();
}

void ProgramWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange) {
        stored_->touch();
    } else if (event->type() == QEvent::StyleChange && face_) {
        face_->rearrange();
    }
}
