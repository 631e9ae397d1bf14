#pragma once

#include "bridge/controller.h"
#include "bridge/rule.h"

#include <QHash>
#include <QObject>
#include <QTimer>

#include <deque>
#include <optional>
#include <vector>

namespace bridge {

/// Counts the motions that were ordered, judges what the backend reports of them, and hands the results on.
///
/// With repair: one result a motion, in their order, at least 1 ms apart and never inside a call of the
/// backend, the last one when the arm stands. Without: as they come.
class Results : public QObject {
    Q_OBJECT
public:
    struct Options {
        bool repair = true;
        bool events = true;  ///< emit `event`; else the backend tells what becomes of its motions
    };

    Results(const Options& options, QObject* parent);

    /// The id of the next motion, which waits to be released.
    int add(Motion::Kind kind);
    /// All that wait are released.
    void release();
    /// All motions are stopped or dropped.
    void drop();
    /// The adapter's own answer to a released motion, at its turn.
    void refuse(int id, int code);

    /// A backend reports the end of a motion.
    void take(int id, int code);
    void setMoving(bool moving);
    void notePosture() { hasPosture_ = true; }
    /// Around each call of the backend; calls may be nested.
    void beginCall() { ++calls_; }
    void endCall();

    bool hasWaiting() const { return waiting_ > 0; }
    /// Motions that were released and have no result yet.
    bool hasReleased() const { return released_ > 0; }

signals:
    /// A result is to be written; emitted last.
    void due(bridge::Motion::Kind kind, int id, int code);
    void happened(int id, bridge::MotionEvent what);
    void violated(bridge::Rule rule, int id);

private:
    enum class State { Waiting, Released, Answered, Gone };
    struct Record {
        Motion::Kind kind;
        State state = State::Waiting;
    };

    Record* find(int id);
    std::optional<Rule> judge(int id) const;
    void nameLateness(int id, int code);
    int firstReleased() const;
    bool isLast(int id, int code) const;
    void setState(Record* record, State state);
    void deliver();
    void settle(int id, int code);
    std::vector<int> dropAll();
    void tell(int id, MotionEvent what);
    void startNext();
    void trim();

    Options options_;
    std::deque<Record> records_;  ///< of the ids from firstId_ on
    int firstId_ = 1;
    int waiting_ = 0, released_ = 0;
    QHash<int, int> told_;  ///< codes of results that are held back, by id
    int started_ = 0;       ///< the id under way; 0 for none
    bool isMoving_ = false, hasPosture_ = true;
    int calls_ = 0;
    qint64 takenMs_ = -1, writtenMs_ = -1;
    QTimer next_;
};

}  // namespace bridge
