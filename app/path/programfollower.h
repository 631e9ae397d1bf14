#pragma once

#include <QObject>
#include <QPointer>

namespace mendo {
class ModuleObject;
}

namespace app {

/// Announces changes of the program that is edited and run by hand, once for all changes in one pass of the
/// event loop.
class ProgramFollower : public QObject {
    Q_OBJECT
public:
    /// To be made after the package's page, which makes the program. Statements are not followed at first.
    explicit ProgramFollower(QObject* parent = nullptr);

    /// Whether changes within statements are announced too. Costs some objects for each statement.
    void setFollowing(bool following);
    const mendo::ModuleObject* program() const { return program_; }

signals:
    void changed();
    /// Another program was loaded.
    void replaced();

private:
    void onChanged();
    void onRemoved(const QString& name);
    void changedLater();
    void announce();
    void followStatements();

    mendo::ModuleObject* program_;
    QPointer<mendo::ModuleObject> anchor_;  ///< a statement of the program; gone when another is loaded
    bool following_ = false;
    bool posted_ = false;
};

}  // namespace app
