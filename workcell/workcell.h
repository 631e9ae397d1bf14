#pragma once

#include "gantu/package.h"
#include "json/fileproblem.h"
#include "program/armmodel.h"
#include "simulator/cell.h"
#include "simulator/controller.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class QStackedWidget;

namespace workcell {

/// The wiring that a port file describes: a JSON list of rows with the "name" of each signal, in the fixed
/// order of the ports. Nothing, with what is wrong in `problem`, for a file that cannot be read as a list.
std::optional<sim::Wiring> readWiring(const QString& portFile, mendo::FileProblem* problem);

/// Sets the host's language ("cn", "en", "ru"), which packages read when they are loaded.
void setLanguage(const QString& language);

/// What the package tells besides the tree: two flags in its library, and the executor's properties.
struct PackageFlags {
    int* runMode = nullptr;  ///< one of prog::runmode
    const bool* projectOpen = nullptr;
    bool* recovery = nullptr;     ///< whether unsaved edits are kept in files
    QObject* executor = nullptr;  ///< with the properties `waiting`, `pendingSteps`, `depth` and `litByHand`

    /// A start by hand, an open project, where the package does not tell.
    int mode() const;
    bool hasProject() const { return !projectOpen || *projectOpen; }
};

/// A host with the package in it: the robot service with a simulated controller and weld cell behind it, and
/// the pages of the package in the host's central widget. One in a process; language and working directory
/// are set before open().
class WorkCell : public QObject {
    Q_OBJECT
public:
    /// Makes the controller. `pages`: the host's central widget; must outlive the package (see close()).
    WorkCell(QStackedWidget* pages, const sim::Controller::Options& options, QObject* parent = nullptr);
    ~WorkCell() override;

    /// Makes the weld cell with the wiring of the port file in the working directory; without one that can be
    /// read nothing is wired. An object that must see the controller's outputs before the cell answers them
    /// has connected to the controller by then.
    void wire();
    void wire(const sim::Wiring& wiring);
    /// Loads the package, creates its modules and shows its first page. False, with the reason in `error`,
    /// when there is no package or no page.
    bool open(const QString& libraryFile, QString* error);
    /// Deletes the pages and modules; the destructor does so, too.
    void close();

    /// Shows the page whose module is registered under `key`; null when there is none.
    QWidget* showPage(const QString& key);
    /// The key of the first page in the host's navigation; empty when there is none.
    static QString firstPage();

    sim::Controller* controller() const { return controller_; }
    sim::Cell* cell() const { return cell_; }
    /// The kinematics of the controller's arm; the open package has them too.
    const prog::ArmModel& arm() const { return *arm_; }
    /// Of the open package; null members where it does not have them.
    PackageFlags flags() const;

private:
    void showArm(const prog::ArmModel* arm) const;

    QStackedWidget* pages_;
    sim::Controller* controller_;
    sim::Cell* cell_ = nullptr;
    std::unique_ptr<prog::ArmModel> arm_;
    std::unique_ptr<gantu::Package> package_;
    QString libraryFile_;
};

}  // namespace workcell
