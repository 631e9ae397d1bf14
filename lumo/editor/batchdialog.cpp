#include "editor/batchdialog.h"

#include "widgets/fieldlimits.h"

#include <QLineEdit>

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
            statement->set(this, field_, number);
        }
    }
}
