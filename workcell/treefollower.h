#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace mendo {
class ModuleObject;
}

namespace workcell {

/// A notification of a followed node, valid during the signal only.
struct Change {
    QString path;
    const mendo::ModuleObject* node = nullptr;
    QVariant value;  ///< invalid for null, and where the content was replaced
    QVariant oldValue;
    QObject* sender = nullptr;

    /// Whether the package's executor wrote it.
    bool byExecutor() const;
};

/// Passes on the notifications of the package's and the robot's nodes that show what a run does. It connects
/// to the package's nodes when their defaults are loaded, before the package itself does, so that a change
/// is passed on before its consequences.
class TreeFollower : public QObject {
    Q_OBJECT
public:
    explicit TreeFollower(QObject* parent = nullptr);

    /// Follows the node at a path, or its nearest existing parent, if that is one of the nodes above or below
    /// one. Needed for elements of lists, which are not followed otherwise: every copied point replaces
    /// them.
    void followElement(const QString& path);

signals:
    void changed(const workcell::Change& change);
    /// One of the two weld switches was written.
    void switchWritten();

private:
    void onRootAdded(const QString& name);
    void followPackage();
    enum class Elements { Skip, Follow };
    void follow(mendo::ModuleObject* node, Elements elements = Elements::Skip);
    void onChanged(const QVariant& value, const QVariant& oldValue, QObject* sender);
    void onAdded(const QString& name);
};

}  // namespace workcell
