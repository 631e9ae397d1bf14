#pragma once

#include "gantu/package.h"
#include "runner/options.h"

#include <QObject>
#include <QStackedWidget>
#include <QString>

#include <memory>

namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace run {

/// The host around the package: the robot service with a simulated controller and weld cell behind
/// it, the panel's central widget, and the package, started as any host starts it.
class Bench : public QObject {
    Q_OBJECT
public:
    /// Makes the controller.
    explicit Bench(const Options& options, QObject* parent = nullptr);
    ~Bench() override;

    /// Makes the cell, wired once by the port file in the current directory. Whoever is to hear of
    /// the controller's outputs before the cell answers them has connected by then.
    void wireCell();

    /// Loads the package, makes its modules and shows its page. False, with the reason in `error`,
    /// when the package is not there or not what it should be.
    bool openPanel(const QString& language, QString* error);

    sim::Controller* controller() const { return controller_; }
    sim::Cell* cell() const { return cell_; }
    QWidget* panel() const { return center_.get(); }
    /// Of the open panel.
    QObject* executor() const { return executor_; }
    int* runMode() const { return runMode_; }

private:
    bool openPage(QString* error);
    bool findExecutor(const QString& library, QString* error);

    sim::Controller* controller_ = nullptr;
    sim::Cell* cell_ = nullptr;
    std::unique_ptr<QStackedWidget> center_;
    gantu::Package package_;
    QObject* executor_ = nullptr;
    int* runMode_ = nullptr;
};

}  // namespace run
