#pragma once

#include "app/events/eventstore.h"
#include "app/status/statustext.h"
#include "json/fileproblem.h"
#include "workcell/workcell.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace workcell {
class RunWatch;
class RunningProject;
}  // namespace workcell

namespace app {

class LinkWatch;
class StatusWatcher;

/// Puts what happens in the panel into the event log: runs with who started them, stops, faults, errors, the
/// laser by hand, links to controller and device, what the controller does wrong, projects saved and opened,
/// begin and end of the panel.
class EventRecorder : public QObject {
    Q_OBJECT
public:
    /// What it watches; all must outlive its last event.
    struct Sources {
        workcell::PackageFlags package;
        const sim::Controller* controller = nullptr;
        const workcell::RunWatch* runs = nullptr;
        const workcell::RunningProject* project = nullptr;
        const StatusWatcher* status = nullptr;
        QWidget* page = nullptr;  ///< the package's page
        const LinkWatch* links = nullptr;
    };
    /// Notes the beginning of the panel. Make it before the package is loaded, whose files may be damaged.
    explicit EventRecorder(EventStore* store, QObject* parent = nullptr);
    /// Notes the end of the panel.
    ~EventRecorder() override;

    /// Call it once, when the package's page is there.
    void follow(const Sources& sources);

    /// An event that only the panel knows of, now and with the project's name.
    void note(Event::Kind kind, const QString& detail, const QString& argument = {});

public slots:
    /// Equipment is faulty while the laser is on.
    void onFaultWhileLit(const QString& name);

private slots:
    // By name: the package's classes are unknown here.
    void onSaved();
    void onLoaded();

private:
    void followProjects();
    void followLinks();
    void onBegun();
    void onEnded();
    void onResult(int code);
    void onEmergencyStop();
    void onStatus(const CellStatus& state);
    void noteFaults(const QStringList& faults);
    void onFileProblem(const mendo::FileProblem& problem);
    [[nodiscard]] QString projectName() const;
    [[nodiscard]] int lineNow() const;
    void add(Event event);

    EventStore* store_;
    Sources sources_;
    Event run_;  ///< that is under way: who started it, and which project
    qint64 begunMs_ = 0;
    int failedCode_ = 0;
    QStringList faults_;
    bool litByHand_ = false;
};

}  // namespace app
