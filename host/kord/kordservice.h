#pragma once

#include "mendo/moduleobject.h"

#include <QObject>
#include <QString>
#include <QVariant>

/// One call of the robot service; valid while `issued` is emitted.
struct KordCall {
    QString name;                               ///< "move.l", "register.write", …
    bool exec = false;                          ///< made by execCommand
    QObject* sender = nullptr;                  ///< may be null
    const mendo::ModuleObject* node = nullptr;  ///< argument node; null when there is none, or for a value
    QVariant value;                             ///< argument value, usually a QVariantHash

    /// The argument `key`: a child of the node or an entry of the hash; invalid when missing.
    QVariant argument(const QString& key) const;
};
Q_DECLARE_METATYPE(KordCall)

/// The robot service: command nodes, data nodes, and a signal for every call. It does not answer calls
/// itself. A robot driver (the simulated controller, a bridge to a real one, a test) connects to `issued`
/// and writes results to command nodes and states to data nodes.
///
/// The constructor makes every command and data node that packages use, so that they can connect to them
/// before a driver is attached.
class KordService : public QObject {
    Q_OBJECT
public:
    static KordService* instance();

    /// Starts a command with the children of `node` (may be null) as arguments. The caller keeps the node
    /// and may delete it after the call.
    void command(QObject* sender, const QString& name, const mendo::ModuleObject* node);
    void command(QObject* sender, const QString& name, const QVariant& value);
    void execCommand(QObject* sender, const QString& name, const QVariant& value);

    /// The node whose value becomes the command's result: a child of the command root with the whole
    /// dotted name. The command root for an empty name.
    mendo::ModuleObject* commandNode(const QString& name) const;
    mendo::ModuleObject* dataNode(const QString& path) const;
    mendo::ModuleObject* get(QObject* sender, const QString& path) const;
    mendo::ModuleObject* get(QObject* sender, const QString& path, const QString& child) const;
    /// Copies the node to the data node `path`, which is made if missing, and emits `handed`.
    void set(QObject* sender, const QString& path, const mendo::ModuleObject* node);

    /// Creates or removes the command's node.
    void offerCommand(const QString& name, bool offered);

signals:
    void issued(const KordCall& call);
    void handed(const QString& path, const mendo::ModuleObject* node, QObject* sender);

private:
    KordService();
    mendo::ModuleObject* commands_;
    mendo::ModuleObject* data_;
};

KordService* kordservice();
