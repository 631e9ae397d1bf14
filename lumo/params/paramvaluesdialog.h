#pragma once

#include "module/host.h"
#include "widgets/answerdialog.h"

#include <QLatin1String>
#include <QList>
#include <QPointer>

#include <memory>

class QLineEdit;

namespace Ui {
class ParamValuesDialog;
}

/// Edits the values of one parameter set, a row for each definition. It writes nothing until save(),
/// and is hidden when it announces its answer.
class ParamValuesDialog final : public AnswerDialog {
    Q_OBJECT
public:
    /// The set is not owned.
    explicit ParamValuesDialog(ModuleObject* set, QWidget* parent = nullptr);
    ~ParamValuesDialog() override;

    /// Stores the rows in the set, as numbers, and gives a changed power or duty ratio to the program's
    /// starts of welding that use the set. Nothing when the set has left the list meanwhile.
    void save();

    /// A press on a line activates its window and goes no further.
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void signalParamValuesIsok(bool ok);
    /// A line of the program was given a new value.
    void signalparamValueschangedProgram(int line);

protected:
    void announce(bool ok) override { emit signalParamValuesIsok(ok); }

private:
    void addRow(int row, const ModuleObject* definition);
    QLineEdit* valueLine(int row, const QString& text);
    void activateCell(int row, int column);
    void updateProgram(QLatin1String field, double value);

    const std::unique_ptr<Ui::ParamValuesDialog> ui_;
    const QPointer<ModuleObject> set_;
    const ModuleObject* const list_;
    QList<QLineEdit*> lines_;
};
