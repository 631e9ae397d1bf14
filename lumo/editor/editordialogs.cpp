#include "editor/editordialogs.h"

#include "editor/batchdialogs.h"
#include "editor/delaydialog.h"
#include "editor/iodialogs.h"
#include "editor/selectparamdialog.h"
#include "program/ports.h"
#include "program/statement.h"
#include "program/words.h"

#include <QWidget>

using namespace lumo;
using namespace prog;

namespace {

/// Stores the chosen set and copies of the values that were shown with it.
void storeParameterSet(QObject* sender, ModuleObject* statement, int index) {
    const ModuleObject* const set = m(key::param)->c(index);
    statement->set(sender, field::index, index)
        ->set(sender, field::laserPower, set->c(field::power)->getString())
        ->set(sender, field::laserDutyCycle, set->c(field::ratio)->getString())
        ->set(sender, field::wireEnable, m(key::port)->c(DO_WIRE_ENABLE)->c(field::enable)->getBool());
}

}  // namespace

EditorDialogs::EditorDialogs(QWidget* page) : QObject(page), page_(page) {}

EditorDialogs::~EditorDialogs() {
    forget();
}

bool EditorDialogs::existFor(const QString& type) {
    const StatementRow* const row = statementRow(type);
    return row && row->hasDialog;
}

void EditorDialogs::ask(ModuleObject* statement, QLatin1String treeKey, const Answered& answered) {
    const QString type = statement->c(field::type)->getString();
    if (type == statement::open || type == statement::param) {
        askParameterSet(statement, type == statement::open, treeKey, answered);
    } else if (type == statement::setDO) {
        auto* const dialog = new SetDODialog(statement, page_);
        show(
            dialog, &IoDialog::signalIsok, treeKey, [dialog](ModuleObject* into) { dialog->save(into); },
            answered);
    } else if (type == statement::waitDI) {
        auto* const dialog = new WaitDIDialog(statement, page_);
        show(
            dialog, &IoDialog::signalIsok, treeKey, [dialog](ModuleObject* into) { dialog->save(into); },
            answered);
    } else if (type == statement::delay) {
        auto* const dialog = new DelayDialog(statement, page_);
        const Store store = [this, dialog](ModuleObject* into) {
            into->set(page_, field::delaytime, dialog->value());
        };
        show(dialog, &DelayDialog::signaldelayIsok, treeKey, store, answered);
    }
}

void EditorDialogs::askParameterSet(ModuleObject* statement, bool isStart, QLatin1String treeKey,
                                    const Answered& answered) {
    auto* const dialog = new SelectParamDialog(statement, page_);
    dialog->setbeginOrparam(isStart ? 1 : 0);
    const Store store = [this, dialog, isStart](ModuleObject* into) {
        storeParameterSet(page_, into, dialog->index());
        if (isStart) {
            into->set(page_, field::weldspeed, dialog->weldSpeed());
        }
    };
    show(dialog, &SelectParamDialog::signalSelectParamIsok, treeKey, store, answered);
}

void EditorDialogs::askSpeed(const QList<QModelIndex>& rows, const Answered& answered) {
    auto* const dialog = new UpdateSpeedDialog(m(key::program), rows, page_);
    show(
        dialog, &UpdateSpeedDialog::signalUpdateSpeedIsok, key::dialogProgram,
        [dialog](ModuleObject* /*into*/) { dialog->save(); }, answered);
}

void EditorDialogs::askZone(const QList<QModelIndex>& rows, const Answered& answered) {
    auto* const dialog = new UpdateTurningParamDialog(m(key::program), rows, page_);
    show(
        dialog, &UpdateTurningParamDialog::signalUpdateturningIsok, key::dialogProgram,
        [dialog](ModuleObject* /*into*/) { dialog->save(); }, answered);
}

template <typename Dialog, typename Signal>
void EditorDialogs::show(Dialog* dialog, Signal answeredSignal, QLatin1String treeKey, const Store& store,
                         const Answered& answered) {
    dialog_ = dialog;
    treeKey_ = treeKey;
    m(treeKey)->setValue(page_, QVariant::fromValue<QWidget*>(dialog));
    connect(dialog, answeredSignal, this, [this, store, answered](bool ok) { finish(ok, store, answered); });
    connect(dialog, &QObject::destroyed, this, [this, answered] {
        forget();
        answered(false, Store());
    });
    dialog->open();
}

void EditorDialogs::finish(bool ok, const Store& store, const Answered& answered) {
    QDialog* const dialog = dialog_;
    dialog->disconnect(this);
    logW() << QStringLiteral("ProgramWidget::ProgramWidget slot isok = ") << ok;
    forget();
    answered(ok, store);
    dialog->hide();
    dialog->deleteLater();
}

void EditorDialogs::forget() {
    if (!treeKey_.isNull()) {
        m(treeKey_)->setValue(page_, QVariant());
        treeKey_ = QLatin1String();
    }
    dialog_.clear();
}
