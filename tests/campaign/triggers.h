#pragma once

#include "campaign/event.h"
#include "module/host.h"

#include <QObject>
#include <QPointer>
#include <QVector>

namespace campaign {

class Performer;

/// Hears of starts, steps and pauses that the page or a station asks for, and of another program in the
/// place of the hand program, before the executor does; and when the executor has returned.
class Triggers : public QObject {
    Q_OBJECT
public:
    /// Before the executor is made.
    explicit Triggers(Performer& performer);
    /// After everybody else.
    void listenLast();

private:
    void listen(const QString& path, Event::Kind kind);
    void onProgram();

    Performer& performer_;
    QPointer<ModuleObject> firstLine_;
    QVector<int> asked_;  ///< actions that have not returned; 0: one of the performer's own
};

}  // namespace campaign
