#pragma once

#include "module/host.h"
#include "widgets/watchedlinedialog.h"

#include <QLatin1String>
#include <QList>
#include <QModelIndex>
#include <QPointer>

class QLineEdit;

/// Gives one number to a field of many statements at once: the speed and the zone dialog in one.
///
/// The rows stand for the statements that are there when the dialog is made; a number
/// never lands in another line, whatever happens to the program until it is answered.
class BatchDialog : public WatchedLineDialog {
    Q_OBJECT
public:
    /// Sets the field of those chosen statements that have it. An empty line, where OK is offered, stores 0.
    void save();

protected:
    /// `field` is the one to set.
    BatchDialog(QLatin1String field, ModuleObject* program, const QList<QModelIndex>& rows, QWidget* parent);

    /// The line of the derived class's form.
    void build(QLineEdit* line);

private:
    const QLatin1String field_;
    QList<QPointer<ModuleObject>> statements_;
    QLineEdit* line_ = nullptr;
};
