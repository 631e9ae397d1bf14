#include "params/paramconfigwidget.h"

#include "files/settingsfile.h"
#include "look/dialog.h"
#include "look/scale.h"
#include "module/globals.h"
#include "params/addparamdialog.h"
#include "params/paramvaluesdialog.h"
#include "params/setexchange.h"
#include "params/setrows.h"
#include "params/setuse.h"
#include "params/timingpicture.h"
#include "program/parameters.h"
#include "program/words.h"
#include "ui_paramconfigwidget.h"
#include "undo/edit.h"
#include "undo/steptext.h"
#include "widgets/messagebox.h"

#include <QEvent>
#include <QSignalBlocker>
#include <QStackedWidget>

using namespace lumo;
using namespace prog;

namespace {

QString nameOf(const ModuleObject* set) {
    return set->r(field::name)->getString();
}

bool refusedWhileRunning(const QString& title, const QString& text) {
    if (isRunning()) {
        showMessage(QMessageBox::Warning, title, text);
    }
    return isRunning();
}

}  // namespace

ParamConfigWidget::ParamConfigWidget(QWidget* parent)
    : QWidget(parent),
      ui_(std::make_unique<Ui::ParamConfigWidget>()),
      exchange_(new SetExchange(this)),
      picture_(new TimingPicture) {
    ui_->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    dress();
    rows_ = new SetRows(ui_->tblWgtGroup);
    picture_->setObjectName(QStringLiteral("timingPicture"));
    ui_->pictureArea->setWidget(picture_);
    logW() << QStringLiteral("ParamConfigWidget::ParamConfigWidget pns->cmobjs() count  = ")
           << m(key::param)->cmobjCount();
    showSets();
    connect(ui_->btnAdd, &QPushButton::clicked, this, &ParamConfigWidget::askName);
    connect(ui_->btnDel, &QPushButton::clicked, this, &ParamConfigWidget::askDeletion);
    connect(ui_->btnEdit, &QPushButton::clicked, this, &ParamConfigWidget::editValues);
    connect(ui_->btnDuplicate, &QPushButton::clicked, this, &ParamConfigWidget::duplicateSelected);
    connect(ui_->btnUp, &QPushButton::clicked, this, [this] { moveSelected(-1); });
    connect(ui_->btnDown, &QPushButton::clicked, this, [this] { moveSelected(+1); });
    connect(ui_->btnImport, &QPushButton::clicked, exchange_, &SetExchange::importSets);
    connect(ui_->btnExport, &QPushButton::clicked, this, [this] { exchange_->exportSets(selectedRow()); });
    connect(exchange_, &SetExchange::imported, this, [this](const QList<int>& lines) {
        showSets();
        save();
        emit signalparamconfigchangedProgramlist(lines);
    });
    connect(ui_->tblWgtGroup, &QTableWidget::itemSelectionChanged, this, &ParamConfigWidget::showPicture);
    connect(picture_, &TimingPicture::tapped, this, &ParamConfigWidget::editTime);
    connect(ui_->lineNote, &QLineEdit::editingFinished, this, &ParamConfigWidget::noteTyped);
    followTree();
}

ParamConfigWidget::~ParamConfigWidget() = default;

void ParamConfigWidget::dress() {
    ui_->headBar->dress(ui_->btnImport, "import");
    ui_->headBar->dress(ui_->btnExport, "export");
    ui_->footBar->dress(ui_->btnDel, "delete");
    ui_->footBar->dress(ui_->btnUp, "up");
    ui_->footBar->dress(ui_->btnDown, "down");
    ui_->footBar->dress(ui_->btnAdd, "new");
    ui_->footBar->dress(ui_->btnDuplicate, "duplicate");
    ui_->footBar->dress(ui_->btnEdit, "edit", true);
}

void ParamConfigWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
}

void ParamConfigWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        layOut();
    }
}

/// Lengths follow the window's size; the hint has a place where there is room.
void ParamConfigWidget::layOut() {
    const int margin = look::px(16);
    ui_->tableLayout->setContentsMargins(margin, 0, margin, look::px(4));
    ui_->tableLayout->setSpacing(look::px(4));
    ui_->tableLayout->setStretch(0, 1);
    ui_->pictureHead->setSpacing(margin);
    constexpr int leastForHint = 1000;
    ui_->lblHint->setVisible(width() >= look::px(leastForHint));
    ui_->pictureHead->setStretch(0, ui_->lblHint->isHidden() ? 1 : 0);
    constexpr int leastTable = 40 + 2 * 48 + 2;
    ui_->tblWgtGroup->setMinimumHeight(look::px(leastTable));
}

/// What changes the list or the program elsewhere, as undoing does, is shown when it is complete. A page that
/// was left is not shown again.
void ParamConfigWidget::followTree() {
    showSoon_.setSingleShot(true);
    showSoon_.setInterval(0);
    connect(&showSoon_, &QTimer::timeout, this, &ParamConfigWidget::showSets);
    const auto later = [this] {
        if (isVisible()) {
            showSoon_.start();
        }
    };
    for (const ModuleObject* const list : {m(key::param), m(key::program)}) {
        connect(list, &ModuleObject::changed, this, later);
        connect(list, &ModuleObject::added, this, later);
        connect(list, &ModuleObject::removed, this, later);
    }
}

