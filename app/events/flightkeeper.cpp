#include "app/events/flightkeeper.h"

#include "app/noticebar.h"
#include "app/preferences.h"
#include "workcell/runningproject.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace app {

FlightKeeper::FlightKeeper(NoticeBar* notices, QObject* parent) : QObject(parent), notices_(notices) {
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &FlightKeeper::onAboutToQuit);
}

FlightKeeper::~FlightKeeper() = default;

QString FlightKeeper::defaultFile() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath(QStringLiteral("flight.ring"));
}

void FlightKeeper::begin(int sizeMb, const int* runMode, const workcell::RunningProject* project) {
    if (sizeMb <= 0 || recorder_) {
        return;
    }
    QString error;
    ring_ = flight::RingFile::open(defaultFile(), qint64(sizeMb) << 20, &error);
    if (!ring_) {
        notices_->tell(tr("运行记录器无法写入 %1：%2").arg(defaultFile(), error));
        return;
    }
    flight::Facts facts;
    facts.version = QStringLiteral(LUMO_VERSION);
    facts.language = Preferences::language();
    facts.runMode = runMode;
    facts.project = [project] { return project->name(); };
    recorder_ = std::make_unique<flight::Recorder>(ring_.get(), std::move(facts));
}

void FlightKeeper::onAboutToQuit() {
    if (recorder_) {
        recorder_->noteQuitting();
    }
}

}  // namespace app
