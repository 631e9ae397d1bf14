#pragma once

#include "runner/scenario.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace workcell {
class TreeFollower;
}

namespace workcell::safety {
class EventSource;
struct Event;
}  // namespace workcell::safety

namespace run {

class TreeOperator;
class PageOperator;

/// Applies the entries of a scenario at their times.
class ScenarioPlayer : public QObject {
    Q_OBJECT
public:
    /// `projectFolder`: the folder of the files of "load". All pointers must outlive it.
    ScenarioPlayer(const Scenario& scenario, TreeOperator* tree, PageOperator* pages,
                   sim::Controller* controller, sim::Cell* cell, const QString& projectFolder,
                   QObject* parent = nullptr);
    ~ScenarioPlayer() override;

    /// Listens to the events that entries wait for, if there are such entries. Call it when the package has
    /// connected to everything, so that an event is announced when the package has reacted.
    void follow(QObject* executor);
    /// Everything has come to rest: the next entry that waits for that ("end") is due. False when there is
    /// none.
    bool playEnd();
    /// Plays the scenario `rounds` times, a round every `everyMs`, which is not less than that of its last
    /// entry. Times count from the beginning of a round, those of the first from now; entries of time 0 are
    /// applied from the event loop.
    void start(qint64 rounds, qint64 everyMs);
    /// From the beginning of a round until a second after its last entry.
    qint64 calmMs() const;
    /// Whether an entry operates the station page.
    bool needsStationPage() const { return scenario_.has(Action::Monitor) || scenario_.has(Action::Station); }
    /// Whether an entry works with the pages, or asks which one is in front.
    bool operatesPages() const;
    /// Whether entries are left whose time will come. Those whose event has not come do not count.
    bool isPending() const { return next_ < count_ || (delayed_ > 0 && !quits_); }
    /// Whether entries are left or one is being applied.
    bool isPlaying() const { return isPending() || applying_ > 0; }

signals:
    /// The times of a round's entries count from now.
    void roundBegun();
    /// An entry is about to be applied, or refused; `text` is the entry as JSON.
    void applying(const QByteArray& text, bool refused);
    /// The same for an entry that is applied.
    void acting(const run::ScenarioEntry& entry);
    /// It has returned.
    void acted();
    /// A node is about to be written.
    void writing(const QString& path);
    void applied();
    /// The application is to quit. No entry is left.
    void quitting();

private:
    /// An entry that waits for an event.
    struct Waiting {
        const ScenarioEntry* entry;
        int left;  ///< matching events still to come before it
        bool isTold = false;
    };

    void beginRound();
    void makeDue(qint64 end);
    const ScenarioEntry& entryAt(qint64 number) const;
    void drain();
    void play(const ScenarioEntry& entry);
    void onEvent(const workcell::safety::Event& event);
    void cue(Waiting* waiting);
    bool cueFirst(const QString& kind, int number);
    void apply(const ScenarioEntry& entry);
    void applyToHand(const ScenarioEntry& entry);
    void applyToProgram(const ScenarioEntry& entry);
    void applyToPages(const ScenarioEntry& entry);
    void refuse(const ScenarioEntry& entry, const QString& reason);
    QString refusalOf(const ScenarioEntry& entry) const;
    QString pathOf(const ScenarioEntry& entry) const;
    void load(const QString& path);
    void quit();

    Scenario scenario_;
    TreeOperator* tree_;
    PageOperator* pages_;
    sim::Controller* controller_;
    sim::Cell* cell_;
    QString projectFolder_;
    qint64 everyMs_ = 0;
    // Entries are numbered through all rounds.
    qint64 count_ = 0;
    qint64 begun_ = 0;  ///< entries before this one are of rounds that have begun
    qint64 next_ = 0;   ///< entry to be applied next
    qint64 due_ = 0;    ///< entries before this one are due
    int applying_ = 0;
    std::unique_ptr<workcell::TreeFollower> follower_;
    std::unique_ptr<workcell::safety::EventSource> events_;
    std::vector<Waiting> waiting_;
    int delayed_ = 0;  ///< entries whose event has come and whose time has not
    bool quits_ = false;
    qint64 startMs_ = -1;
};

}  // namespace run