void ParamConfigWidget::showSets() {
    QTableWidget* const table = ui_->tblWgtGroup;
    {
        const QSignalBlocker silence(table);
        const QList<ModuleObject*> sets = m(key::param)->cmobjs();
        const QVector<QList<int>> lines = linesOfAllSets();
        while (table->rowCount() > sets.size()) {
            table->removeRow(table->rowCount() - 1);
        }
        while (table->rowCount() < sets.size()) {
            rows_->append();
        }
        for (int row = 0; row < sets.size(); ++row) {
            rows_->show(row, sets[row], lines[row]);
        }
        setItemTextCenter(m(key::param));
    }
    rows_->fit();
    showPicture();
}

/// Of the first set, as long as none is selected.
void ParamConfigWidget::showPicture() {
    const ModuleObject* const set = m(key::param)->c(qMax(0, selectedRow()));
    const bool isThere = !set->isNull();
    picture_->showSet(isThere ? std::make_optional(LaserParams::from(set)) : std::nullopt);
    ui_->lblSet->setText(isThere ? nameOf(set) : QString());
    ui_->lineNote->setText(set->c(field::note)->getString());
    ui_->lineNote->setEnabled(isThere);
}

void ParamConfigWidget::setItemTextCenter(ModuleObject* list) {
    const QSignalBlocker silence(ui_->tblWgtGroup);
    const int rows = qMin(list->cmobjCount(), ui_->tblWgtGroup->rowCount());
    for (int row = 0; row < rows; ++row) {
        auto* label = qobject_cast<QLabel*>(ui_->tblWgtGroup->cellWidget(row, SetNumber));
        label->setAlignment(Qt::AlignCenter);
        ui_->tblWgtGroup->item(row, SetName)->setTextAlignment(Qt::AlignCenter);
    }
}

