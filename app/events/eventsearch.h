#pragma once

#include "app/events/eventstore.h"

#include <QObject>
#include <QTimer>

#include <limits>

namespace app {

/// Looks through the log in parts, newest first, so that a long log does not hold a run up.
class EventSearch : public QObject {
    Q_OBJECT
public:
    /// `store` must outlive it.
    explicit EventSearch(EventStore* store, QObject* parent = nullptr);

    /// Begins anew; at most `most` events are found. A short log is done at once.
    void start(const EventFilter& filter, int most);
    void stop() { timer_.stop(); }
    [[nodiscard]] const QVector<Event>& found() const { return found_; }
    /// Whether there may be more than were asked for.
    [[nodiscard]] bool isCut() const { return found_.size() >= most_; }

signals:
    void done();

private:
    void look();
    void take(const QVector<Event>& events);

    EventStore* store_;
    QTimer timer_;
    EventFilter filter_;
    int most_ = 0;
    qint64 before_ = std::numeric_limits<qint64>::max();
    QVector<Event> found_;
};

}  // namespace app
