#include "workcell/workcell.h"

#include "workcell/simulatedarm.h"

#include "gantu/bmodule.h"
#include "gantu/panel.h"
#include "json/jsonfile.h"
#include "kord/kordservice.h"
#include "kord/managerhelper.h"
#include "mendo/modulemanager.h"
#include "program/ports.h"
#include "program/words.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLibrary>
#include <QStackedWidget>

namespace workcell {

std::optional<sim::Wiring> readWiring(const QString& portFile, mendo::FileProblem* problem) {
    const std::optional<mendo::JsonText> text = mendo::readJsonFile(portFile, problem);
    if (!text || !text->value().isArray()) {
        if (text) {
            *problem = {portFile, text->place(), {{mendo::FileProblem::Kind::NoArray}}};
        }
        return std::nullopt;
    }
    const QJsonArray rows = text->value().toArray();
    const auto nameOf = [&rows](I_PORT row) {
        return rows.at(row).toObject().value(prog::field::name).toString();
    };
    sim::Wiring wiring;
    wiring.gas = nameOf(DO_GAS);
    wiring.wireEnable = nameOf(DO_WIRE_ENABLE);
    wiring.wirePullback = nameOf(DO_WIRE_PULLBACK);
    wiring.laserEnable = nameOf(DO_LASER_ENABLE);
    wiring.laserPower = nameOf(AO_LASER_POWER);
    wiring.wireSpeed = nameOf(AO_WIRE_SPEED);
    return wiring;
}

void setLanguage(const QString& language) {
    kord::ManagerHelper::instance()->module()->mobj()->set(nullptr, QStringLiteral("language"), language);
}

int PackageFlags::mode() const {
    return runMode ? *runMode : prog::runmode::byHand;
}

WorkCell::WorkCell(QStackedWidget* pages, const sim::Controller::Options& options, QObject* parent)
    : QObject(parent),
      pages_(pages),
      controller_(new sim::Controller(kordservice(), options, this)),
      arm_(std::make_unique<SimulatedArm>(controller_->arm())) {
    setInstantiatedCenterWidget(pages);
}

WorkCell::~WorkCell() {
    close();
}

void WorkCell::wire() {
    mendo::FileProblem ignored;  // the package reads the file too, and reports it
    wire(readWiring(prog::file::ports, &ignored).value_or(sim::Wiring()));
}

void WorkCell::wire(const sim::Wiring& wiring) {
    cell_ = new sim::Cell(controller_, wiring, this);
}

bool WorkCell::open(const QString& libraryFile, QString* error) {
    libraryFile_ = libraryFile;
    showArm(arm_.get());
    package_ = std::make_unique<gantu::Package>();
    if (!package_->load(libraryFile, prog::key::lumo, error)) {
        return false;
    }
    if (showPage(firstPage())) {
        return true;
    }
    *error = QStringLiteral("the package has no page");
    return false;
}

void WorkCell::close() {
    if (package_) {
        package_.reset();
        showArm(nullptr);
    }
}

/// Tells the package the arm, in its exported pointer.
void WorkCell::showArm(const prog::ArmModel* arm) const {
    QLibrary library(libraryFile_);
    if (auto* const pointer = reinterpret_cast<const prog::ArmModel**>(library.resolve("lumo_arm"))) {
        *pointer = arm;
    }
}

QWidget* WorkCell::showPage(const QString& key) {
    QWidget* page = package_->page(key);
    if (!page) {
        return nullptr;
    }
    if (pages_->indexOf(page) < 0) {
        pages_->addWidget(page);
    }
    pages_->setCurrentWidget(page);
    return page;
}

QString WorkCell::firstPage() {
    for (const mendo::ModuleObject* page : m(prog::key::pages)->cmobjs()) {
        const QString key = page->c(QStringLiteral("nav"))->getString();
        if (!key.isEmpty()) {
            return key;
        }
    }
    return {};
}

PackageFlags WorkCell::flags() const {
    PackageFlags flags;
    QLibrary library(libraryFile_);
    flags.runMode = reinterpret_cast<int*>(library.resolve("hand_or_signalbing"));
    flags.projectOpen = reinterpret_cast<const bool*>(library.resolve("isEnable_moveorder"));
    flags.recovery = reinterpret_cast<bool*>(library.resolve("lumo_recovery"));
    for (QObject* child : m(prog::key::lumo)->children()) {
        if (child->inherits("LumoExecutor")) {
            flags.executor = child;
        }
    }
    return flags;
}

}  // namespace workcell
