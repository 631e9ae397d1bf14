#include "editor/statementcreation.h"

#include "editor/editordialogs.h"
#include "editor/programtable.h"
#include "editor/statementtext.h"
#include "program/words.h"
#include "undo/edit.h"
#include "undo/steptext.h"

using namespace lumo;
using namespace prog;

StatementCreation::StatementCreation(EditorDialogs* dialogs, ProgramTable* table, QObject* page)
    : QObject(page), dialogs_(dialogs), table_(table), page_(page) {}

StatementCreation::~StatementCreation() = default;

void StatementCreation::create(const ModuleObject* templateRecord) {
    if (dialogs_->isOpen()) {
        return;
    }
    record_ = std::make_unique<ModuleObject>(ModuleObject::generateId(ProgramTable::program()));
    record_->copyFrom(page_, templateRecord);
    record_->set(page_, field::type, templateRecord->name())
        ->set(page_, field::note, QString())
        ->set(page_, field::execute, true);
    if (!EditorDialogs::existFor(templateRecord->name())) {
        insert();
        return;
    }
    dialogs_->ask(record_.get(), key::dialogProgram, [this](bool ok, const EditorDialogs::Store& store) {
        if (ok) {
            store(record_.get());
            insert();
        }
        record_.reset();
    });
}

void StatementCreation::insert() {
    if (record_->hasCmobj(field::point)) {
        record_->c(field::point)->copyFrom(page_, kordservice()->get(page_, key::posture));
    }
    if (record_->hasCmobj(field::toolset)) {
        record_->c(field::toolset)->copyFrom(page_, m(key::toolset));
    }
    const int row = table_->selectedRow() + 1;
    const QString command = type2cn(record_->c(field::type)->getString());
    const Edit edit(EditedList::Program, steptext::lineInserted(row, command));
    ModuleObject* const statement = record_.release();
    if (!ProgramTable::program()->insert(page_, statement, true, row)) {
        delete statement;
        return;
    }
    table_->selectOnly(row);
}
