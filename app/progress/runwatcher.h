#pragma once

#include "app/progress/runestimate.h"
#include "workcell/workcell.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace app {

/// Follows each run (by hand, of a station or a single step) from its beginning to its end and tells how far
/// it has come. No timer runs between runs.
class RunWatcher : public QObject {
    Q_OBJECT
public:
    /// To be made after the package's page.
    explicit RunWatcher(const workcell::PackageFlags& package, QObject* parent = nullptr);

    /// Since the run under way began.
    qint64 elapsedMs() const;
    /// Empty while a long program is still being estimated.
    std::optional<RunProgress::View> view() const;

signals:
    void begun();
    /// A line began, or some time has passed.
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
    std::unique_ptr<RunEstimate> estimate_;  ///< until it is complete
    std::optional<RunProgress> progress_;    ///< after that
    QTimer tick_;
    QTimer idle_;  ///< continues the estimate
};

}  // namespace app
