#pragma once

#include "campaign/event.h"
#include "campaign/invariants.h"

#include <QJsonArray>
#include <QObject>
#include <QVariantMap>

#include <functional>
#include <vector>

namespace campaign {

/// Keeps the diary of a schedule: completes events with the facts and hands them to the checker.
class Recorder : public QObject {
    Q_OBJECT
public:
    explicit Recorder(Checker& checker);

    /// Returns the event as it was kept; one that says nothing new is not kept, and comes back with
    /// the number -1 as its action.
    Event record(Event event);
    /// The program that the start about to be written asks for; it is walked when that is accepted.
    void setAskedProgram(const QJsonArray& program) { asked_ = program; }

    [[nodiscard]] const std::vector<Event>& events() const { return events_; }
    /// How many events there were when the first invariant was broken; -1: none was.
    [[nodiscard]] int brokenAt() const { return brokenAt_; }
    /// Lines of the program in which the resume line was written; -1: none was.
    [[nodiscard]] int resumeLines() const { return resumeLines_; }
    [[nodiscard]] qint64 nowMs() const;
    [[nodiscard]] static Facts facts();
    /// Hears each event as it is kept.
    void setListener(std::function<void(const Event&)> listener) { listener_ = std::move(listener); }

private:
    bool isNews(Event& event);
    [[nodiscard]] int outsideZone() const;

    Checker& checker_;
    std::vector<Event> events_;
    std::function<void(const Event&)> listener_;
    QJsonArray asked_, walked_;
    int resumeLines_ = -1;
    int brokenAt_ = -1;
    qint64 startMs_;
    Facts last_;
    QVariantMap wait_;
};

int messageCount();

}  // namespace campaign
