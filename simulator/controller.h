#pragma once

#include "simulator/jog.h"

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
    Bunch,      ///< a result waits for the next one: two in one pass of the event loop
    Sync,       ///< the result (0) inside the motion command, none when the motion is done
    Late,       ///< the motion under way at a stop gets the result 0, 300 ms after it
    Double,     ///< every result twice, 1 ms apart
    WrongKind,  ///< results of move.j on move.l's node, of move.l on move.c's, of move.c on move.j's
    SlowState,  ///< the robot state follows 50 ms late
    NoResult,   ///< the next motion that is ordered is carried out, its result never comes
    FailAtEnd,  ///< the next motion that is ordered reaches its target, then reports FailedAtEnd
};

/// A simulated robot controller: answers every command of the robot service and fills every data
/// node. Drives an arm through its motion queue, keeps registers, inputs and outputs. It knows the
/// robot service only, never a package. Time comes from Qt timers and the host's clock alone.
///
/// It begins powered, idle, in automatic mode, the arm at home, all inputs and outputs off. The pose
/// in "sys.posture" is that of the arm's own torch, whatever tool set is handed over.
///
/// Results: 0; -1 out of reach; -2 joint limit; -3 no circle; -4 drive off; -5 a speed that is not
/// positive; -6 a target that is missing, incomplete or made for another number of axes. The moves
/// before one that cannot be made are moved, up to their exact target. "move.reset" and "move.stop"
/// both empty the queue and brake the arm where it moves. Speeds are those of the tool, in joint
/// motions too; where the tool hardly moves, 0.02 m a radian of turning count as its way.
class Controller : public QObject {
    Q_OBJECT
public:
    struct Options {
        int axes = 6;            ///< 6 or 7
        bool writeMulti = true;  ///< offers "register.write_multi"
    };
    enum class MotionEvent { Queued, Started, Passed, Stopped, Dropped, Failed };
    Q_ENUM(MotionEvent)

    Controller(KordService* service, const Options& options, QObject* parent = nullptr);
    ~Controller() override;

    /// Off: the arm brakes, the queue is dropped, registers and outputs stay. It stays off while the
    /// emergency stop is pressed.
    void setPower(bool on);
    /// Pressed: takes the drive power away. Turned back, it leaves it off.
    void setEmergencyStop(bool pressed);
    bool emergencyStop() const;
    /// "auto" or "manual".
    void setMode(const QString& mode);
    /// "DI3" or "LUMO_DI.#2"; false for an unknown name.
    bool setInput(const QString& name, bool value);
    bool input(const QString& name) const;
    /// State of an output ("DO3", "LUMO_DO.#3" as bool; "LUMO_AO_1" as int); invalid when unknown.
    QVariant output(const QString& name) const;
    /// Every input or output name, in their order.
    QStringList inputNames() const;
    QStringList outputNames() const;
    /// The motion under way, or the first of the next batch, ends with this negative code; one under
    /// way is braked first. Codes that are not negative do nothing.
    void failMotion(int code);
    /// The pendant's jog keys. Nothing of a jog is announced by `motion` or written as a result; the
    /// robot's state and posture follow as usual.
    JogAnswer jog(const JogMove& move);
    /// A step along or about an axis of the base, metres or radians.
    JogAnswer jog(JogAxis axis, double step);
    /// As far as the arm gets in the direction of the move's way, until stopJog().
    JogAnswer jogOn(const JogMove& move);
    /// What would become of a place now; it moves nothing.
    JogAnswer askPlace(const PlaceMove& move) const;
    /// The standing robot is jogged to a place, as by a step.
    JogAnswer place(const PlaceMove& move);
    /// Brakes the jog that is under way, with what was ordered behind it.
    void stopJog();
    void setQuirk(Quirk quirk, bool on);
    static bool quirkFromName(const QString& name, Quirk* quirk);
    /// The pendant's report of a key (next, last, center, enter, delete); false for an unknown one.
    bool reportKey(const QString& name, bool value);
    /// True when no motion is under way or braking and no result is still to come.
    bool standsStill() const;
    /// Where the arm is at this moment, in the numbers of "sys.posture", which shows it every 10 ms.
    MotionPlan::Stand stand() const;
    /// Path length travelled by the tool since construction, metres.
    double travelled() const;

signals:
    void emergencyStopChanged(bool pressed);
    /// "LUMO_DO.#3" true, "LUMO_AO_1" 1638, "DO3" true. Only changes.
    void outputChanged(const QString& name, const QVariant& value);
    void inputChanged(const QString& name, bool value);
    /// A write to a register or output that does not exist.
    void rejected(const QString& name, const QString& reason);
    /// `id` counts motion commands from 1.
    void motion(int id, sim::Controller::MotionEvent event);
    /// Emitted just before a result is written to the command's node.
    void result(const QString& command, int id, int code);
    /// Every 10 ms while the robot moves, after the posture was written.
    void postureMoved();
    /// The robot has come to a standstill, the posture was written. Its state follows.
    void stood();

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace sim
