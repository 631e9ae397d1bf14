#include "runner/bench.h"

#include "gantu/bmodule.h"
#include "gantu/panel.h"
#include "kord/kordservice.h"
#include "kord/managerhelper.h"
#include "mendo/modulemanager.h"
#include "simulator/cell.h"
#include "simulator/controller.h"

#include <QLibrary>

namespace run {

namespace {

const QString packageName = QStringLiteral("lumo");

/// The factory key of the package's page, as its navigation entry names it.
QString pageKey() {
    for (const mendo::ModuleObject* page : m(QStringLiteral("pel.navo.pages"))->cmobjs()) {
        const QString key = page->c(QStringLiteral("nav"))->getString();
        if (!key.isEmpty()) {
            return key;
        }
    }
    return {};
}

}  // namespace

Bench::Bench(const Options& options, QObject* parent) : QObject(parent) {
    sim::Controller::Options cell;
    cell.axes = options.axes;
    cell.writeMulti = options.writeMulti;
    controller_ = new sim::Controller(kordservice(), cell, this);
    controller_->setPower(options.power);
    controller_->setMode(options.mode);
}

void Bench::wireCell() {
    cell_ = new sim::Cell(controller_, sim::readWiring(QStringLiteral("lumo_port.json")), this);
}

Bench::~Bench() = default;

bool Bench::openPanel(const QString& language, QString* error) {
    kord::ManagerHelper::instance()->module()->mobj()->set(this, QStringLiteral("language"), language);
    center_ = std::make_unique<QStackedWidget>();
    center_->resize(1280, 800);
    setInstantiatedCenterWidget(center_.get());
    const QString library = gantu::findLibrary(packageName);
    return package_.load(library, packageName, error) && openPage(error) && findExecutor(library, error);
}

bool Bench::openPage(QString* error) {
    QWidget* widget = package_.page(pageKey());
    if (!widget) {
        *error = QStringLiteral("the package has no page");
        return false;
    }
    center_->addWidget(widget);
    center_->setCurrentWidget(widget);
    center_->setUpdatesEnabled(false);  // nobody looks: painting would take more time than all the rest
    center_->show();
    return true;
}

bool Bench::findExecutor(const QString& library, QString* error) {
    for (QObject* child : m(packageName)->children()) {
        if (child->inherits("LumoExecutor")) {
            executor_ = child;
        }
    }
    runMode_ = reinterpret_cast<int*>(QLibrary(library).resolve("hand_or_signalbing"));
    if (executor_ && runMode_) {
        return true;
    }
    *error = executor_ ? QStringLiteral("the package does not export its run mode")
                       : QStringLiteral("the package made no executor");
    return false;
}

}  // namespace run
