#include "app/progress/progressview.h"

#include "app/clocktext.h"
#include "app/progress/runwatcher.h"
#include "look/scale.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

namespace app {

namespace {

constexpr int barSteps = 1000;
constexpr int barPx = 144, barHeightPx = 8;
constexpr qint64 msPerS = 1000;

}  // namespace

ProgressView::ProgressView(const RunWatcher* watcher, QWidget* parent)
    : QWidget(parent), watcher_(watcher), elapsed_(new QLabel), left_(new QLabel), bar_(new QProgressBar) {
    setObjectName(QStringLiteral("runProgress"));
    elapsed_->setObjectName(QStringLiteral("lblProgressElapsed"));
    left_->setObjectName(QStringLiteral("lblProgressLeft"));
    bar_->setObjectName(QStringLiteral("barProgress"));
    bar_->setTextVisible(false);
    bar_->setRange(0, barSteps);
    auto* row = new QHBoxLayout(this);
    row->addWidget(elapsed_);
    row->addWidget(bar_);
    row->addWidget(left_);
    fit();
    connect(watcher, &RunWatcher::begun, this, [this] {
        refresh();
        show();
    });
    connect(watcher, &RunWatcher::advanced, this, &ProgressView::refresh);
    connect(watcher, &RunWatcher::ended, this, &QWidget::hide);
    hide();
}

void ProgressView::fit() {
    layout()->setContentsMargins(look::px(8), 0, look::px(16), 0);
    layout()->setSpacing(look::px(12));
    bar_->setFixedSize(look::px(barPx), look::px(barHeightPx));
}

void ProgressView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
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
