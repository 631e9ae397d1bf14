#pragma once

#include "app/parts/partcounter.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace workcell {
class RunWatch;
}

namespace app {

struct RunResult;

/// Counts the runs that are parts, by hand and of stations, and knows whose counter is shown: that of the
/// project that was opened or run last.
class PartWatcher : public QObject {
    Q_OBJECT
public:
    /// All must outlive it. `page`: the package's page.
    PartWatcher(PartCounter* counter, const workcell::RunWatch* runs, const QWidget* page,
                QObject* parent = nullptr);

    /// A run is over.
    void add(const RunResult& result);
    /// The package's page may have opened another project.
    void lookForProject();

    [[nodiscard]] const QString& project() const { return project_; }
    [[nodiscard]] PartCount count() const { return counter_->of(project_); }
    [[nodiscard]] PartCounter* counter() const { return counter_; }

signals:
    void changed();

private:
    void onBegun();
    void setProject(const QString& project);

    PartCounter* counter_;
    const workcell::RunWatch* runs_;
    QPointer<const QWidget> page_;
    QString open_;     ///< the project on the package's page
    QString project_;  ///< whose counter is shown
    bool begins_ = true;
};

}  // namespace app
