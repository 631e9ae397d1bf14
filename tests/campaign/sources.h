#pragma once

#include "campaign/event.h"

#include <QHash>
#include <QObject>

class LumoExecutor;
struct KordCall;
namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace campaign {

/// Turns what the tree, the robot service and the cell announce into events (without the facts).
/// Listeners are called in the order in which they connected, so who wants to hear of a write before
/// the executor or the controller does makes its sources before them.
class Sources : public QObject {
    Q_OBJECT
public:
    /// Listens to the tree and the robot service; the tree must be filled.
    Sources();
    /// Its calls of the robot service, and the changes of its activity.
    void follow(LumoExecutor* executor);
    /// Its calls of the robot service.
    void hearOnly(LumoExecutor* executor) { executor_ = executor; }
    void follow(sim::Controller* controller, sim::Cell* cell);

signals:
    void heard(const campaign::Event& event);

private:
    void onIssued(const KordCall& call);
    void onRegister(const QString& name, int bias, int value, bool foreign);
    void readPorts();
    void listen(const QString& path, Event::Kind kind, bool executorOnly);

    QHash<QString, int> ports_;  ///< by "LUMO_DO.#3"
    LumoExecutor* executor_ = nullptr;
};

}  // namespace campaign
