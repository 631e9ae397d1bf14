#include "campaign/sources.h"

#include "executor/lumoexecutor.h"
#include "kord/kordservice.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "module/keys.h"
#include "simulator/cell.h"
#include "simulator/controller.h"

using mendo::ModuleObject;

namespace campaign {

namespace {

using Kind = Event::Kind;

Event made(Kind kind, const QString& text, int value) {
    Event event;
    event.kind = kind;
    event.text = text;
    event.value = value;
    return event;
}

}  // namespace

Sources::Sources() {
    readPorts();
    const auto rows = m(lumo::key::port)->cmobjs();
    for (const ModuleObject* row : rows) {
        connect(row->c(lumo::field::name), &ModuleObject::changed, this, &Sources::readPorts);
    }
    listen(lumo::key::executeState, Kind::State, false);
    listen(lumo::key::currentLine, Kind::Line, true);
    listen(lumo::key::currentType, Kind::Statement, true);
    listen(lumo::key::weldOpen, Kind::WeldFlag, true);
    listen(lumo::key::curParam, Kind::Param, true);
    for (const QLatin1String path :
         {lumo::key::currentPausePoint, lumo::key::currentStartPoint, lumo::key::currentMoveType}) {
        listen(path, Kind::Node, true);
    }
    listen(lumo::key::robotState, Kind::Robot, false);
    for (const QLatin1String path :
         {lumo::key::robotMode, lumo::key::weldSwitch, lumo::key::handWeldSwitch}) {
        listen(path, Kind::Permission, false);
    }
    for (const QLatin1String command : {lumo::command::moveJ, lumo::command::moveL, lumo::command::moveC}) {
        connect(
            kordservice()->commandNode(command), &ModuleObject::changed, this,
            [this, command](const QVariant& code) { emit heard(made(Kind::Result, command, code.toInt())); });
    }
    connect(kordservice(), &KordService::issued, this, &Sources::onIssued);
    connect(mendo::LogHub::instance(), &mendo::LogHub::line, this,
            [this](const QString&, const QString& text) {
                if (text.startsWith(QLatin1String("enter zone!"))) {
                    emit heard(made(Kind::Zone, text, 0));
                } else if (text.contains(QLatin1String(" move result!"))) {
                    emit heard(made(Kind::Dropped, text, 0));
                }
            });
}

/// Where two ports are assigned to the same, the first one counts.
void Sources::readPorts() {
    ports_.clear();
    const auto rows = m(lumo::key::port)->cmobjs();
    for (int port = rows.size() - 1; port >= 0; --port) {
        ports_.insert(rows[port]->c(lumo::field::name)->getString(), port);
    }
}

void Sources::follow(LumoExecutor* executor) {
    executor_ = executor;
    connect(executor, &LumoExecutor::activityChanged, this,
            [this] { emit heard(made(Kind::Activity, QString(), 0)); });
}

void Sources::follow(sim::Controller* controller, sim::Cell* cell) {
    connect(cell, &sim::Cell::emittingChanged, this,
            [this](bool on) { emit heard(made(Kind::Emission, QString(), on)); });
    connect(controller, &sim::Controller::rejected, this, [this](const QString& name, const QString& reason) {
        // Statements may name what does not exist, ports are assigned as they should be.
        if (name.startsWith(QLatin1String("LUMO"))) {
            emit heard(
                made(Kind::Complaint, QStringLiteral("the controller rejects %1: %2").arg(name, reason), 0));
        }
    });
}

void Sources::listen(const QString& path, Kind kind, bool executorOnly) {
    connect(m(path), &ModuleObject::changed, this,
            [this, path, kind, executorOnly](const QVariant& value, const QVariant&, QObject* sender) {
                if (!executorOnly || sender == executor_) {
                    const bool named = kind == Kind::Node || kind == Kind::Permission;
                    emit heard(made(kind, named ? path : value.toString(), value.toInt()));
                }
            });
}

void Sources::onIssued(const KordCall& call) {
    // A statement's output has no sender.
    const bool foreign = call.sender != executor_;
    const bool writesRegister = call.name == lumo::command::registerWrite && call.node;
    if (foreign && !writesRegister && !(call.name == lumo::command::outDo && !call.sender)) {
        return;
    }
    if (call.name == lumo::command::registerWriteMulti) {
        for (const ModuleObject* record : call.node->cmobjs()) {
            onRegister(record->c(lumo::field::name)->getString(), record->c(lumo::field::bias)->getInt(),
                       record->c(lumo::field::value)->getInt(), false);
        }
    } else if (writesRegister) {
        onRegister(call.argument(lumo::field::name).toString(), call.argument(lumo::field::bias).toInt(),
                   call.argument(lumo::field::value).toInt(), foreign);
    } else if (call.name == lumo::command::registerWrite || call.name == lumo::command::outDo) {
        emit heard(made(Kind::Output, call.argument(lumo::field::name).toString(),
                        call.argument(lumo::field::value).toInt()));
    } else {
        emit heard(made(Kind::Command, call.name, 0));
    }
}

void Sources::onRegister(const QString& name, int bias, int value, bool foreign) {
    const QString bit = name + QLatin1Char('.') + mIndex(bias);
    Event event = made(foreign ? Kind::Foreign : Kind::Write, QString(), value);
    event.port = ports_.contains(bit) ? ports_.value(bit) : ports_.value(name, -1);
    if (event.port < 0 && (foreign || name.isEmpty())) {
        return;  // no equipment of ours, or a port in use that is assigned to nothing
    }
    if (event.port < 0) {
        event = made(Kind::Complaint, QStringLiteral("no port is assigned to ") + bit, 0);
    }
    emit heard(event);
}

}  // namespace campaign
