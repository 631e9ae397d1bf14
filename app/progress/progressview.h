#pragma once

#include "app/progress/runprogress.h"

#include <QWidget>

class QLabel;
class QProgressBar;

namespace app {

class RunWatcher;

/// How long the run has gone (on the left) and will still go (on the right), over a thin bar; shown while a
/// run is on.
class ProgressView : public QWidget {
    Q_OBJECT
public:
    /// `watcher` must outlive it.
    explicit ProgressView(const RunWatcher* watcher, QWidget* parent = nullptr);

private:
    void refresh();
    static QString leftText(const RunProgress::View& view);

    const RunWatcher* watcher_;
    QLabel* gone_;
    QLabel* left_;
    QProgressBar* bar_;
};

}  // namespace app
