#pragma once

#include <QJsonArray>
#include <QObject>
#include <QPointer>

namespace mendo {
class ModuleObject;
}

namespace app {

/// Tells when the program that is edited and run by hand has changed, once for all that happens
/// together.
class ProgramFollower : public QObject {
    Q_OBJECT
public:
    /// The package's page has been made: the program is there. Statements are not followed at first.
    explicit ProgramFollower(QObject* parent = nullptr);

    /// Whether changes within statements are told too. Costs some objects for each statement.
    void setFollowing(bool following);
    /// The statements as a project file has them.
    QJsonArray statements() const;

signals:
    void changed();
    /// Another program has taken its place.
    void replaced();

private:
    void onChanged();
    void onRemoved(const QString& name);
    void changedLater();
    void announce();
    void followStatements();

    mendo::ModuleObject* program_;
    QPointer<mendo::ModuleObject> anchor_;  ///< a statement of the program
    bool following_ = false;
    bool posted_ = false;
};

}  // namespace app
