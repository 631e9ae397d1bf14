#pragma once

#include "executor/schedule.h"
#include "executor/waiter.h"
#include "module/host.h"
#include "program/statement.h"

#include <QObject>
#include <QTimer>

#include <functional>

/// The parameter set in force: the element of `lumo.param` at `lumo.cur_param`, the null node for
/// an index that names none.
ModuleObject* paramNode();

namespace lumo {

/// Whether mode and weld switches permit welding now: "auto" and the weld switch, or any other mode with the
/// weld switch and the hand-weld switch.
[[nodiscard]] bool weldingPermitted();

/// The step of power ramps from "lumo.execute.dt"; 20 ms where that is no positive number.
[[nodiscard]] int rampStepMs();

/// The laser and what belongs to it: gas, wire and set points. Carries out openings, closings, pulses and
/// parameter changes, and keeps them from overlapping.
class Laser : public QObject {
    Q_OBJECT
public:
    /// `sender` stands behind what is written to the tree and to the ports.
    Laser(QObject* sender, Schedule& schedule, Waiter& waiter);

    // --- Sequences. Each waits as its plan says (program/laserplan.h). -------------------------

    /// An "open" statement, or the reopening at a resume: nothing without the permission, else its set is put
    /// in force (null: the one in force stays) and the opening follows. The weld flag is set at its end,
    /// unless it was superseded.
    void openIfPermitted(const prog::Statement* stmt);
    /// A "close" statement: nothing without the permission, else the closing; clears the weld flag.
    void closeIfPermitted();
    void open();
    void close();
    /// All outputs off at once, those that were switched on by hand too.
    void shutDown();
    /// Switches off what was switched on by hand at the device page.
    void switchOffByHand();

    // --- Around a run -------------------------------------------------------------------------

    /// Before a run or a step moves the robot: ends the ramp of an earlier closing, which it must not take
    /// along. The gas flows on as that closing planned.
    void settleBeforeMoving();
    /// Ends the ramp that still runs because the permission was lost in the weld: nothing waited for it.
    void settleCutWeld();
    /// Operating mode or a weld switch was written: closes a weld that is no longer permitted.
    void onPermission();

    // --- Parameters ---------------------------------------------------------------------------

    /// Puts a parameter set in force, by its position in `lumo.param`.
    void takeOver(int set);
    /// Writes the set in force as far as it acts now.
    void writeParameters();

    /// Whether an opening has begun and no closing since.
    [[nodiscard]] bool isWelding() const { return weld_ != Weld::Dark; }
    /// Whether close() is on the stack and not superseded.
    [[nodiscard]] bool isClosing() const { return !schedule_.isSuperseded(closing_); }
    /// Port writes that are planned and not done; the running pulse timer counts as one.
    [[nodiscard]] int pendingSteps() const;

signals:
    /// An opening has come to its end; the weld flag is set next.
    void opened();
    /// `pendingSteps` may have changed.
    void pendingChanged();

private:
    enum class Weld { Dark, Opening, Open };
    using MakePlan = std::function<prog::LaserPlan(const prog::LaserParams&, int dtMs)>;

    void carryOut(int sequence, const MakePlan& makePlan);
    void write(int sequence, const prog::LaserPhase& phase);
    void carryOutClosing(int sequence, prog::Closing closing);
    void startPulses();
    void stopPulses();
    void pulseStep();
    [[nodiscard]] bool isBetweenPulses() const;
    void writeSetPoints(int sequence, const prog::LaserParams& params);
    /// Whether a hand has switched this device off since the weld was opened: it has to stay off.
    [[nodiscard]] bool isOffByHand(I_PORT port) const;
    void writePort(const prog::PortStep& step, ModuleObject* batch = nullptr);
    void setWeldFlag(bool open);

    QObject* sender_;
    Schedule& schedule_;
    Waiter& waiter_;
    QTimer pulseTimer;
    int openTime = 0, openInterval = 0, stayTime = 0;  ///< ms, of the set that was taken over last
    bool laserOn = false;                              ///< the laser is in the on phase of its pulses
    Weld weld_ = Weld::Dark;
    bool weldCut_ = false;     ///< the weld was closed because permission was lost
    int closing_ = -1;         ///< number of the sequence whose closing is on the stack
    bool paramWaits_ = false;  ///< a parameter change that came between two pulses
    double lastPower_ = 0.0;   ///< laser power that was written last
};

}  // namespace lumo
