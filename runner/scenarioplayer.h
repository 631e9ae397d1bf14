#pragma once

#include "runner/scenario.h"

#include <QObject>
#include <QString>

namespace sim {
class Cell;
class Controller;
}  // namespace sim

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

    /// Times count from now; entries of time 0 are applied from the event loop.
    void start();
    /// Time of the last entry, ms from the start.
    int lastMs() const { return scenario_.lastMs(); }
    /// Whether an entry operates the station page.
    bool needsStationPage() const { return scenario_.has(Action::Monitor) || scenario_.has(Action::Station); }
    /// Whether entries are left.
    bool isPending() const { return next_ < scenario_.entries().size(); }
    /// Whether entries are left or one is being applied.
    bool isPlaying() const { return isPending() || applying_ > 0; }

signals:
    /// An entry is about to be applied, or refused; `text` is the entry as JSON.
    void applying(const QByteArray& text, bool refused);
    /// A node is about to be written.
    void writing(const QString& path);
    void applied();
    /// The application is to quit. No entry is left.
    void quitting();

private:
    void makeDue(std::size_t end);
    void drain();
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
};

}  // namespace run
