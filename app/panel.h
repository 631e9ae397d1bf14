#pragma once

#include "app/panelwindow.h"
#include "gantu/package.h"

#include <QObject>
#include <QPointer>

#include <memory>

namespace workcell {
class TreeFollower;
}
namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace app {

class PendantWindow;
class SeamTrack;
class SignalRecorder;
class ViewsWindow;

/// The host around the package: the robot service with a simulated controller and weld cell behind
/// it, the panel's window, and the package in it. One in a process; language and working directory
/// are set before.
class Panel : public QObject {
    Q_OBJECT
public:
    /// Makes the controller, as it is when it comes up: without drive power, in automatic mode.
    Panel();
    ~Panel() override;

    /// Loads the package from its library, shows its first page and wires the cell as the port file in
    /// the working directory tells. False, with the reason in `error`, when there is no such package.
    bool open(const QString& libraryFile, QString* error);

    /// Opens a project as a hand does, with the page's Open button. False when the page has none that
    /// answers.
    bool openProject(const QString& file);

    PanelWindow* window() const { return window_.get(); }
    sim::Controller* controller() const { return controller_; }
    /// Of the open panel.
    const SignalRecorder* recorder() const { return recorder_; }
    /// The window of the views and the pendant of the open panel, made when they are first asked for: the
    /// panel is on the screen sooner without them.
    ViewsWindow* views();
    PendantWindow* pendant();

signals:
    /// How many times as fast as the wall clock the cell is to run: whoever keeps the time sees to it.
    void speedChosen(double factor);
    /// The operator wants an example, which is a panel of its own: it has other settings.
    void exampleChosen(const QString& name);

private:
    QWidget* showPage(const QString& key);
    void makeViews();
    void offerViews();
    void makeStatus(const QString& libraryFile);
    void makeExamples();
    void onFileProblem(const QString& fileName, int line, int column, const QString& reason);

    sim::Controller* controller_;
    sim::Cell* cell_ = nullptr;
    workcell::TreeFollower* follower_ = nullptr;
    SignalRecorder* recorder_ = nullptr;
    SeamTrack* seams_ = nullptr;
    std::unique_ptr<PanelWindow> window_;
    std::unique_ptr<ViewsWindow> views_;
    std::unique_ptr<PendantWindow> pendant_;
    gantu::Package package_;
    QString libraryFile_;
    QPointer<QWidget> page_;  ///< the package's first, with its editor
};

}  // namespace app
