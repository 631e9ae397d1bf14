#pragma once

#include "bridge/controller.h"
#include "bridge/linuxcnc/clockgap.h"
#include "bridge/linuxcnc/halport.h"
#include "bridge/linuxcnc/progress.h"

#include <QTimer>

#include <deque>
#include <optional>

namespace bridge {

/// LinuxCNC 2.9 with the six-axis welding arm, reached through motion.py and rio.py (folder cell), which run
/// beside it and listen on 127.0.0.1. start.py starts them.
///
/// A batch is checked, written as G-code and sent whole; LinuxCNC begins it some 10 ms later. Batches do not
/// blend into each other. Motions that cannot be made are found before they are sent, with the codes of
/// MotionCode and TooFast (-7). Any other error that LinuxCNC reports ends the motion with -8.
///
/// Until it is homed (with the first power on, without movement) the arm counts as at home.
class LinuxCnc : public Controller {
    Q_OBJECT
public:
    static constexpr quint16 defaultPort = 5100;

    /// `port`: of the commands; that of the signals and of the state follow.
    explicit LinuxCnc(quint16 port = defaultPort, QObject* parent = nullptr);

    int axes() const override { return arm_.axes(); }
    Abilities abilities() const override;
    linuxcnc::HalPort* signalPort() override { return &signals_; }
    void start() override;
    void queue(const Motion& motion) override { waiting_.push_back(motion); }
    void release() override;
    void stop() override;
    /// LinuxCNC takes two seconds at most.
    void setPower(bool on) override;
    /// LinuxCNC has no key switch: this is the mode then.
    void setMode(Mode mode) override;
    /// A batch of one motion, and while held the next one behind it; letting go stops it as stop() does. So
    /// reach and joint limits are checked before, and the heartbeat holds it. Before a wrist that would have
    /// to turn too fast a held jog ends.
    JogAnswer startJog(const JogMove& move, bool held) override;
    void stopJog() override;

    const kin::Arm& arm() const { return arm_; }
    /// Closes the connections, or makes them anew: what a broken cable does, for a test of it.
    Q_INVOKABLE bool cutLink(bool cut);

private:
    using Motions = std::vector<Motion>;

    void onOpened();
    void onClosed(const LinkReason& reason);
    void onRefused(const LinkReason& reason);
    void onHeartbeatMissed(int busyMs, bool wasOn);
    void onAnswer(const QJsonObject& answer);
    void onStateLine(const QJsonObject& line);
    void onState(const linuxcnc::MachineState& state);
    void tellLink();
    void tellPower();
    void tellPosture();
    void tellMoving(bool moving);
    void follow();
    void tellDue();
    void dropTold();
    bool tellBefore(bool stands);
    void fail(int id, int code);
    void failByError(const QStringList& errors);
    void settle();
    JogAnswer sendJog(const JogMove& move, bool held);
    void endJog();
    bool isJogging() const;
    bool standsStill() const;
    void sendBatch(const Motions& motions);
    void forgetMotions();
    linuxcnc::Place place() const;
    QJsonObject order(const char* name);
    void send(const QJsonObject& message);
    void awaitAnswer();

    kin::Arm arm_;
    linuxcnc::HalPort signals_;
    linuxcnc::JsonLink commands_, states_;
    QTimer next_;                                  ///< runs between two results
    QTimer unanswered_;                            ///< runs while an order has no answer
    std::optional<linuxcnc::MachineState> state_;  ///< the last; none before the first and without a link
    LinkReason told_;                              ///< why there is no link
    bool hasPosture_ = false;                      ///< one was told since the last result
    linuxcnc::ClockGap clockGap_;
    bool hasMoved_ = false;  ///< since the first of the batches under way was sent
    Mode mode_ = Mode::Auto;
    bool linked_ = false, on_ = false, moving_ = false;  ///< as told
    bool isMissed_ = false;    ///< a beat was missed: no link until the drives are off
    bool isStopping_ = false;  ///< the standstill behind a stop was not told
    int orders_ = 0;           ///< sent
    int powerOrder_ = 0;       ///< the last order of its kind whose answer is missing; 0: none
    int stopOrder_ = 0;        ///< the same
    double validFrom_ = 0;     ///< states before this clock are from before the last answer
    Motions waiting_;
    std::vector<Motions> held_;            ///< released while a stop is under way
    std::deque<linuxcnc::Progress> sent_;  ///< batches, the first is under way
    int number_ = 0;                       ///< of the last batch
    std::optional<JogMove> heldJog_;
    std::optional<linuxcnc::Place> end_;  ///< behind all that was sent; none where the state tells it
};

}  // namespace bridge
