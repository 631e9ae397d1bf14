#pragma once

#include "simulator/jog.h"
#include "simulator/latency.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>

class KordService;
struct KordCall;

namespace sim {

/// How a simulated controller misbehaves.
enum class Quirk {
    Bunch,      ///< holds a result back for the next one: two in one pass of the event loop
    Sync,       ///< writes the result 0 inside the motion command, none when the motion is done
    Late,       ///< writes the result 0 for a stopped motion, 300 ms after the stop
    Double,     ///< writes every result twice, 1 ms apart
    WrongKind,  ///< writes move.j's results to move.l's node, move.l's to move.c's, move.c's to move.j's
    SlowState,  ///< writes the robot state 50 ms late
    NoResult,   ///< carries out the next motion ordered, but writes no result for it
    FailAtEnd,  ///< moves the next motion ordered to its target, then reports FailedAtEnd
};

/// A simulated robot controller. It answers every command of the robot service and fills every data
/// node, moves an arm through a motion queue, and keeps registers, inputs and outputs. It knows nothing
/// of packages. Time comes from Qt timers and the host's clock only.
///
/// At first: power on, state idle, mode auto, arm at home, all inputs and outputs off. "sys.posture"
/// shows the pose of the arm's torch, independent of the tool set.
///
/// Results are those of MotionCode. The motions before one that cannot be made are carried out, up to
/// their exact target. "move.reset" and "move.stop" both empty the queue and brake a moving arm. Speeds
/// are those of the tool, in joint motions too; for a motion that mostly turns the tool see turnRadius.
class Controller : public QObject {
    Q_OBJECT
public:
    struct Options {
        int axes = 6;            ///< 6 or 7
        bool writeMulti = true;  ///< offer the command "register.write_multi"
        Latency latency{};
    };
    enum class MotionEvent { Queued, Started, Passed, Stopped, Dropped, Failed };
    Q_ENUM(MotionEvent)

    Controller(KordService* service, const Options& options, QObject* parent = nullptr);
    ~Controller() override;

    /// Off: the arm brakes and the queue is emptied; registers and outputs stay. On has no effect while
    /// the emergency stop is pressed.
    void setPower(bool on);
    /// Pressed: drive power off. Releasing it does not switch the power on again.
    void setEmergencyStop(bool pressed);
    bool emergencyStop() const;
    /// "auto" or "manual".
    void setMode(const QString& mode);
    /// `name` is "DI3" or "LUMO_DI.#2"; false for an unknown one.
    bool setInput(const QString& name, bool value);
    bool input(const QString& name) const;
    /// An output: bool for "DO3" and "LUMO_DO.#3", int for "LUMO_AO_1"; invalid for an unknown name.
    QVariant output(const QString& name) const;
    /// Names of all inputs or outputs, device signals first.
    QStringList inputNames() const;
    QStringList outputNames() const;
    /// The current motion is braked and ends with this code. Without one, or in a jog, which has no result,
    /// the first motion of the next batch ends with it. Only negative codes have an effect.
    void failMotion(int code);
    /// One jog step. Jogs write no result and do not emit `motion`; state and posture follow as usual.
    JogAnswer jog(const JogMove& move);
    /// One jog step along or about an axis of the base, metres or radians.
    JogAnswer jog(JogAxis axis, double step);
    /// Jogs in the direction of `move` until stopJog(), or as far as the arm gets.
    JogAnswer startJog(const JogMove& move);
    /// What moveToPose() would answer now.
    JogAnswer checkPoseMove(const PoseMove& move) const;
    /// Jogs the standing robot to a pose.
    JogAnswer moveToPose(const PoseMove& move);
    /// Brakes a jog and forgets the motions ordered after it.
    void stopJog();
    void setQuirk(Quirk quirk, bool on);
    static bool quirkFromName(const QString& name, Quirk* quirk);
    /// Writes the state of a pendant key (next, last, center, enter, delete; false is pressed). Returns
    /// false for an unknown key.
    bool reportKey(const QString& name, bool value);
    /// No motion, no braking, and no result, state, posture or output still to be written.
    bool standsStill() const;
    /// Where the arm is now, rounded as in "sys.posture" (which is written every 10 ms).
    MotionPlan::Posture posture() const;
    /// Length of the tool path since construction, metres.
    double travelled() const;
    /// Its kinematics.
    const Arm& arm() const;

signals:
    void emergencyStopChanged(bool pressed);
    /// Names and types as in output(). Only when the value changes.
    void outputChanged(const QString& name, const QVariant& value);
    void inputChanged(const QString& name, bool value);
    /// A write that the register or output does not accept.
    void rejected(const QString& name, const QString& reason);
    /// `id` counts motion commands from 1.
    void motion(int id, sim::Controller::MotionEvent event);
    /// Just before a result is written to the command's node.
    void result(const QString& command, int id, int code);
    /// Every 10 ms while the robot moves, after the posture was written.
    void postureMoved();
    /// What a latency had delayed has been written.
    void caughtUp();
    /// The robot stands. The posture was written; the state is written next.
    void cameToRest();

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace sim
