#include "app/status/statusline.h"

#include "app/status/statuswatcher.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QStyle>
#include <QVariant>

namespace app {

namespace {

constexpr int saidMs = 5000;

}  // namespace

StatusLine::StatusLine(const StatusWatcher* watch, QWidget* parent)
    : QFrame(parent), watch_(watch), sign_(new QLabel), text_(new QLabel) {
    setObjectName(QStringLiteral("whyLine"));
    sign_->setObjectName(QStringLiteral("lblWhySign"));
    sign_->setFixedWidth(24);
    sign_->setAlignment(Qt::AlignCenter);
    text_->setObjectName(QStringLiteral("lblWhy"));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 2, 6, 2);
    row->setSpacing(6);
    row->addWidget(sign_);
    row->addWidget(text_, 1);
    saying_.setSingleShot(true);
    saying_.setInterval(saidMs);
    connect(&saying_, &QTimer::timeout, this, [this] {
        said_.clear();
        fit();
    });
    connect(watch, &StatusWatcher::refreshed, this, &StatusLine::showSign);
    connect(watch, &StatusWatcher::changed, this, &StatusLine::refresh);
    showSign(watch->state());
    refresh();
}

void StatusLine::say(const QString& text) {
    said_ = text;
    saying_.start();
    fit();
}

void StatusLine::showSign(const CellStatus& state) {
    QString sign = state.isWell() ? QStringLiteral("✓") : QStringLiteral("○");
    if (state.isWrong()) {
        sign = QStringLiteral("⚠");
    }
    if (sign_->text() != sign) {
        sign_->setText(sign);
        sign_->setProperty("warning", state.isWrong());
        sign_->setProperty("quiet", !state.isWell() && !state.isWrong());
        sign_->style()->unpolish(sign_);
        sign_->style()->polish(sign_);
    }
}

void StatusLine::refresh() {
    setToolTip(watch_->sentences().join(QLatin1Char('\n')));
    text_->setAccessibleName(watch_->sentences().join(QLatin1Char(' ')));
    fit();
}

/// Cuts the end off: the most important sentences come first.
void StatusLine::fit() {
    const QRect room = text_->contentsRect();
    const QString whole = said_.isEmpty() ? watch_->sentences().join(QStringLiteral("  ·  ")) : said_;
    QString shown = whole;
    const auto fits = [&] {
        const QRect needed = text_->fontMetrics().boundingRect(0, 0, room.width(), 10 * room.height(),
                                                               Qt::TextWordWrap, shown);
        return needed.height() <= room.height() && needed.width() <= room.width();
    };
    for (int end = whole.size(); end > 0 && !fits(); --end) {
        shown = whole.left(end).trimmed() + QStringLiteral("…");
    }
    text_->setText(shown);
}

void StatusLine::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    layout()->activate();
    fit();
}

void StatusLine::mouseReleaseEvent(QMouseEvent* event) {
    QFrame::mouseReleaseEvent(event);
    if (rect().contains(event->pos())) {
        emit tapped();
    }
}

}  // namespace app
