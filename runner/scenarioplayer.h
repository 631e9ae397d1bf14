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
    /// Times count from now; entries of time 0 are applied from the event loop.
    void start();
    /// Time of the last entry, ms from the start.
    int lastMs() const { return scenario_.lastMs(); }
    /// Whether an entry operates the station page.
    bool needsStationPage() const { return scenario_.has(Action::Monitor) || scenario_.has(Action::Station); }
    /// Whether entries are left whose time will come. Those whose event has not come do not count.
    bool isPending() const { return next_ < scenario_.entries().size() || (delayed_ > 0 && !quits_); }
    /// Whether entries are left or one is being applied.
    bool isPlaying() const { return isPending() || applying_ > 0; }

signals:
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

    void makeDue(std::size_t end);
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
    std::size_t next_ = 0;  ///< entry to be applied next
    std::size_t due_ = 0;   ///< entries before this one are due
    int applying_ = 0;
    std::unique_ptr<workcell::TreeFollower> follower_;
    std::unique_ptr<workcell::safety::EventSource> events_;
    std::vector<Waiting> waiting_;
    int delayed_ = 0;  ///< entries whose event has come and whose time has not
    bool quits_ = false;
    qint64 startMs_ = -1;
};

}  // namespace run
