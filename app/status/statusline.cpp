#include "app/status/statusline.h"

#include "app/status/statuswatcher.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/type.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>

namespace app {

namespace {

constexpr int saidMs = 5000;

}  // namespace

StatusLine::StatusLine(const StatusWatcher* watch, QWidget* parent)
    : QFrame(parent), watch_(watch), sign_(new QLabel), text_(new QLabel) {
    setObjectName(QStringLiteral("whyLine"));
    sign_->setObjectName(QStringLiteral("lblWhySign"));
    sign_->setAlignment(Qt::AlignCenter);
    text_->setObjectName(QStringLiteral("lblWhy"));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    auto* row = new QHBoxLayout(this);
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
    dressAnew();
    refresh();
}

void StatusLine::dressAnew() {
    layout()->setContentsMargins(look::px(16), 0, look::px(16), 0);
    layout()->setSpacing(look::px(10));
    sign_->setFixedWidth(look::px(18));
    shown_ = nullptr;
    showSign(watch_->state());
    fit();
}

void StatusLine::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        dressAnew();
    }
}

void StatusLine::say(const QString& text) {
    said_ = text;
    saying_.start();
    fit();
}

/// A tick, a triangle or a ring.
void StatusLine::showSign(const CellStatus& state) {
    const char* const sign = state.isWell() ? "check" : state.isWrong() ? "warn" : "ring";
    if (sign == shown_) {
        return;
    }
    shown_ = sign;
    const QRgb colour = state.isWell() ? look::green : state.isWrong() ? look::amberInk : look::ink3;
    sign_->setPixmap(look::picture(QLatin1String(sign), look::px(18), colour));
    sign_->setAccessibleName(QLatin1String(sign));
}

void StatusLine::refresh() {
    text_->setAccessibleName(watch_->sentences().join(QLatin1Char(' ')));
    fit();
}

/// One line; where it is too long two lines of smaller type; and if they are too short, without its last
/// sentences: the most important ones come first. Only a first sentence that is too long loses its end.
void StatusLine::fit() {
    // Blanks that do not break: a line does not begin with the dot.
    const QString between = QStringLiteral("\u00a0\u00a0·  ");
    const QRect room = text_->contentsRect();
    QStringList sentences = said_.isEmpty() ? watch_->sentences() : QStringList{said_};
    const QString whole = sentences.join(between);
    const QFont text = look::font(look::Size::Text), caption = look::font(look::Size::Caption);
    const bool isShort = look::textWidth(text, whole) <= room.width();
    const QFontMetrics metrics(isShort ? text : caption);
    QString shown = whole;
    const auto fits = [&] {
        const QRect needed =
            metrics.boundingRect(0, 0, room.width(), 10 * room.height(), Qt::TextWordWrap, shown);
        return needed.height() <= room.height() && needed.width() <= room.width();
    };
    while (sentences.size() > 1 && !fits()) {
        sentences.removeLast();
        shown = sentences.join(between) + between + QStringLiteral("…");
    }
    for (int end = sentences.value(0).size(); end > 0 && !fits(); --end) {
        shown = sentences.value(0).left(end).trimmed() + QStringLiteral("…");
    }
    text_->setFont(isShort ? text : caption);
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
