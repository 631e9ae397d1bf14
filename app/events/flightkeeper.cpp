#include "app/events/flightkeeper.h"

#include "app/fileproblem.h"
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

QString FlightKeeper::words(const flight::RingProblem& problem) {
    switch (problem.kind) {
        case flight::RingProblem::Kind::InUse:
            return tr("另一个程序正在写入此文件");
        case flight::RingProblem::Kind::NoRecording:
            return tr("这是另一个文件，不是运行记录");
        case flight::RingProblem::Kind::System:
            break;
    }
    return reasonText({defaultFile(), {}, {problem.reason}});
}

QString FlightKeeper::defaultFile() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath(QStringLiteral("flight.ring"));
}

void FlightKeeper::begin(int sizeMb, const int* runMode, const workcell::RunningProject* project) {
    if (sizeMb <= 0 || recorder_) {
        return;
    }
    flight::RingProblem problem;
    ring_ = flight::RingFile::open(defaultFile(), qint64(sizeMb) << 20, &problem);
    if (!ring_) {
        notices_->tell(tr("运行记录器无法写入 %1：%2").arg(defaultFile(), words(problem)));
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
