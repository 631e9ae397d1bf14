#pragma once

#include "module/host.h"
#include "widgets/answerdialog.h"

#include <QLatin1String>
#include <QList>
#include <QPointer>

#include <memory>

class QLabel;
class QLineEdit;

namespace Ui {
class ParamValuesDialog;
}
namespace lumo {
class FieldAnswer;
}

/// Edits the values of one parameter set, one row for each definition; a value that the set lacks counts and
/// shows as 0. OK is disabled while a value is empty or out of its range. Writes nothing before save(), and
/// hides before it announces its answer.
class ParamValuesDialog final : public AnswerDialog {
    Q_OBJECT
public:
    /// The set is not owned.
    explicit ParamValuesDialog(ModuleObject* set, QWidget* parent = nullptr);
    ~ParamValuesDialog() override;

    /// Name of the set; empty when it is gone.
    [[nodiscard]] QString setName() const;
    /// Stores the rows in the set as numbers, and copies a changed power or duty cycle to the starts of
    /// welding of the program that use the set. Does nothing if the set was removed from the list.
    void save();

    /// Puts the operator into the field of a value.
    void showField(const QString& name);

    /// Consumes a mouse press on a line, whose window it activates.
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void signalParamValuesIsok(bool ok);
    /// A line of the program was changed.
    void signalparamValueschangedProgram(int line);

protected:
    void announce(bool ok) override { emit signalParamValuesIsok(ok); }
    void resizeEvent(QResizeEvent* event) override;

private:
    void dressTable();
    void fitToPage();
    void addRow(int row, const ModuleObject* definition);
    QLineEdit* valueLine(const QString& name, const QString& text);
    void answerIn(QLineEdit* line, const QString& name);
    void refreshOk();
    void activateCell(int row, int column);
    void updateProgram(QLatin1String field, double value);

    const std::unique_ptr<Ui::ParamValuesDialog> ui_;
    const QPointer<ModuleObject> set_;
    const ModuleObject* const list_;
    QList<QLineEdit*> lines_;
    QList<lumo::FieldAnswer*> answers_;  ///< of the lines whose values have a range
    QLabel* note_ = nullptr;             ///< which value is not taken, and its range
};
