#pragma once

#include "mendo/moduleobject.h"

#include <QObject>
#include <QString>
#include <QVariant>

/// One call of the robot service, valid while it is announced.
struct KordCall {
    QString name;                               ///< "move.l", "register.write", …
    bool exec = false;                          ///< made by execCommand
    QObject* sender = nullptr;                  ///< may be null
    const mendo::ModuleObject* node = nullptr;  ///< argument node; null for none or a value
    QVariant value;                             ///< argument value, usually a QVariantHash

    /// The argument under a key, from the node's child or the hash; invalid when missing.
    QVariant argument(const QString& key) const;
};
Q_DECLARE_METATYPE(KordCall)

/// The robot service: command nodes and data nodes, and an announcement of every call. It answers
/// nothing by itself: whoever drives the robot (a simulated controller, a test, a bridge to a real
/// one) listens to `issued` and writes results to command nodes and states to data nodes.
///
/// Its constructor makes every command and data node that packages rely on, in its own two trees and
/// in the host's, so that whoever connects to one before a controller is attached hears it later.
class KordService : public QObject {
    Q_OBJECT
public:
    static KordService* instance();

    /// Starts a command with the children of `node` as arguments (may be null). The node is the
    /// caller's and may be destroyed right after the call.
    void command(QObject* sender, const QString& name, const mendo::ModuleObject* node);
    void command(QObject* sender, const QString& name, const QVariant& value);
    void execCommand(QObject* sender, const QString& name, const QVariant& value);

    /// The node whose value becomes the command's result; the root of all for the empty name. A
    /// command's node is a direct child of the root, named by the whole dotted name.
    mendo::ModuleObject* commandNode(const QString& name) const;
    mendo::ModuleObject* dataNode(const QString& path) const;
    mendo::ModuleObject* get(QObject* sender, const QString& path) const;
    mendo::ModuleObject* get(QObject* sender, const QString& path, const QString& child) const;
    /// Copies the node to the data node `path` (made where missing) and announces it.
    void set(QObject* sender, const QString& path, const mendo::ModuleObject* node);

    /// Offers or withdraws a command: its node exists or not.
    void offerCommand(const QString& name, bool offered);

signals:
    void issued(const KordCall& call);
    void handed(const QString& path, const mendo::ModuleObject* node, QObject* sender);

private:
    KordService();
    mendo::ModuleObject* commands_;
    mendo::ModuleObject* data_;
};

/// The one robot service.
KordService* kordservice();
