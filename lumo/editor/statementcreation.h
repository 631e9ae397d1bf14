#pragma once

#include "module/host.h"

#include <QObject>

#include <memory>

class EditorDialogs;
class ProgramTable;

/// Makes new statements from their templates, asks for their values if the type has a dialog, and inserts
/// them below the row that is selected at that moment. Nothing is inserted when the dialog is cancelled.
class StatementCreation : public QObject {
    Q_OBJECT
public:
    /// `page` is the sender of what is written.
    StatementCreation(EditorDialogs* dialogs, ProgramTable* table, QObject* page);
    ~StatementCreation() override;

    /// Makes a statement of the type that the template is named after. Does nothing while a dialog is open.
    void create(const ModuleObject* templateRecord);

private:
    void insert();

    EditorDialogs* dialogs_;
    ProgramTable* table_;
    QObject* page_;
    std::unique_ptr<ModuleObject> record_;  ///< of the statement whose dialog is open
};
