#include "app/why/whywatch.h"

#include "app/cell/nodes.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"

#include <QVariantMap>

#include <algorithm>

namespace app {

using mendo::ModuleObject;

namespace {

constexpr int kTickMs = 100;
// Rows of the port table without which the laser stays dark.
constexpr int kLaserPorts[] = {9, 16};

bool isWord(const QString& path, const char* word) {
    return m(path)->getString() == QLatin1String(word);
}

/// The signal that a statement waits for, as the executor names it.
QString inputOf(const ModuleObject* statement) {
    if (statement->c(QStringLiteral("DI_type"))->getString() == QLatin1String("IO"))
        return statement->c(QStringLiteral("diName"))->getString();
    return QStringLiteral("%1.#%2")
        .arg(statement->r(QStringLiteral("DI_reg.name"))->getString())
        .arg(statement->r(QStringLiteral("DI_reg.bias"))->getInt());
}

}  // namespace

WhyState readSwitches() {
    WhyState state;
    state.power = isWord(node::power, "on");
    state.automatic = isWord(node::mode, "auto");
    state.weldSwitch = m(node::weldSwitch)->getBool(true);
    state.handWeldSwitch = m(node::handWeldSwitch)->getBool(false);
    return state;
}

WhyWatch::WhyWatch(const PackageFlags& package, QObject* parent) : QObject(parent), package_(package) {
    tick_.setInterval(kTickMs);
    connect(&tick_, &QTimer::timeout, this, &WhyWatch::refresh);
    for (const QString& path :
         {node::power, node::mode, node::weldSwitch, node::handWeldSwitch, node::programState,
          node::currentLine, node::executeLine, node::program, node::projectToolset})
        connect(m(path), &ModuleObject::changed, this, &WhyWatch::refreshLater);
    connect(m(node::program), &ModuleObject::added, this, &WhyWatch::refreshLater);
    connect(m(node::program), &ModuleObject::removed, this, &WhyWatch::refreshLater);
    connect(m(node::ports), &ModuleObject::changed, this, &WhyWatch::refreshLater);
    connect(m(node::ports), &ModuleObject::added, this, &WhyWatch::refreshLater);
    if (package.executor)
        connect(package.executor, SIGNAL(activityChanged()), this, SLOT(refreshLater()));
    refresh();
}

void WhyWatch::refreshLater() {
    if (posted_)
        return;
    posted_ = true;
    QMetaObject::invokeMethod(this, &WhyWatch::refresh, Qt::QueuedConnection);
}

void WhyWatch::refresh() {
    posted_ = false;
    followPorts();
    const WhyState now = state();
    if (!now.hasTime())
        tick_.stop();
    else if (!tick_.isActive())
        tick_.start();
    const QStringList sentences = whyText(now);
    if (sentences == sentences_)
        return;
    sentences_ = sentences;
    emit changed();
}

/// The rows are others after settings were loaded.
void WhyWatch::followPorts() {
    for (const int row : kLaserPorts) {
        const ModuleObject* enable = m(node::ports)->c(row)->c(QStringLiteral("enable"));
        if (!enable->isNull())
            connect(enable, &ModuleObject::changed, this, &WhyWatch::refreshLater, Qt::UniqueConnection);
    }
}

WhyState WhyWatch::state() const {
    WhyState state = readSwitches();
    for (const int row : kLaserPorts) {
        const ModuleObject* port = m(node::ports)->c(row);
        if (!port->c(QStringLiteral("enable"))->getBool(false))
            state.disabledPorts << port->c(QStringLiteral("tag"))->getString();
    }
    state.busy = !isWord(node::programState, "idle");
    state.station = package_.mode() == PackageFlags::ByStation;
    state.projectOpen = package_.hasProject();
    if (package_.executor)
        readWait(&state);
    return state;
}

void WhyWatch::readWait(WhyState* state) const {
    const QVariantMap waiting = package_.executor->property("waiting").toMap();
    const QString detail = waiting.value(QStringLiteral("detail")).toString();
    state->waiting = waiting.value(QStringLiteral("kind")).toString();
    state->settling = package_.executor->property("depth").toInt() > 0 ||
                      package_.executor->property("pendingSteps").toInt() > 0;
    if (state->busy)
        state->line =
            m(package_.mode() == PackageFlags::SingleStep ? node::executeLine : node::currentLine)->getInt();
    if (state->waiting.isEmpty())
        return;
    const qint64 now = mendo::Clock::current().elapsedMs();
    const qint64 due = waiting.value(QStringLiteral("due")).toLongLong();
    state->leftMs = due < 0 ? -1 : std::max<qint64>(0, due - now);
    if (state->waiting != QLatin1String("input")) {
        state->line = detail.toInt();
        return;
    }
    state->input = detail;
    state->waitedMs = std::max<qint64>(0, now - waiting.value(QStringLiteral("since")).toLongLong());
    // The program may have been edited since: the run has a copy of its own.
    const ModuleObject* statement = m(state->station ? node::stationProgram : node::program)->c(state->line);
    if (inputOf(statement) == detail)
        state->awaited = statement->c(QStringLiteral("value1"))->getString() == QLatin1String("false")
                             ? QStringLiteral("false")
                             : QStringLiteral("true");
}

}  // namespace app
