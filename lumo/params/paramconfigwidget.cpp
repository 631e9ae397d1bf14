#include "params/paramconfigwidget.h"

#include "files/settingsfile.h"
#include "params/addparamdialog.h"
#include "params/paramvaluesdialog.h"
#include "program/words.h"
#include "ui_paramconfigwidget.h"
#include "undo/edit.h"
#include "undo/steptext.h"
#include "widgets/messagebox.h"

#include <QSignalBlocker>
#include <QStackedWidget>

using namespace lumo;
using namespace prog;

namespace {

constexpr int numberColumn = 0;
constexpr int nameColumn = 1;

QString nameOf(const ModuleObject* set) {
    return set->r(field::name)->getString();
}

bool isNameTaken(const QString& name) {
    const QList<ModuleObject*> sets = m(key::param)->cmobjs();
    return std::any_of(sets.begin(), sets.end(),
                       [&name](const ModuleObject* set) { return set->r(field::name)->getString() == name; });
}

}  // namespace

ParamConfigWidget::ParamConfigWidget(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::ParamConfigWidget>()) {
    ui_->setupUi(this);
    ui_->tblWgtGroup->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    ui_->tblWgtGroup->setTabKeyNavigation(false);
    const QList<ModuleObject*> sets = m(key::param)->cmobjs();
    logW() << QStringLiteral("ParamConfigWidget::ParamConfigWidget pns->cmobjs() count  = ") << sets.size();
    for (int row = 0; row < sets.size(); ++row) {
        showRow(row, sets[row]->r(field::name)->getString());
    }
    setItemTextCenter(m(key::param));
    connect(ui_->btnAdd, &QPushButton::clicked, this, &ParamConfigWidget::askName);
    connect(ui_->btnDel, &QPushButton::clicked, this, &ParamConfigWidget::askDeletion);
    connect(ui_->btnEdit, &QPushButton::clicked, this, &ParamConfigWidget::editValues);
}

ParamConfigWidget::~ParamConfigWidget() = default;

void ParamConfigWidget::showRow(int row, const QString& name) {
    const QSignalBlocker silence(ui_->tblWgtGroup);
    ui_->tblWgtGroup->insertRow(row);
    ui_->tblWgtGroup->setCellWidget(row, numberColumn, new QLabel(QString::number(row + 1)));
    ui_->tblWgtGroup->setItem(row, nameColumn, new QTableWidgetItem(name));
}

void ParamConfigWidget::renumber() {
    for (int row = 0; row < ui_->tblWgtGroup->rowCount(); ++row) {
        auto* label = qobject_cast<QLabel*>(ui_->tblWgtGroup->cellWidget(row, numberColumn));
        label->setText(QString::number(row + 1));
    }
}

void ParamConfigWidget::setItemTextCenter(ModuleObject* list) {
    const QSignalBlocker silence(ui_->tblWgtGroup);
    const int rows = qMin(list->cmobjCount(), ui_->tblWgtGroup->rowCount());
    for (int row = 0; row < rows; ++row) {
        auto* label = qobject_cast<QLabel*>(ui_->tblWgtGroup->cellWidget(row, numberColumn));
        label->setAlignment(Qt::AlignCenter);
        ui_->tblWgtGroup->item(row, nameColumn)->setTextAlignment(Qt::AlignCenter);
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
    const Edit edit(EditedList::Params, steptext::setRenamed(nameOf(m(key::param)->c(row)), item->text()));
    m(key::param)->c(row)->set(this, field::name, item->text());
    save();
    changedLines_.clear();
    const QList<ModuleObject*> lines = m(key::program)->cmobjs();
    for (int line = 0; line < lines.size(); ++line) {
        if (lines[line]->r(field::type)->getString() == statement::open &&
            lines[line]->r(field::index)->getInt() == row) {
            changedLines_.append(line);
        }
    }
    emit signalparamconfigchangedProgramlist(changedLines_);
}

void ParamConfigWidget::askName() {
    if (nameDialog_) {
        return;
    }
    nameDialog_ = new AddParamDialog(this);
    nameDialog_->settitlename(tr("新建参数配置"));
    connect(nameDialog_, &AddParamDialog::signalAddParamIsok, this, &ParamConfigWidget::nameAnswered);
    nameDialog_->open();
}

void ParamConfigWidget::nameAnswered(bool ok) {
    logW() << QStringLiteral("ParamConfigWidget::ParamConfigWidget slot isok = ") << ok;
    const QString name = nameDialog_->name();
    nameDialog_->disconnect(this);
    nameDialog_->deleteLater();
    nameDialog_ = nullptr;
    if (!ok) {
        return;
    }
    if (name.isEmpty()) {
        showMessage(QMessageBox::NoIcon, QString(), tr("请输入参数名称"));
    } else if (isNameTaken(name)) {
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
    showRow(ui_->tblWgtGroup->rowCount(), name);
    setItemTextCenter(m(key::param));
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
    box->setAttribute(Qt::WA_DeleteOnClose);
    const QPointer<ModuleObject> set(m(key::param)->c(row));
    connect(box, &QDialog::finished, this, [this, set](int button) {
        if (button == QMessageBox::Yes && set) {
            deleteSet(set);
        }
    });
    box->open();
}

void ParamConfigWidget::deleteSet(ModuleObject* set) {
    const int row = set->indexInPmobj();
    if (set->pmobj() != m(key::param) || row >= ui_->tblWgtGroup->rowCount()) {
        return;
    }
    const Edit edit(EditedList::Params, steptext::setDeleted(nameOf(set)));
    ui_->tblWgtGroup->removeRow(row);
    renumber();
    m(key::param)->remove(this, mIndex(row, QString()));
    setItemTextCenter(m(key::param));
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

void ParamConfigWidget::valuesAnswered(bool ok) {
    logW() << QStringLiteral("ParamConfigWidget::ParamConfigWidget slot isok = ") << ok;
    if (ok) {
        const Edit edit(EditedList::Params, steptext::setEdited(valuesDialog_->setName()));
        valuesDialog_->save();
        save();
        emit signalparamconfigchangedProgramlist(changedLines_);
    }
    valuesDialog_->disconnect(this);
    valuesDialog_->deleteLater();
    valuesDialog_ = nullptr;
}
