#pragma once

#include "module/host.h"

#include <QObject>

#include <memory>

class EditorDialogs;
class ProgramTable;

/// Makes new statements from their templates, with the operator's answers where the type has a dialog,
/// and inserts them below the selected row.
///
/// The place is looked up when the answer comes. A dialog that is cancelled leaves nothing behind.
class StatementCreation : public QObject {
    Q_OBJECT
public:
    /// `page` is the sender of what is written.
    StatementCreation(EditorDialogs* dialogs, ProgramTable* table, QObject* page);
    ~StatementCreation() override;

    /// A statement of the type that the template is named after. Does nothing while a dialog is open.
    void create(const ModuleObject* templateRecord);

private:
    void insert();

    EditorDialogs* dialogs_;
    ProgramTable* table_;
    QObject* page_;
    std::unique_ptr<ModuleObject> record_;  ///< while it is being made
};
