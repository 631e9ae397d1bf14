#include "editor/batchdialogs.h"

#include "program/statement.h"
#include "program/words.h"
#include "ui_updatespeeddialog.h"
#include "ui_updateturningparamdialog.h"
#include "undo/edit.h"
#include "widgets/fieldlimits.h"

#include <QLineEdit>

using namespace prog;

BatchDialog::BatchDialog(QLatin1String field, ModuleObject* program, const QList<QModelIndex>& rows,
                         QWidget* parent)
    : WatchedLineDialog(Closing::ByOwner, parent), field_(field) {
    for (const QModelIndex& row : rows) {
        statements_.append(program->c(row.row()));
    }
}

void BatchDialog::build(QLineEdit* line) {
    line_ = line;
    watch(line);
    allowOnlyDigits(line);
}

void BatchDialog::save() {
    const int number = line_->text().toInt();
    for (const QPointer<ModuleObject>& statement : qAsConst(statements_)) {
        if (statement && statement->hasCmobj(field_)) {
            lumo::Edit::touch(statement->c(field_));
            statement->set(this, field_, number);
        }
    }
}

UpdateSpeedDialog::UpdateSpeedDialog(ModuleObject* program, const QList<QModelIndex>& rows, QWidget* parent)
    : BatchDialog(field::speed, program, rows, parent), ui_(std::make_unique<Ui::UpdateSpeedDialog>()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    build(ui_->lineEdit);
    require(entryRange(statement::moveL, field::speed).upward(), ui_->label_2->text());
}

UpdateSpeedDialog::~UpdateSpeedDialog() = default;

UpdateTurningParamDialog::UpdateTurningParamDialog(ModuleObject* program, const QList<QModelIndex>& rows,
                                                   QWidget* parent)
    : BatchDialog(field::zone, program, rows, parent), ui_(std::make_unique<Ui::UpdateTurningParamDialog>()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    build(ui_->lineEdit);
    limitToZone(ui_->lineEdit);
    require(entryRange(statement::moveL, field::zone), ui_->label_2->text());
}

UpdateTurningParamDialog::~UpdateTurningParamDialog() = default;
