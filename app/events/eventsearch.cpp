#include "app/events/eventsearch.h"

#include <algorithm>

namespace app {

namespace {

constexpr int atOnce = 250;  // takes about 2 ms

}  // namespace

EventSearch::EventSearch(EventStore* store, QObject* parent) : QObject(parent), store_(store) {
    connect(&timer_, &QTimer::timeout, this, &EventSearch::look);
}

/// What is not yet written is the newest.
void EventSearch::start(const EventFilter& filter, int most) {
    filter_ = filter;
    most_ = most;
    found_.clear();
    before_ = std::numeric_limits<qint64>::max();
    QVector<Event> waiting = store_->waiting();
    std::reverse(waiting.begin(), waiting.end());
    take(waiting);
    timer_.start(1);
    look();  // before what waits can be written, and found twice
}

void EventSearch::take(const QVector<Event>& events) {
    for (const Event& event : events) {
        if (found_.size() < most_ && filter_.matches(event)) {
            found_.append(event);
        }
    }
}

void EventSearch::look() {
    const QVector<Event> part = store_->before(before_, filter_, atOnce);
    take(part);
    if (part.size() < atOnce || isCut()) {
        timer_.stop();
        emit done();
        return;
    }
    before_ = part.last().id;
}

}  // namespace app
