#include "app/telemetry/telemetrytools.h"

#include "app/parts/partcounter.h"
#include "app/state/panelstate.h"
#include "app/telemetry/telemetrysheet.h"
#include "json/jsonfile.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QFileInfo>
#include <QJsonDocument>

namespace app {

namespace {

QString laserWord(CellStatus::Laser laser) {
    switch (laser) {
        case CellStatus::Laser::ByProgram:
            return QStringLiteral("program");
        case CellStatus::Laser::ByStation:
            return QStringLiteral("station");
        case CellStatus::Laser::ByHand:
            return QStringLiteral("hand");
        case CellStatus::Laser::WithoutProgram:
            return QStringLiteral("without_program");
        case CellStatus::Laser::Off:
            break;
    }
    return QStringLiteral("off");
}

int runModeOf(const CellStatus& status) {
    if (status.step) {
        return prog::runmode::singleStep;
    }
    return status.station ? prog::runmode::byStation : prog::runmode::byHand;
}

telemetry::StateDocument stateDocument(const CellStatus& status) {
    telemetry::StateDocument document;
    document.state = stateWord(stateKind(status));
    document.project = status.project;
    document.line = status.line + 1;
    document.lines = status.lines;
    document.runMode = telemetry::runModeWord(runModeOf(status));
    document.isDry = status.dry;
    document.isPowered = status.power;
    document.robotMode = m(prog::key::robotMode)->getString();
    document.isEmergencyStop = status.emergencyStop;
    document.laser = laserWord(status.laser);
    document.waiting = status.waiting;
    document.pausedLine = status.pausedLine + 1;
    return document;
}

}  // namespace

TelemetryTools::TelemetryTools(const QString& file, QObject* parent)
    : QObject(parent), file_(file), client_(std::make_unique<telemetry::Client>()) {}

TelemetryTools::~TelemetryTools() = default;

void TelemetryTools::begin(const telemetry::Reporter::Sources& sources) {
    reporter_ = std::make_unique<telemetry::Reporter>(client_.get(), QStringLiteral("lumo-panel"), sources);
    mendo::FileProblem found;
    if (mendo::isMissing(file_)) {
        return;
    }
    if (const auto settings = telemetry::Settings::read(file_, &found)) {
        settings_ = *settings;
        client_->setSettings(settings_);
    } else {
        emit problem(found);
    }
}

void TelemetryTools::setState(const CellStatus& status) {
    reporter_->setState(stateDocument(status));
}

void TelemetryTools::setParts(const QString& project, const PartCount& count) {
    reporter_->setParts(QFileInfo(project).completeBaseName(), count.made, count.target, count.lastMs,
                        count.meanMs());
}

Sheet* TelemetryTools::open(QWidget* over) {
    auto* sheet = new TelemetrySheet(
        settings_, [this] { return client_->status(); }, over);
    connect(sheet, &TelemetrySheet::storeAsked, this, [this, sheet](const telemetry::Settings& settings) {
        mendo::FileProblem found;
        if (!settings.write(file_, &found)) {
            sheet->refuse(found);
            return;
        }
        settings_ = settings;
        client_->setSettings(settings_);
        sheet->accept(settings_);
    });
    sheet->open();
    return sheet;
}

QByteArray TelemetryTools::shownSettings() {
    mendo::FileProblem ignored;  // told when the panel was started
    const auto settings = telemetry::Settings::read(telemetry::Settings::defaultFile(), &ignored);
    return settings ? QJsonDocument(settings->jsonWithoutPassword()).toJson() : QByteArray();
}

}  // namespace app
