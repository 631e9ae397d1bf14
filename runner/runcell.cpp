#include "runner/runcell.h"

#include "gantu/package.h"
#include "program/words.h"
#include "runner/problem.h"
#include "simulator/controller.h"

#include <QObject>

namespace run {

bool RunCell::make() {
    pages_ = std::make_unique<QStackedWidget>();
    pages_->resize(1280, 800);
    sim::Controller::Options controller;
    controller.axes = options_.axes;
    controller.writeMulti = !options_.noWriteMulti;
    controller.latency = options_.latency;
    QString error;
    if (!outside_.load(options_.controller, options_.io, &error)) {
        printError(error);
        return false;
    }
    outside_.addTo(&controller);
    cell_ = std::make_unique<workcell::WorkCell>(pages_.get(), controller);
    cell_->controller()->setPower(options_.power);
    cell_->controller()->setMode(options_.mode);
    QObject::connect(cell_->controller(), &sim::Controller::linkChanged, cell_->controller(),
                     [](bool up, const bridge::LinkReason& reason) {
                         if (!up && !reason.isEmpty()) {
                             printWarning(reason.text());
                         }
                     });
    return true;
}

bool RunCell::open() {
    workcell::setLanguage(options_.language);
    QString error;
    if (cell_->open(gantu::findLibrary(prog::key::lumo), &error)) {
        pages_->setUpdatesEnabled(false);  // painting would take most of the time
        if (!cell_->flags().executor) {
            error = QStringLiteral("the package made no executor");
        } else if (!cell_->flags().runMode) {
            error = QStringLiteral("the package does not export its run mode");
        }
    }
    if (!error.isEmpty()) {
        printError(error);
    }
    return error.isEmpty();
}

bool RunCell::connectOutside() {
    QString error;
    if (!outside_.isAny() || workcell::connectOutside(cell_->controller(), options_.power, &error)) {
        return true;
    }
    printError(QStringLiteral("%1: %2").arg(options_.controller.isEmpty() ? options_.io : options_.controller,
                                            error));
    return false;
}

}  // namespace run
