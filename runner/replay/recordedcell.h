#pragma once

#include "flight/trees.h"
#include "runner/replay/comparison.h"
#include "runner/replay/script.h"

#include <QHash>
#include <QObject>

struct KordCall;

namespace run::replay {

/// Stands behind the robot service in place of a controller and answers with what was recorded: results,
/// postures, states and inputs of the cell, and what operator and stations wrote, each at its time and behind
/// what the package had done before it.
class RecordedCell : public QObject {
    Q_OBJECT
public:
    /// `runMode`: the package's; null when it has none. All must outlive it.
    RecordedCell(const Script* script, Comparison* comparison, int* runMode, QObject* parent = nullptr);

    /// The first input comes from the next pass of the event loop.
    void begin();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void onIssued(const KordCall& call);
    int arm(qint64 ms);
    void armPosture();
    void feed();
    void feedSoon();
    bool isNextDue() const;
    bool waitsForTimer(std::size_t posture) const;
    void apply(const flight::Record& record);
    void applyValue(const flight::Record& record, const QJsonObject& body);
    void applyStructure(const flight::Record& record, const QJsonObject& body);
    void applyPosture(const QByteArray& body);
    QObject* senderOf(const flight::Record& record);

    const Script* script_;
    Comparison* comparison_;
    int* runMode_;
    flight::Trees trees_;
    QObject hand_;           ///< in place of the pages
    std::size_t next_ = 0;   ///< input that comes next
    std::size_t armed_ = 0;  ///< postures before this input have a timer
    int postureTimer_ = 0;
    qint64 postureMs_ = -1;  ///< when the timer of a posture fired last
    bool isPosted_ = false;
};

/// Writes a recorded part of the state, value by value.
void restore(mendo::ModuleObject* node, const QJsonValue& content, QObject* sender);

}  // namespace run::replay
