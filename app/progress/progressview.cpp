#include "app/progress/progressview.h"

#include "app/clocktext.h"
#include "app/progress/runwatcher.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

namespace app {

namespace {

constexpr int barSteps = 1000;
constexpr int widthPx = 270;
constexpr qint64 msPerS = 1000;

}  // namespace

ProgressView::ProgressView(const RunWatcher* watcher, QWidget* parent)
    : QWidget(parent), watcher_(watcher), elapsed_(new QLabel), left_(new QLabel), bar_(new QProgressBar) {
    setObjectName(QStringLiteral("runProgress"));
    setFixedWidth(widthPx);
    elapsed_->setObjectName(QStringLiteral("lblProgressElapsed"));
    left_->setObjectName(QStringLiteral("lblProgressLeft"));
    bar_->setObjectName(QStringLiteral("barProgress"));
    bar_->setTextVisible(false);
    bar_->setRange(0, barSteps);
    bar_->setFixedHeight(8);
    auto* row = new QHBoxLayout;
    row->addWidget(elapsed_);
    row->addStretch(1);
    row->addWidget(left_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 8, 6);
    column->setSpacing(2);
    column->addLayout(row, 1);
    column->addWidget(bar_);
    connect(watcher, &RunWatcher::begun, this, [this] {
        refresh();
        show();
    });
    connect(watcher, &RunWatcher::advanced, this, &ProgressView::refresh);
    connect(watcher, &RunWatcher::ended, this, &QWidget::hide);
    hide();
}

void ProgressView::refresh() {
    elapsed_->setText(clockText(watcher_->elapsedMs()));
    const std::optional<RunProgress::View> view = watcher_->view();
    left_->setText(view ? leftText(*view) : QStringLiteral("…"));
    bar_->setValue(view ? int(view->fraction * barSteps) : 0);
}

QString ProgressView::leftText(const RunProgress::View& view) {
    // Rounded up: 0:00 is shown only at the end.
    const QString left = clockText(view.leftMs + msPerS - 1);
    if (view.waits) {
        return tr("等待输入，之后 %1").arg(left);
    }
    return view.willWait ? tr("剩余 %1 + 等待输入").arg(left) : tr("剩余 %1").arg(left);
}

}  // namespace app
