#pragma once

#include "module/host.h"
#include "widgets/watchedlinedialog.h"

#include <QLatin1String>
#include <QList>
#include <QModelIndex>
#include <QPointer>

#include <memory>

class QLineEdit;

namespace Ui {
class UpdateSpeedDialog;
class UpdateTurningParamDialog;
}  // namespace Ui

/// Sets a field of several statements to one number.
///
/// The rows are turned into statements when the dialog is made: edits of the program while it is open do not
/// move the number to other lines.
class BatchDialog : public WatchedLineDialog {
    Q_OBJECT
public:
    /// Sets the field of those chosen statements that have it. An empty line, for which OK is disabled,
    /// would store 0.
    void save();

protected:
    BatchDialog(QLatin1String field, ModuleObject* program, const QList<QModelIndex>& rows, QWidget* parent);

    /// Takes the line of the derived class's form.
    void build(QLineEdit* line);

private:
    const QLatin1String field_;
    QList<QPointer<ModuleObject>> statements_;
    QLineEdit* line_ = nullptr;
};

/// One speed for the chosen moves, in mm/s: more than 0, without an upper limit.
class UpdateSpeedDialog final : public BatchDialog {
    Q_OBJECT
public:
    UpdateSpeedDialog(ModuleObject* program, const QList<QModelIndex>& rows, QWidget* parent = nullptr);
    ~UpdateSpeedDialog() override;

signals:
    void signalUpdateSpeedIsok(bool ok);

protected:
    void announce(bool ok) override { emit signalUpdateSpeedIsok(ok); }

private:
    const std::unique_ptr<Ui::UpdateSpeedDialog> ui_;
};

/// One blending zone for the chosen moves, 0 to 5 mm.
class UpdateTurningParamDialog final : public BatchDialog {
    Q_OBJECT
public:
    UpdateTurningParamDialog(ModuleObject* program, const QList<QModelIndex>& rows,
                             QWidget* parent = nullptr);
    ~UpdateTurningParamDialog() override;

signals:
    void signalUpdateturningIsok(bool ok);

protected:
    void announce(bool ok) override { emit signalUpdateturningIsok(ok); }

private:
    const std::unique_ptr<Ui::UpdateTurningParamDialog> ui_;
};