int ParamConfigWidget::selectedRow() const {
    const QModelIndexList rows = ui_->tblWgtGroup->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void ParamConfigWidget::save() {
    saveSettings(Settings::Params);
}

void ParamConfigWidget::on_tblWgtGroup_itemChanged(QTableWidgetItem* item) {
    const int row = item->row();
    if (item->column() == SetNote) {
        storeNote(row, item->text());
        return;
    }
    const Edit edit(EditedList::Params, steptext::setRenamed(nameOf(m(key::param)->c(row)), item->text()));
    m(key::param)->c(row)->set(this, field::name, item->text());
    save();
    changedLines_.clear();
    for (const int line : linesUsing(row)) {
        if (m(key::program)->c(line)->c(field::type)->getString() == statement::open) {
            changedLines_.append(line);
        }
    }
    showPicture();
    emit signalparamconfigchangedProgramlist(changedLines_);
}

/// The remark of the set whose picture is shown.
void ParamConfigWidget::noteTyped() {
    const int row = qMax(0, selectedRow());
    const QString note = ui_->lineNote->text();
    const ModuleObject* const set = m(key::param)->c(row);
    if (!set->isNull() && set->c(field::note)->getString() != note) {
        storeNote(row, note);
        showSets();
    }
}

void ParamConfigWidget::storeNote(int row, const QString& note) {
    ModuleObject* const set = m(key::param)->c(row);
    const Edit edit(EditedList::Params, steptext::setEdited(nameOf(set)));
    set->set(this, field::note, note);
    save();
}

void ParamConfigWidget::askName() {
    if (nameDialog_) {
        return;
    }
    nameDialog_ = new AddParamDialog(this);
    nameDialog_->settitlename(tr("新建参数配置"));
    nameDialog_->propose(refusedName_);
    connect(nameDialog_, &AddParamDialog::signalAddParamIsok, this, &ParamConfigWidget::nameAnswered);
    nameDialog_->open();
}

void ParamConfigWidget::nameAnswered(bool ok) {
    logW() << QStringLiteral("ParamConfigWidget::ParamConfigWidget slot isok = ") << ok;
    const QString name = nameDialog_->name();
    nameDialog_->disconnect(this);
    nameDialog_->deleteLater();
    nameDialog_ = nullptr;
    refusedName_.clear();
    if (!ok) {
        return;
    }
    if (name.isEmpty()) {
        showMessage(QMessageBox::NoIcon, QString(), tr("请输入参数名称"));
    } else if (isSetName(name)) {
        refusedName_ = name;
        showMessage(QMessageBox::Warning, tr("提示"), tr("该参数名称已存在"));
    } else {
        addSet(name);
    }
}

void ParamConfigWidget::addSet(const QString& name) {
    const Edit edit(EditedList::Params, steptext::setAdded(name));
    auto* set = new ModuleObject;
    set->set(this, field::name, name);
    const QList<ModuleObject*> definitions = m(key::defaultParam)->cmobjs();
    for (const ModuleObject* definition : definitions) {
        set->set(this, definition->r(field::name)->getString(), definition->r(field::value)->value());
    }
    m(key::param)->insert(this, set);
    showSets();
    save();
}

/// Behind all others, so that no line has to follow.
void ParamConfigWidget::duplicateSelected() {
    const int row = selectedRow();
    if (row < 0) {
        showMessage(QMessageBox::Warning, tr("提示"), tr("请先选中行"));
        return;
    }
    const Edit edit(EditedList::Params, steptext::setAdded(freeSetName(nameOf(m(key::param)->c(row)))));
    duplicateSet(this, row);
    showSets();
    ui_->tblWgtGroup->selectRow(ui_->tblWgtGroup->rowCount() - 1);
    save();
}

/// The lines of the program follow. A run looks its sets up by their places.
void ParamConfigWidget::moveSelected(int by) {
    const int from = selectedRow();
    const int to = from + by;
    if (from < 0) {
        showMessage(QMessageBox::Warning, tr("提示"), tr("请先选中行"));
        return;
    }
    if (to < 0 || to >= ui_->tblWgtGroup->rowCount() ||
        refusedWhileRunning(tr("运行错误"), tr("当前不是空闲状态"))) {
        return;
    }
    const Edit edit(EditedList::Params, steptext::setMoved(nameOf(m(key::param)->c(from))));
    moveSet(this, from, to);
    showSets();
    ui_->tblWgtGroup->selectRow(to);
    save();
}

void ParamConfigWidget::askDeletion() {
    const int row = selectedRow();
    if (row < 0) {
        return;
    }
    const QStackedWidget* center = instantiatedCenterWidget();
    auto* box = new QMessageBox(QMessageBox::Question, tr("删除确认"),
                                QStringLiteral("%1 %2 ?").arg(tr("是否删除")).arg(row + 1),
                                QMessageBox::Yes | QMessageBox::No, center ? center->currentWidget() : this);
    box->button(QMessageBox::Yes)->setText(tr("是"));
    box->button(QMessageBox::No)->setText(tr("否"));
    box->setDefaultButton(QMessageBox::No);
    look::dress(box);
    box->setInformativeText(deletionText(row));
    box->setAttribute(Qt::WA_DeleteOnClose);
    const QPointer<ModuleObject> set(m(key::param)->c(row));
    connect(box, &QDialog::finished, this, [this, set](int button) {
        if (button == QMessageBox::Yes && set) {
            deleteSet(set);
        }
    });
    box->open();
}

/// What becomes of the lines that use the set.
QString ParamConfigWidget::deletionText(int set) {
    const QString lines = lineNumbers(linesUsing(set));
    const QString others = tr("其他工程按序号使用参数组，不会随之改变，请检查。");
    return lines.isEmpty()
               ? others
               : tr("第 %1 行使用这组参数，删除后须为其另选参数。").arg(lines) + QLatin1Char('\n') + others;
}

void ParamConfigWidget::deleteSet(ModuleObject* set) {
    const int row = set->indexInPmobj();
    if (set->pmobj() != m(key::param) || refusedWhileRunning(tr("运行错误"), tr("当前不是空闲状态"))) {
        return;
    }
    const Edit edit(EditedList::Params, steptext::setDeleted(nameOf(set)));
    removeSet(this, row);
    showSets();
    ui_->tblWgtGroup->clearSelection();
    save();
}

void ParamConfigWidget::editValues() {
    const int row = selectedRow();
    if (row < 0) {
        showMessage(QMessageBox::Warning, tr("提示"), tr("请先选中行"));
        return;
    }
    if (valuesDialog_) {
        return;
    }
    valuesDialog_ = new ParamValuesDialog(m(key::param)->c(row), this);
    changedLines_.clear();
    connect(valuesDialog_, &ParamValuesDialog::signalparamValueschangedProgram, this,
            [this](int line) { changedLines_.append(line); });
    connect(valuesDialog_, &ParamValuesDialog::signalParamValuesIsok, this,
            &ParamConfigWidget::valuesAnswered);
    valuesDialog_->open();
}

/// Of the set whose picture is shown.
void ParamConfigWidget::editTime(const QString& field) {
    if (selectedRow() < 0) {
        ui_->tblWgtGroup->selectRow(0);
    }
    editValues();
    if (valuesDialog_) {
        picture_->mark(field);
        valuesDialog_->showField(field);
    }
}

void ParamConfigWidget::valuesAnswered(bool ok) {
    logW() << QStringLiteral("ParamConfigWidget::ParamConfigWidget slot isok = ") << ok;
    if (ok) {
        const Edit edit(EditedList::Params, steptext::setEdited(valuesDialog_->setName()));
        valuesDialog_->save();
        showSets();
        save();
        emit signalparamconfigchangedProgramlist(changedLines_);
    }
    picture_->mark(QString());
    valuesDialog_->disconnect(this);
    valuesDialog_->deleteLater();
    valuesDialog_ = nullptr;
}
