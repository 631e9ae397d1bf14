#include "app/stop/runstop.h"

#include "app/status/statuswatcher.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"

namespace app {

RunStop::RunStop(const StatusWatcher* status, sim::Controller* controller, QObject* parent)
    : QObject(parent), status_(status), controller_(controller) {}

void RunStop::stop() {
    controller_->stopJog();
    if (posted_) {
        return;
    }
    posted_ = true;
    QMetaObject::invokeMethod(this, &RunStop::stopNow, Qt::QueuedConnection);
}

void RunStop::stopNow() {
    posted_ = false;
    if (status_->isActive()) {
        m(prog::key::triggerPause)->trigger();
        return;
    }
    const CellStatus::Laser laser = status_->state().laser;
    emit nothingToStop(laser == CellStatus::Laser::Off
                           ? tr("没有可停止的程序")
                           : tr("没有可停止的程序；激光已打开：在设备页面关闭，或按急停"));
}

}  // namespace app
