#pragma once

#include "module/host.h"

#include <QList>
#include <QPointer>
#include <QWidget>

#include <memory>

class AddParamDialog;
class ParamValuesDialog;
class QTableWidgetItem;

namespace Ui {
class ParamConfigWidget;
}

/// The page of the parameter sets: the operator adds, renames, edits and deletes sets, and each change is
/// saved.
class ParamConfigWidget final : public QWidget {
    Q_OBJECT
public:
    explicit ParamConfigWidget(QWidget* parent = nullptr);
    ~ParamConfigWidget() override;

    /// Writes the list to "lumo_param.json" in the working directory; an empty list as "{}". The host's file
    /// service reports errors.
    void save();
    /// Centres the cells of every set of the list.
    void setItemTextCenter(ModuleObject* list);

signals:
    /// Lines of the program that show a changed value.
    void signalparamconfigchangedProgramlist(QList<int> lines);

private slots:
    void on_tblWgtGroup_itemChanged(QTableWidgetItem* item);

private:
    void showRow(int row, const QString& name);
    void renumber();
    int selectedRow() const;
    void askName();
    void nameAnswered(bool ok);
    void addSet(const QString& name);
    void askDeletion();
    void deleteSet(ModuleObject* set);
    void editValues();
    void valuesAnswered(bool ok);

    const std::unique_ptr<Ui::ParamConfigWidget> ui_;
    QPointer<AddParamDialog> nameDialog_;
    QPointer<ParamValuesDialog> valuesDialog_;
    QList<int> changedLines_;
};
