#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace mendo {
class ModuleObject;
}

namespace workcell {

/// A notification of a followed node, valid while it is announced.
struct Change {
    QString path;
    const mendo::ModuleObject* node = nullptr;
    QVariant value;  ///< invalid for null and where content was replaced
    QVariant oldValue;
    QObject* sender = nullptr;

    /// Whether the package's executor wrote it.
    bool byExecutor() const;
};

/// Announces the notifications of the package's and the robot's nodes that tell what a run does. It
/// connects to the package's nodes while their defaults are loaded, before anything of the package
/// does: a change is then announced before what it causes.
class TreeFollower : public QObject {
    Q_OBJECT
public:
    explicit TreeFollower(QObject* parent = nullptr);

    /// Follows the node at a path, or the last part of the path that is there, even where it is an
    /// element of a list, if it lies where this looks. (Elements that were there before are left
    /// alone otherwise: they come and go with every copied point.)
    void followElement(const QString& path);

signals:
    void changed(const workcell::Change& change);

private:
    void onRootAdded(const QString& name);
    void followPackage();
    enum class Elements { Skip, Follow };
    void follow(mendo::ModuleObject* node, Elements elements = Elements::Skip);
    void onChanged(const QVariant& value, const QVariant& oldValue, QObject* sender);
    void onAdded(const QString& name);
};

}  // namespace workcell
