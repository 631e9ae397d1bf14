#pragma once

#include "bridge/adapter.h"
#include "simulator/backend.h"
#include "simulator/jog.h"
#include "simulator/latency.h"
#include "simulator/quirk.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QVariant>

#include <memory>

class KordService;

namespace sim {

/// The controller of a weld cell whose equipment is simulated: the adapter with a Backend of its own, which
/// hands on what a misbehaving controller does, or with a robot and I/O from outside. With a robot from
/// outside there are no quirks, failures and jogs to a pose.
///
/// At first: power on, state idle, mode auto, arm at home, all inputs and outputs off. "sys.posture"
/// shows the pose of the arm's torch, independent of the tool set.
class Controller : public bridge::Adapter {
    Q_OBJECT
public:
    struct Options {
        int axes = 6;            ///< 6 or 7
        bool writeMulti = true;  ///< offer the command "register.write_multi"
        Latency latency{};
        bridge::Controller* robot = nullptr;   ///< from outside; must outlive the use
        bridge::SignalPort* device = nullptr;  ///< the same
    };

    Controller(KordService* service, const Options& options, QObject* parent = nullptr);
    ~Controller() override;

    /// On has no effect while the emergency stop is pressed. Registers and outputs stay.
    void setPower(bool on) override;
    /// Pressed: drive power off. Releasing it does not switch the power on again.
    void setEmergencyStop(bool pressed);
    bool emergencyStop() const { return emergencyStop_; }
    /// "auto" or "manual".
    void setMode(const QString& mode);
    /// `name` is "DI3" or "LUMO_DI.#2"; false for an unknown one, and where that input is not simulated.
    bool setInput(const QString& name, bool value);
    /// Whether this input is simulated.
    bool takesInput(const QString& name) const;
    bool isRobotSimulated() const { return !isOutside_; }
    /// Cuts or restores the link to the simulated robot, as a broken cable does; the arm stops by itself.
    void cutLink(bool cut) { backend_->cutLink(cut); }
    /// The current motion is braked and ends with this code. Without one, or in a jog, which has no result,
    /// the first motion of the next batch ends with it. Only negative codes have an effect.
    void failMotion(int code);
    using bridge::Adapter::jog;
    /// One jog step along or about an axis of the base, metres or radians.
    JogAnswer jog(JogAxis axis, double step);
    /// What moveToPose() would answer now.
    JogAnswer checkPoseMove(const PoseMove& move) const;
    /// Jogs the standing robot to a pose.
    JogAnswer moveToPose(const PoseMove& move);
    void setQuirk(Quirk quirk, bool on);
    static bool quirkFromName(const QString& name, Quirk* quirk);
    /// Writes the state of a pendant key (next, last, center, enter, delete; false is pressed). Returns
    /// false for an unknown key.
    bool reportKey(const QString& name, bool value);
    /// No motion, no braking, and no result, state, posture or output still to be written.
    bool standsStill() const override;
    /// Where the arm is now, rounded as in "sys.posture" (which is written every 10 ms).
    MotionPlan::Posture posture() const override;
    /// Length of the tool path since construction, metres.
    double travelled() const override;
    double postureMs() const override;
    /// Its kinematics.
    const Arm& arm() const { return backend_->arm(); }

signals:
    void emergencyStopChanged(bool pressed);

protected:
    void write(const QString& command, const std::vector<bridge::RegisterWrite>& records) override;
    QString resultCommand(bridge::Motion::Kind kind) const override;

private:
    Controller(KordService* service, std::unique_ptr<Backend> backend, const Options& options,
               QObject* parent);

    bridge::SignalPort* portOf(const QString& name) const;

    std::unique_ptr<Backend> backend_;  ///< of a robot from outside only the kinematics are used
    bridge::SignalPort* device_;        ///< beside the robot; may be null
    QSet<QString> deviceNames_;         ///< what it offers
    bridge::SignalPort* inputs_;        ///< the robot's. One with a function setInput() has simulated inputs
    bool isOutside_;
    DelayLine writes_;
    bool emergencyStop_ = false;
    bool wrongKind_ = false;
};

}  // namespace sim
