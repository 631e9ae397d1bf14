#include "runner/bench.h"

#include "gantu/bmodule.h"
#include "gantu/panel.h"
#include "kord/kordservice.h"
#include "kord/managerhelper.h"
#include "mendo/creatormanager.h"
#include "mendo/modulemanager.h"
#include "simulator/cell.h"
#include "simulator/controller.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>

namespace run {

namespace {

const QString kPackage = QStringLiteral("lumo");

/// Rows of the port file.
enum PortRow { Gas = 6, WireEnable = 8, LaserEnable = 9, WirePullback = 14, WireSpeed = 15, LaserPower = 16 };

/// What the port file says at start; nothing is wired without one.
sim::Wiring readWiring() {
    QFile file(QStringLiteral("lumo_port.json"));
    QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (text.startsWith("\xEF\xBB\xBF"))
        text.remove(0, 3);
    const QJsonArray rows = QJsonDocument::fromJson(text).array();
    const auto nameOf = [&rows](PortRow row) {
        return rows.at(row).toObject().value(QStringLiteral("name")).toString();
    };
    sim::Wiring wiring;
    wiring.gas = nameOf(Gas);
    wiring.wireEnable = nameOf(WireEnable);
    wiring.wirePullback = nameOf(WirePullback);
    wiring.laserEnable = nameOf(LaserEnable);
    wiring.laserPower = nameOf(LaserPower);
    wiring.wireSpeed = nameOf(WireSpeed);
    return wiring;
}

/// Beside the program in a build tree, in the library folder where it is installed.
QString findPackage() {
    const QString folder = QCoreApplication::applicationDirPath();
    const QStringList places = {folder + QStringLiteral("/../lib/liblumo.so"),
                                folder + QStringLiteral("/../lib/" LUMO_ARCHITECTURE "/lumo/liblumo.so"),
                                folder + QStringLiteral("/../lib/lumo/liblumo.so")};
    for (const QString& place : places) {
        if (QFileInfo::exists(place))
            return QFileInfo(place).canonicalFilePath();
    }
    return {};
}

/// The factory key of the package's page, as its navigation entry names it.
QString pageKey() {
    for (const mendo::ModuleObject* page : m(QStringLiteral("pel.navo.pages"))->cmobjs()) {
        const QString key = page->c(QStringLiteral("nav"))->getString();
        if (!key.isEmpty())
            return key;
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
    cell_ = new sim::Cell(controller_, readWiring(), this);
}

Bench::~Bench() {
    page_.reset();
    module_.reset();
}

bool Bench::openPanel(const QString& language, QString* error) {
    kord::ManagerHelper::instance()->module()->mobj()->set(this, QStringLiteral("language"), language);
    center_ = std::make_unique<QStackedWidget>();
    center_->resize(1280, 800);
    setInstantiatedCenterWidget(center_.get());
    const QString library = findPackage();
    if (library.isEmpty()) {
        *error = QStringLiteral("the package liblumo.so is not beside this program");
        return false;
    }
    if (!gantu::loadPackage(library, error))
        return false;
    module_.reset(bfactory().create(kPackage, nullptr));
    if (!module_) {
        *error = QStringLiteral("the package registers no module \"lumo\"");
        return false;
    }
    module_->init();
    return openPage(error) && findExecutor(library, error);
}

bool Bench::openPage(QString* error) {
    page_.reset(bfactory().create(pageKey(), nullptr));
    QWidget* widget = page_ ? page_->wgt() : nullptr;
    if (!widget) {
        *error = QStringLiteral("the package has no page");
        return false;
    }
    center_->addWidget(widget);
    center_->setCurrentWidget(widget);
    center_->show();
    return true;
}

bool Bench::findExecutor(const QString& library, QString* error) {
    for (QObject* child : m(kPackage)->children()) {
        if (child->inherits("LumoExecutor"))
            executor_ = child;
    }
    runMode_ = reinterpret_cast<int*>(QLibrary(library).resolve("hand_or_signalbing"));
    if (executor_ && runMode_)
        return true;
    *error = executor_ ? QStringLiteral("the package does not export its run mode")
                       : QStringLiteral("the package made no executor");
    return false;
}

}  // namespace run
