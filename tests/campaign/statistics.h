#pragma once

#include "campaign/schedulerun.h"
#include "campaign/stoplatency.h"

#include <QJsonObject>
#include <QMap>

namespace campaign {

/// What is in a schedule, in words: the traits that its kind goes by.
QStringList traitsOf(const Scenario& scenario);

/// Counts what schedules were made of and what became of them: of what kind they were, which actions were
/// carried out and inside which waits, what ended the waits, and how soon a stop disabled the laser.
class Statistics {
public:
    /// Counts one schedule; on() in between, inside each of its events.
    void begin(const Scenario& scenario);
    void on(const Event& event);
    void end(const Outcome& outcome);

    /// The sums, for another process to add.
    [[nodiscard]] QJsonObject toJson() const;
    void add(const QJsonObject& sums);
    [[nodiscard]] qint64 count(const QString& table, const QString& row) const;
    /// Tables of Markdown.
    [[nodiscard]] QString toMarkdown() const;

private:
    struct Wait {
        QString kind;
        qint64 sinceMs;
        qint64 dueMs;
        int actionsBefore;  ///< number of the last action before it
    };

    void onActivity();
    [[nodiscard]] QString situation(const Event& event) const;
    void countLatency();
    [[nodiscard]] QString causeOf(const Wait& wait) const;
    void countUp(const QString& table, const QString& row, qint64 by = 1);
    [[nodiscard]] QString table(const QString& title, const QString& name, const QString& heading) const;
    [[nodiscard]] QString crossTable(const QString& title, const QString& name, const QString& corner) const;

    QMap<QString, QMap<QString, qint64>> tables_;
    // Of the schedule that runs.
    QVector<Wait> waits_;
    QVector<Event> onStack_;  ///< actions that have not returned
    QVector<Event> recent_;   ///< what came in this millisecond
    StopLatency latency_;
    int actions_ = 0;
};

}  // namespace campaign
