#pragma once

#include "bridge/jog.h"
#include "bridge/linkreason.h"
#include "bridge/motion.h"
#include "bridge/signalport.h"
#include "bridge/toolset.h"

#include <QObject>
#include <QString>

namespace bridge {
Q_NAMESPACE

/// Whether the robot moves by itself or by hand.
enum class Mode { Unknown, Manual, Auto };

/// What becomes of a motion.
enum class MotionEvent { Queued, Started, Passed, Stopped, Dropped, Failed };
Q_ENUM_NS(MotionEvent)

/// What a controller can do besides moving; a panel hides what is missing.
struct Abilities {
    bool jog = false, power = false, mode = false;
    bool refusals = false;  ///< takes motions with a `refusal`; else the adapter answers them at their turn
    bool progress = false;  ///< tells `motion`, `postureMoved` and `cameToRest` itself; else the adapter does
};

/// A robot controller behind an Adapter: the part that is written anew for each kind of controller. The
/// adapter owns the nodes of the robot service, counts the motions and writes the results; a backend knows
/// neither nodes nor packages.
///
/// Everything is called and answered on the GUI thread, and nothing waits: a backend that talks over a socket
/// sends and returns. Signals may be emitted inside a call. A backend keeps the order of the calls.
class Controller : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Number of axes, 6 or 7. Constant.
    virtual int axes() const = 0;
    /// Constant.
    virtual Abilities abilities() const { return {}; }
    /// Registers, inputs and outputs; lives as long as the controller. Its link is the controller's own,
    /// which the controller tells.
    virtual SignalPort* signalPort() = 0;
    /// Called once, by the adapter that has connected itself: from now on the backend may tell. Once it
    /// reaches its controller it tells power, mode, posture, then `linkChanged(true, …)`.
    virtual void start() = 0;

    /// Puts a motion behind those that wait. Nothing moves before release(). Each motion that was queued is
    /// answered by one `finished`, unless stop(), reset(), a loss of power, of the link, or the failure of a
    /// motion before drops it.
    virtual void queue(const Motion& motion) = 0;
    /// The motions that wait are a whole batch: they move now, or behind the batch that is under way, from
    /// standstill. Motions of a batch are blended within their zones. Where one cannot be made, those before
    /// it are carried out to their targets, it finishes with its code, and all behind it are dropped.
    virtual void release() = 0;
    /// Brakes the arm and forgets all motions, also those that wait: no `finished` comes for them any more,
    /// from this call on. When the arm stands, and at once when it stands already, `movingChanged(false)`
    /// follows, after the posture. Outputs stay.
    virtual void stop() = 0;
    /// As stop(), before a new program begins.
    virtual void reset() { stop(); }
    /// The tool and the work object in force, from now on.
    virtual void setToolset(const Toolset&) {}

    /// Switches the drives on or off, as an operator asks at the panel; answered by `powerChanged`.
    virtual void setPower(bool) {}
    /// Answered by `modeChanged`.
    virtual void setMode(Mode) {}
    /// One jog step, or with `held` a jog in the direction of `move` until stopJog() or as far as the arm
    /// gets. A jog has no result; posture and movement are told as usual. The arm stands and nothing waits.
    virtual JogAnswer startJog(const JogMove&, bool /*held*/) { return JogAnswer::NotOffered; }
    virtual void stopJog() {}

signals:
    /// A motion ended: 0 at its target or in the middle of the corner to the next one, negative where it
    /// failed (MotionCode). The posture was emitted before. In the order of the motions.
    void finished(int id, int code);
    /// At least every 50 ms while the arm moves, and at each motion's end.
    void postureChanged(const bridge::Posture& posture);
    /// True from the first movement of a batch, false when the arm stands behind the last motion; then before
    /// that motion's `finished`.
    void movingChanged(bool moving);
    /// False: the backend has dropped all motions.
    void powerChanged(bool on);
    void modeChanged(bridge::Mode mode);
    /// False: the controller cannot be reached, with the reason. The backend has dropped all motions and
    /// sends none of them when the link is back. Told anew when the reason changes.
    void linkChanged(bool up, const bridge::LinkReason& reason);
    /// A key of the end tool: "next", "last", "center", "enter" or "delete".
    void keyChanged(const QString& name, bool pressed);

    // Only of a backend with Abilities::progress.
    void motion(int id, bridge::MotionEvent event);
    /// Every 10 ms while the arm moves, after the posture.
    void postureMoved();
    /// The arm stands; the posture was told, `movingChanged` follows.
    void cameToRest();
};

}  // namespace bridge
