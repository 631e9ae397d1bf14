#pragma once

#include "module/host.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <memory>

class AddParamDialog;
class ParamValuesDialog;
class QTableWidgetItem;

namespace Ui {
class ParamConfigWidget;
}
namespace lumo {
class SetExchange;
class SetRows;
class TimingPicture;
}  // namespace lumo

/// The page of the parameter sets: the operator adds, copies, renames, edits, moves and deletes sets, takes
/// them out to a file and in from one, and sees what the selected one does over time, where a tap on a time
/// edits it. Each change is saved.
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

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private slots:
    void on_tblWgtGroup_itemChanged(QTableWidgetItem* item);

private:
    void dress();
    void layOut();
    void followTree();
    void showSets();
    void showPicture();
    int selectedRow() const;
    void noteTyped();
    void storeNote(int row, const QString& note);
    void askName();
    void nameAnswered(bool ok);
    void addSet(const QString& name);
    void duplicateSelected();
    void moveSelected(int by);
    void askDeletion();
    static QString deletionText(int set);
    void deleteSet(ModuleObject* set);
    void editValues();
    void editTime(const QString& field);
    void valuesAnswered(bool ok);

    const std::unique_ptr<Ui::ParamConfigWidget> ui_;
    QPointer<AddParamDialog> nameDialog_;
    QPointer<ParamValuesDialog> valuesDialog_;
    QString refusedName_;  ///< that New was last given and a set has; proposed to be changed
    QList<int> changedLines_;
    QTimer showSoon_;  ///< when a change elsewhere is complete
    lumo::SetExchange* const exchange_;
    lumo::SetRows* rows_ = nullptr;
    lumo::TimingPicture* const picture_;
};
