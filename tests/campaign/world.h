#pragma once

#include "campaign/invariants.h"
#include "campaign/pageworld.h"
#include "campaign/scenario.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "simulator/virtualtime.h"

#include <QJsonValue>
#include <QObject>

#include <memory>

namespace campaign {

/// The package in a process of its own on virtual time. For each schedule everything that could
/// remember an earlier one is filled or made anew: the tree, the executor, the controller, the cell.
class World : public QObject {
public:
    World();
    ~World() override;

    /// The tree as the scenario wants it; no executor and no controller yet.
    void fill(const Scenario& scenario);
    /// The executor, then the controller and its cell: whoever wants to hear before them is there.
    void makeExecutor();
    void makeCell(const Scenario& scenario);
    /// The page, where the scenario has one.
    void makePage(const Scenario& scenario);
    /// Deletes the executor, which shuts down what is under way; none is no error.
    void endExecutor();
    /// Takes everything down and tells how it was.
    Ending takeDown(int resumeLines, bool quits);

    sim::VirtualTime& time;
    PageWorld panel;
    std::unique_ptr<sim::Controller> controller;
    std::unique_ptr<sim::Cell> cell;

private:
    [[nodiscard]] QStringList outputsOn() const;
    [[nodiscard]] int armedTimers() const;
    [[nodiscard]] int objects() const;

    QJsonValue pristine_;  ///< the subtree as the package fills it
    int timersBefore_ = 0;
    int objectsBefore_ = 0;
    int helpersBefore_ = 0;
};

void closeMessages();

}  // namespace campaign
