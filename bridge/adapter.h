#pragma once

#include "bridge/controller.h"
#include "bridge/rule.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

class KordService;
struct KordCall;

namespace bridge {

struct RegisterWrite;

/// Answers the robot service for a robot controller, and for an I/O device beside it if there is one.
///
/// It reads the calls of the service into typed motions and writes, keeps every data node, counts the
/// motions, and writes posture, state and result in the order in which a package needs them: exactly one
/// result a motion, none for a stopped one. What a backend does wrong is named by `violated` and, with
/// Options::repair, kept from the package:
///
/// - a motion reported twice, before its release, after its stop, or that nobody ordered: the result is
/// dropped;
/// - out of order: the result is held back until those before it have come;
/// - two in one millisecond, or inside a call: the results are written at least 1 ms apart;
/// - the last motion reported while the arm still moves: the result is held back until it stands.
///
/// A posture that is missing before a result is named only: the place of a motion is not guessed.
///
/// Without a link, to the controller or to the device, the power is off and the mode "unknown" for the
/// package, all motions are dropped, and motions and writes are refused. When the link is back the drives
/// stay off until an operator switches them on: by setPower(true), or off and on at the controller itself.
class Adapter : public QObject {
    Q_OBJECT
public:
    struct Options {
        bool writeMulti = true;  ///< offer the command "register.write_multi"
        /// Keep from the package what the backend does wrong. False hands all on as it comes, which only a
        /// simulator of wrong controllers wants.
        bool repair = true;
    };
    using MotionEvent = bridge::MotionEvent;

    /// `backend` and `device` (may be null) must outlive its use; they are not started before start(). Names
    /// that the device offers are its own, the controller has the rest.
    Adapter(KordService* service, Controller* backend, SignalPort* device, const Options& options,
            QObject* parent = nullptr);
    ~Adapter() override;

    /// Fills the nodes and starts the backend. Once.
    void start();

    Abilities abilities() const;
    /// The operator's switch. Off: the arm brakes and all motions are dropped.
    virtual void setPower(bool on);
    /// Whether the drives are on and stay off for the package until setPower(true), because the link was
    /// lost.
    bool isPowerHeld() const;
    void setMode(Mode mode);
    /// One jog step. Jogs write no result and do not emit `motion`; state and posture follow as usual.
    JogAnswer jog(const JogMove& move);
    /// Jogs in the direction of `move` until stopJog(), or as far as the arm gets.
    JogAnswer startJog(const JogMove& move);
    void stopJog();

    /// Whether controller and device can be reached; linkReason() says why the first of them cannot.
    bool isLinked() const;
    LinkReason linkReason() const;
    /// Of one of them. A device that is not there counts as reached.
    bool isLinked(LinkEnd end) const;
    LinkReason linkReason(LinkEnd end) const;
    bool hasDevice() const;

    /// A digital input: "DI3" or "LUMO_DI.#2"; false for an unknown one.
    bool input(const QString& name) const;
    /// An output as ordered last: bool for "DO3" and "LUMO_DO.#3", int for "LUMO_AO_1"; invalid for an
    /// unknown name.
    QVariant output(const QString& name) const;
    /// Names of the digital inputs, and of all outputs, in the order in which the ports offer them.
    QStringList inputNames() const;
    QStringList outputNames() const;

    /// No movement, and nothing that is still to be written or answered.
    virtual bool standsStill() const;
    /// Where the arm is, as far as told, rounded as in "sys.posture".
    virtual Posture posture() const;
    /// Length of the tool path since construction, metres: up to where the arm is, as far as told.
    virtual double travelled() const;
    /// When the arm was there, ms of the host's clock.
    virtual double postureMs() const;

signals:
    /// Names and types as in output(). Only when the value changes.
    void outputChanged(const QString& name, const QVariant& value);
    void inputChanged(const QString& name, bool value);
    /// A write that the register, the output or its device does not accept.
    void rejected(const QString& name, const QString& reason);
    /// `id` counts motion commands from 1.
    void motion(int id, bridge::MotionEvent event);
    /// Just before a result is written to the command's node.
    void result(const QString& command, int id, int code);
    /// While the robot moves, after the posture was written.
    void postureMoved();
    /// Something that was delayed has been written or answered.
    void caughtUp();
    /// The robot stands. The posture was written; the state is written next.
    void cameToRest();
    /// Of both; told also when only the reason changes.
    void linkChanged(bool up, const bridge::LinkReason& reason);
    /// The backend broke a rule with this motion (0: with none).
    void violated(bridge::Rule rule, int id);

protected:
    /// Carries out the writes of one command, then writes its answer: 0, or -1 when one was rejected.
    virtual void write(const QString& command, const std::vector<RegisterWrite>& records);
    /// The command to whose node the results of a kind of motion are written.
    virtual QString resultCommand(Motion::Kind kind) const;

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace bridge
