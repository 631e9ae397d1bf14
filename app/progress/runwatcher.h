#pragma once

#include "app/progress/runprogress.h"
#include "workcell/workcell.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace app {

/// Follows a run, by hand, of a station or a single step, from its beginning to its end, and tells how
/// far it has come. Nothing is timed between runs.
class RunWatcher : public QObject {
    Q_OBJECT
public:
    /// The package's page has been made.
    explicit RunWatcher(const workcell::PackageFlags& package, QObject* parent = nullptr);

    /// Of the run under way, at this moment.
    qint64 goneMs() const;
    /// Nothing while a long program is still being estimated.
    std::optional<RunProgress::View> view() const;

signals:
    void begun();
    /// A line was begun, or some time has passed.
    void advanced();
    void ended();

private:
    void onState();
    void begin();
    void estimate();
    void onLine(const QVariant& line);

    workcell::PackageFlags package_;
    bool running_ = false;
    qint64 begunMs_ = 0, lineBegunMs_ = 0;
    int startLine_ = 0, line_ = 0;
    std::unique_ptr<sim::Arm> arm_;
    std::unique_ptr<RunEstimate> estimate_;  ///< while it is being made
    std::optional<RunProgress> progress_;    ///< from then on
    QTimer tick_;
    QTimer idle_;  ///< goes on with the estimate
};

}  // namespace app
