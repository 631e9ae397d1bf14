#include "workcell/outside.h"

#include "bridge/plugin.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace workcell {

namespace {

constexpr int limitMs = 10000;
constexpr int lookMs = 10;

/// Runs an event loop until `isDone` or the limit of time.
bool waitFor(const std::function<bool()>& isDone) {
    QEventLoop loop;
    QTimer look, limit;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (isDone()) {
            loop.quit();
        }
    });
    QObject::connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
    look.start(lookMs);
    limit.start(limitMs);
    loop.exec();
    return isDone();
}

}  // namespace

bool Outside::load(const QString& robot, const QString& device, QString* error) {
    names_ = {robot, device};
    if (!robot.isEmpty()) {
        robot_ = bridge::loadController(robot, error);
    }
    if (!device.isEmpty() && error->isEmpty()) {
        device_ = bridge::loadSignalPort(device, error);
    }
    return error->isEmpty();
}

void Outside::addTo(sim::Controller::Options* options) const {
    options->robot = robot_.get();
    options->device = device_.get();
}

bool connectOutside(sim::Controller* controller, bool power, QString* error) {
    if (!waitFor([controller] { return controller->isLinked(); })) {
        *error = controller->linkReason().isEmpty() ? QStringLiteral("nothing answers")
                                                    : controller->linkReason().text();
        return false;
    }
    controller->setPower(power);
    const QString wanted = power ? QStringLiteral("on") : QStringLiteral("off");
    if (!waitFor([&wanted] { return m(prog::key::robotPower)->getString() == wanted; })) {
        *error = QStringLiteral("the drives do not switch ") + wanted;
        return false;
    }
    return true;
}

}  // namespace workcell
