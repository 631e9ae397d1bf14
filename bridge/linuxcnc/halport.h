#pragma once

#include "bridge/linuxcnc/jsonlink.h"
#include "bridge/signalport.h"

#include <QElapsedTimer>
#include <QMap>
#include <QSet>

namespace bridge::linuxcnc {

/// Registers, inputs and outputs on HAL pins, behind a heartbeat of the GUI thread: when the panel hangs or
/// dies, or the connection is cut, LinuxCNC switches every output off and holds the arm within 100 ms.
///
/// It offers what the simulated controller offers; which pin is which stands in cell/signals.tcl.
class HalPort : public SignalPort {
    Q_OBJECT
public:
    HalPort(quint16 port, QObject* parent);

    QVector<SignalRow> rows() const override;
    /// Connects; outputs follow from the beginning, as nothing was lost yet.
    void start() override { link_.open(); }
    void write(const QVector<SignalWrite>& writes, int ticket) override;

    /// Connected, and a beat was answered: a program that hangs takes connections, too.
    bool isOpen() const { return hasAnswered_; }
    void close(const LinkReason& reason) { link_.close(reason); }
    void rest() { link_.rest(); }
    /// Outputs follow from now on; all are off at first. After a loss only when the operator asks.
    void arm();
    /// An input of a cell that is simulated here: "DI3" or "LUMO_DI.#2"; false for another name.
    Q_INVOKABLE bool setInput(const QString& name, bool value);

signals:
    void opened();
    void closed(const bridge::LinkReason& reason);
    /// No beat arrived in time, and the outputs are off. `busyMs`: so long this thread sent none. `wasOn`: an
    /// output was on.
    void heartbeatMissed(int busyMs, bool wasOn);

private:
    void onOpened();
    void onClosed(const LinkReason& reason);
    void onMessage(const QJsonObject& message);
    void beat();
    void tellOutputsOff();
    void tellInput(const QString& pins, int pin, int value);
    void sendArm();
    void allOff();
    void sendInputs();

    JsonLink link_;
    QTimer beat_;
    QElapsedTimer sinceBeat_;
    int longestGapMs_ = 0;  ///< of the last ten beats or so
    bool hasAnswered_ = false;
    bool armed_ = true;     ///< asked for
    bool follows_ = false;  ///< as LinuxCNC tells
    QSet<int> tickets_;
    QSet<QString> on_;           ///< outputs that are ordered on, by pin
    QMap<int, bool> simulated_;  ///< inputs that were set here, by pin
};

}  // namespace bridge::linuxcnc
