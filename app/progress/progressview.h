#pragma once

#include "app/progress/runestimate.h"

#include <QWidget>

class QLabel;
class QProgressBar;

namespace app {

class RunWatcher;

/// The time since the run began, a thin bar, and the time that it will still take. Hidden while nothing runs.
class ProgressView : public QWidget {
    Q_OBJECT
public:
    /// `watcher` must outlive it.
    explicit ProgressView(const RunWatcher* watcher, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void fit();
    void refresh();
    static QString leftText(const RunProgress::View& view);

    const RunWatcher* watcher_;
    QLabel* elapsed_;
    QLabel* left_;
    QProgressBar* bar_;
};

}  // namespace app
