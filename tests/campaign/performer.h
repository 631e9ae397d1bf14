#pragma once

#include "campaign/hand.h"
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

    /// A trigger is written: records it, unless this wrote it. The number of the action, 0 for its own.
    int beginForeign(Event::Kind kind, const QVariant& value, const QObject* sender);
    void endForeign(int action);
    /// Another program is in the place of the hand program.
    void noteReplacement();
    /// Answers every dialog that is left.
    void replyToAll();

    /// When the application was asked to quit; -1: it was not.
    [[nodiscard]] qint64 quitMs() const { return quitMs_; }

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
    void carryOutAtPage(const Action& action);
    void checkTable();
    void start(const Action& action);
    void once(const Action& action);
    /// What a start or step asks for, as things stand.
    [[nodiscard]] Event asked(Event::Kind kind, int line, int mode, bool withSender);
    void replace(bool hand);
    void edit(int kind, int line);
    [[nodiscard]] bool matches(const Moment& moment, const Event& event, bool early) const;
    /// Records the beginning, does it, records that it has returned.
    template <typename Deed>
    void act(Event::Kind kind, const QString& text, int value, Deed deed);
    void act(Event event, const std::function<void()>& deed);
    void writeTrigger(QLatin1String path, const QVariant& value, QObject* sender);

    World& world_;
    Recorder& recorder_;
    Hand hand_;
    const Scenario& scenario_;
    QVector<Planned> planned_;
    std::unique_ptr<QObject> timers_;
    int acts_ = 0;
    bool ownTrigger_ = false;  ///< the next trigger that is heard of was written here
    qint64 lastMs_ = 0;
    bool mayLoseErrors_ = false;
    qint64 quitMs_ = -1;
};

}  // namespace campaign
