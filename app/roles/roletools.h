#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace app {

class EventRecorder;
class PanelWindow;
class RoleGate;
class RoleKeeper;

/// The roles in the panel: the padlock in the header, the sheets that ask for the integrator's code and set
/// it, the locked pages of the package, and what the event log keeps of it.
class RoleTools : public QObject {
    Q_OBJECT
public:
    /// `page`: the package's page. `window` and `events` must outlive it.
    RoleTools(PanelWindow* window, QWidget* page, EventRecorder* events, QObject* parent = nullptr);

    /// Whether what is the integrator's besides pages may be done now: a backup brings ports and stations,
    /// telemetry has a password. Otherwise the code is asked for, and `what` named.
    [[nodiscard]] bool mayAct(const QString& what);
    /// Opens the session of the integrator, or what leads to it.
    void show();

signals:
    /// The integrator's session has ended.
    void left();

private:
    void logInto(EventRecorder* events);
    void askForCode(const QString& refused);
    void setNewCode();

    PanelWindow* window_;
    RoleKeeper* keeper_;
    RoleGate* gate_;
};

}  // namespace app
