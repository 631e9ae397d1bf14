#include "kord/kordservice.h"

#include "mendo/modulemanager.h"
#include "mendo/observer.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

/// The commands that packages use. A command's node has the whole dotted name.
constexpr const char* commandNames[] = {
    "move.j",           "move.l",          "move.c",         "move.reset",
    "move.stop",        "move.opr.enough", "register.write", "register.write_multi",
    "device.io.out.do",
};

/// The data nodes before a controller is attached.
constexpr char dataNodes[] = R"({
    "sys": {"posture": {"trans": [0, 0, 0], "rot": [0, 0, 0], "near": []}, "info": {"joint_num": 6}},
    "move": {"default_zone": 0},
    "device": {"io": {"DI": {}, "DO": {}}},
    "register": {"values": {}},
    "pel": {"coord": {"toolset": {}}}
})";

/// The nodes of the host's tree that describe the robot.
constexpr char hostNodes[] = R"({
    "kord": {"r": {"power": "off", "state": "idle", "mode": "manual"}},
    "rova": {
        "robot": {"register": {"_list": []}},
        "project": {"tool": {"_list": []}, "wobj": {"_list": []}},
        "handle": {"drag": {"space": "", "type": ""}},
        "sidemove": {"drag": {"space": "", "type": ""}}
    }
})";

QJsonObject parsed(const char* text) {
    return QJsonDocument::fromJson(QByteArray(text)).object();
}

void emitIssued(KordService* service, const KordCall& call) {
    const mendo::Observed scope([&call](mendo::Observer* observer) { observer->called(call); });
    emit service->issued(call);
}

}  // namespace

QVariant KordCall::argument(const QString& key) const {
    if (node) {
        return node->r(key)->value();
    }
    return value.userType() == QMetaType::QVariantMap ? value.toMap().value(key) : value.toHash().value(key);
}

KordService::KordService()
    : commands_(new mendo::ModuleObject(QStringLiteral("commands"))),
      data_(new mendo::ModuleObject(QStringLiteral("data"))) {
    for (const char* name : commandNames) {
        commands_->append(this, QLatin1String(name));
    }
    data_->loadJson(this, parsed(dataNodes));
    m()->root()->loadJson(this, parsed(hostNodes), true, true);
}

KordService* KordService::instance() {
    // Never destroyed: packages keep nodes of it until the process ends.
    static auto* service = new KordService;
    return service;
}

void KordService::command(QObject* sender, const QString& name, const mendo::ModuleObject* node) {
    emitIssued(this, {name, false, sender, node && !node->isNull() ? node : nullptr, QVariant()});
}

void KordService::command(QObject* sender, const QString& name, const QVariant& value) {
    emitIssued(this, {name, false, sender, nullptr, value});
}

void KordService::execCommand(QObject* sender, const QString& name, const QVariant& value) {
    emitIssued(this, {name, true, sender, nullptr, value});
}

mendo::ModuleObject* KordService::commandNode(const QString& name) const {
    return name.isEmpty() ? commands_ : commands_->c(name);
}

mendo::ModuleObject* KordService::dataNode(const QString& path) const {
    return data_->r(path);
}

mendo::ModuleObject* KordService::get(QObject*, const QString& path) const {
    return dataNode(path);
}

mendo::ModuleObject* KordService::get(QObject*, const QString& path, const QString& child) const {
    return dataNode(path)->r(child);
}

void KordService::set(QObject* sender, const QString& path, const mendo::ModuleObject* node) {
    if (!data_->hasRmobj(path)) {
        data_->set(sender, path, QVariant());
    }
    data_->r(path)->copyFrom(sender, node);
    emit handed(path, node, sender);
}

void KordService::offerCommand(const QString& name, bool offered) {
    if (offered) {
        commands_->append(this, name);
    } else {
        commands_->remove(this, name);
    }
}

KordService* kordservice() {
    return KordService::instance();
}
