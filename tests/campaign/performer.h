#pragma once

#include "campaign/recorder.h"
#include "campaign/scenario.h"
#include "campaign/world.h"

#include <QObject>

namespace campaign {

/// Does what a scenario plans, when it plans it.
class Performer : public QObject {
    Q_OBJECT
public:
    Performer(World& world, Recorder& recorder, const Scenario& scenario);

    /// Arms what comes at a time.
    void arm();
    /// Forgets what has not come yet.
    void stop();
    /// An event was kept; `early`: the executor has not heard of it yet.
    void notice(const Event& event, bool early);
    /// When the last action that comes at a time will have been done, in ms; grows with what follows.
    [[nodiscard]] qint64 lastMs() const { return lastMs_; }
    /// Results were made up, doubled or given in advance: a motion's error may have got lost.
    [[nodiscard]] bool mayLoseErrors() const { return mayLoseErrors_; }

    /// Actions of the end of a schedule.
    void pause();
    void setPower(bool on);
    void setInput(const QString& name, bool on);
    void endExecutor();

private:
    struct Planned {
        Action action;
        int matches = 0;
        bool done = false;
    };

    void later(int index, qint64 ms, bool behind = false);
    void arm(qint64 ms, const std::function<void()>& expired);
    void perform(int index);
    void carryOut(const Action& action);
    void start(const Action& action);
    void once(const Action& action);
    void replace(bool hand);
    void edit(int kind, int line);
    [[nodiscard]] bool matches(const Moment& moment, const Event& event, bool early) const;
    /// Records the beginning, does it, records that it has returned.
    template <typename Deed>
    void act(Event::Kind kind, const QString& text, int value, Deed deed);
    void act(Event event, const std::function<void()>& deed);

    World& world_;
    Recorder& recorder_;
    const Scenario& scenario_;
    QVector<Planned> planned_;
    std::unique_ptr<QObject> timers_;
    int acts_ = 0;
    qint64 lastMs_ = 0;
    bool mayLoseErrors_ = false;
};

}  // namespace campaign
