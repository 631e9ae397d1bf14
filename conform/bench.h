#pragma once

#include "bridge/adapter.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QObject>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <optional>
#include <vector>

class KordService;
namespace mendo {
class ModuleObject;
}

namespace conform {

using bridge::Motion;
using bridge::Pose;
using bridge::Posture;

/// What the checks may count on; of a controller in real time there is more of each.
struct Tolerance {
    int slackMs = 5;           ///< a time that is to be met may be missed by this
    double placeMm = 0.5;      ///< at a target
    double pathMm = 1.0;       ///< beside a path
    double turnDeg = 0.5;      ///< of an orientation
    double speedRatio = 0.05;  ///< of a speed
    int quietMs = 600;         ///< so long is waited for what must not come
};

/// What a call of the robot service and the backend did, in the order in which it came.
struct Event {
    enum class Kind { Result, State, Power, Mode, Answer, Input, Output, Rejected };

    Kind kind = Kind::Result;
    QString name;    ///< of the command, the input or the output
    QVariant value;  ///< the code, the word, the value
    double ms = 0;
    int pass = 0;         ///< of the event loop
    bool inCall = false;  ///< inside a command
    Posture posture;      ///< of results: as "sys.posture" shows it then
    QString state;        ///< of results: as "kord.r.state" shows it then
};

/// Orders motions and writes as a package does, and notes all that comes back through the robot service.
class Bench : public QObject {
    Q_OBJECT
public:
    struct Sample {
        double ms = 0;
        Posture posture;
    };

    /// `adapter` must outlive it and is started by the caller afterwards.
    Bench(KordService* service, bridge::Adapter* adapter, const Tolerance& tolerance);

    bridge::Adapter* adapter() const { return adapter_; }
    const Tolerance& tolerance() const { return tolerance_; }

    // Orders. Positions in mm from the start, in the base; the orientation is that of the start, turned.
    void line(double x, double y, double z = 0, double speedMmPerS = 100, double zoneMm = 0,
              double turnZDeg = 0);
    void arc(const std::array<double, 3>& through, const std::array<double, 3>& to, double speedMmPerS = 100);
    /// The start's joints, the first turned by this.
    void joint(double turnDeg, double speedMmPerS = 100);
    void command(const char* name, const QJsonObject& arguments);
    void enough() { command("move.opr.enough", {}); }
    void stop() { command("move.stop", {}); }
    void write(const QString& name, const char* type, int bias, const QVariant& value);
    void writeTogether(const QJsonArray& records);

    // What came since forget().
    const std::vector<Event>& events() const { return events_; }
    std::vector<Event> of(Event::Kind kind) const;
    std::vector<Event> results() const { return of(Event::Kind::Result); }
    QString resultText() const;
    const std::vector<Sample>& samples() const { return samples_; }
    const QStringList& violations() const { return violations_; }
    void forget();

    double nowMs() const;
    /// Runs the event loop until the condition holds; false after `ms`.
    bool waitFor(const std::function<bool()>& condition, int ms);
    void wait(int ms);
    /// Waits for results and the standstill; false where they do not come within the time that the way needs.
    bool awaitResults(int count, int ms = 20000);
    bool awaitIdle(int ms = 5000);
    /// Whatever was before: the arm stands at the start and nothing is under way.
    bool goToStart();

    // Where things are.
    Posture posture() const;
    QString state() const;
    QString power() const;
    QString mode() const;
    /// The start turned and moved, as ordered by line().
    Pose target(double x, double y, double z = 0, double turnZDeg = 0) const;
    bool hasStart() const { return start_.has_value(); }
    const Posture& start() const { return *start_; }
    /// The first sample is the start, later ones not.
    void setStart() { start_ = posture(); }

private:
    void followCommands();
    void note(Event::Kind kind, const QString& name, const QVariant& value);
    void onPosture();

    KordService* service_;
    bridge::Adapter* adapter_;
    Tolerance tolerance_;
    QElapsedTimer clock_;
    bool isVirtual_ = false;
    std::optional<Posture> start_;
    std::vector<Event> events_;
    std::vector<Sample> samples_;
    QStringList violations_;
    int pass_ = 0;
    bool passPosted_ = false;
    int calls_ = 0;
};

/// mm between two places, and degrees between two orientations.
double distanceMm(const Pose& a, const Pose& b);
double angleDeg(const Pose& a, const Pose& b);

}  // namespace conform
