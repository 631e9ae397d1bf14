#pragma once

#include "bridge/modbus/modbuslink.h"
#include "bridge/modbus/modbusplan.h"
#include "bridge/signalport.h"

#include <QSet>
#include <QTimer>

#include <deque>

namespace bridge {

/// The registers, inputs and outputs that a Modbus TCP device has, by a map.
///
/// One telegram is under way at a time: the heartbeat first, then writes in their order, then inputs. With
/// each connection the inputs are read, all outputs are written off, the first heartbeat is taken, then the
/// link is up. What is ordered while it is down is refused and never sent later. A write that the device
/// refuses is told once and answered with false; the connection stays. Without an answer in time the
/// connection is reset.
///
/// The heartbeat is counted up by the event loop of the GUI thread on purpose: where that hangs, nobody
/// watches the outputs, and the device is to switch them off.
class ModbusPort : public SignalPort {
    Q_OBJECT
public:
    explicit ModbusPort(const ModbusMap& map, QObject* parent = nullptr);
    /// Writes all outputs off, if the link is up. Waits for the answers, 250 ms at most.
    ~ModbusPort() override;

    QVector<SignalRow> rows() const override { return map_.rows; }
    void start() override;
    void write(const QVector<SignalWrite>& writes, int ticket) override;

signals:
    /// Words for a log or an operator, each once: a write or an input that the device refuses.
    void told(const QString& text);

private:
    enum class Phase { Down, Opening, Up };
    /// The writes of a call that wait.
    struct Group {
        int ticket = 0;
        qint64 sinceMs = 0;
        bool isAccepted = true;
        std::deque<ModbusWrite> writes;
    };
    struct Poll {
        ModbusPoll asked;
        qint64 dueMs = 0;
    };

    void onOpened();
    void onLost(const LinkReason& reason);
    void next();
    bool nextOpening();
    void answerGroups();
    void sendWrite(const ModbusWrite& write);
    void onWritten(const ModbusWrite& write, const ModbusAnswer& answer);
    bool repeatOneByOne(const ModbusWrite& write, const ModbusAnswer& answer);
    void sendPoll(Poll* poll);
    void onRead(const ModbusPoll& poll, const ModbusAnswer& answer);
    void sendBeat();
    void onBeatRefused(const ModbusAnswer& answer);
    void comeUp();
    Poll* duePoll(qint64 now);
    void sleep(qint64 now);
    int find(const SignalWrite& write) const;
    void show(int element, int value);
    void tell(const QString& text);
    const ModbusElement& element(int index) const { return map_.elements[std::size_t(index)]; }

    const ModbusMap map_;
    ModbusLink link_;
    QHash<QString, int> byLabel_;  ///< of registers' elements and of inputs and outputs
    std::vector<int> values_;      ///< of the elements, as last told
    std::vector<Poll> polls_;
    ModbusWords words_;
    Phase phase_ = Phase::Down;
    std::size_t openingPolls_ = 0;           ///< read since the connection was made
    std::deque<ModbusWrite> openingWrites_;  ///< to be written off before the link is up
    std::deque<Group> groups_;
    bool wasWrite_ = false;     ///< the telegram before
    bool isAnswering_ = false;  ///< a listener who writes now waits until the answer is told whole
    quint16 beat_ = 0;
    qint64 beatDueMs_ = 0;
    qint64 beatMs_ = 0;         ///< when the last one was sent that the device has taken
    bool isBeatTaken_ = false;  ///< one, on this connection
    QTimer timer_;              ///< until the next poll or beat
    QSet<QString> told_;
    LinkReason downReason_;
};

}  // namespace bridge
