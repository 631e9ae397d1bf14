#pragma once

#include "campaign/performer.h"

#include <QObject>
#include <QTimer>

namespace campaign {

/// Leads a schedule through its course: the planned actions; then the world gives what is still waited
/// for; then a pause and a loss of power, after which everything has to come to rest.
class Conductor : public QObject {
    Q_OBJECT
public:
    Conductor(World& world, Recorder& recorder, Performer& performer, const Scenario& scenario);

    void begin();
    /// Forgets the rest, where the application has ended.
    void stop() { tick_.stop(); }
    [[nodiscard]] bool isOver() const { return course_ == Course::Over; }
    /// What cannot go on; then nothing of this schedule can be taken down.
    void setStuckHandler(std::function<void(const QString&)> handler) { stuck_ = std::move(handler); }

private:
    enum class Course { Planned, Giving, Stopping, Over };

    void tick();
    void releaseStations();
    void give();
    void end();
    void stopAll();
    void checkWait();
    void complain(const QString& words);
    [[nodiscard]] bool isHopeless() const;
    [[nodiscard]] bool takesDays() const;
    [[nodiscard]] bool atRest() const;
    [[nodiscard]] qint64 closingMs() const;
    void enter(Course course);

    World& world_;
    Recorder& recorder_;
    Performer& performer_;
    const Scenario& scenario_;
    std::function<void(const QString&)> stuck_;
    Course course_ = Course::Planned;
    qint64 sinceMs_ = 0;
    bool answered_ = false;  ///< everything that was open at the end
    int gifts_ = 0;
    int standing_ = 0;  ///< ticks since the robot that is waited for has nothing to do
    QTimer tick_;
};

}  // namespace campaign
