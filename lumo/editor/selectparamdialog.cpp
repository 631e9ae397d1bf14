#include "editor/selectparamdialog.h"

#include "program/statement.h"
#include "program/words.h"
#include "ui_selectparamdialog.h"
#include "widgets/fieldlimits.h"

using namespace lumo;
using namespace prog;

SelectParamDialog::SelectParamDialog(ModuleObject* statement, QWidget* parent)
    : WatchedLineDialog(Closing::ByOwner, parent),
      ui_(std::make_unique<Ui::SelectParamDialog>()),
      statement_(statement) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    watch(ui_->lineEdit);
    allowOnlyDigits(ui_->lineEdit);
    const QList<ModuleObject*> sets = m(key::param)->cmobjs();
    for (const ModuleObject* set : sets) {
        ui_->comboBox->addItem(set->r(field::name)->getString());
    }
    ui_->comboBox->setPlaceholderText(sets.isEmpty() ? tr("请先在参数配置中增加参数") : tr("请选择工艺参数"));
    ui_->comboBox->setCurrentIndex(statement->r(field::index)->getInt());
    connect(ui_->comboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &SelectParamDialog::refreshOk);
    refreshOk();
}

SelectParamDialog::~SelectParamDialog() = default;

void SelectParamDialog::setbeginOrparam(int mode) {
    if (mode == 1) {
        ui_->label->hide();
        ui_->lineEdit->setText(statement_ ? statement_->r(field::weldspeed)->getString() : QString());
        require(entryRange(statement::open, field::weldspeed), ui_->label_4->text());
    } else if (mode == 0) {
        ui_->label_2->hide();
        ui_->label_3->hide();
        ui_->label_4->hide();
        ui_->lineEdit->hide();
        resize(width(), 0);  // no higher than its layout
    }
}

int SelectParamDialog::index() const {
    return ui_->comboBox->currentIndex();
}

bool SelectParamDialog::canAccept() const {
    return index() >= 0 && WatchedLineDialog::canAccept();
}

QString SelectParamDialog::weldSpeed() const {
    return ui_->lineEdit->text();
}
