#include "app/state/stateblock.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/type.h"

#include <QPainter>

namespace app {

namespace {

constexpr int signPx = 28, marginPx = 12, wordLinePx = 24, detailLinePx = 17;
constexpr int radiusPx = 6;

/// The word in the largest of two sizes that fits.
QFont fontOf(const QString& word, int room) {
    const QFont title = look::font(look::Size::Title, look::Weight::State);
    return QFontMetrics(title).horizontalAdvance(word) <= room
               ? title
               : look::font(look::Size::Text, look::Weight::State);
}

}  // namespace

StateBlock::StateBlock(QWidget* parent) : QAbstractButton(parent) {
    setObjectName(QStringLiteral("stateBlock"));
    setFocusPolicy(Qt::TabFocus);
}

void StateBlock::setState(const PanelState& state) {
    if (state == state_) {
        return;
    }
    state_ = state;
    setText(state.word);
    setAccessibleName(state.word);
    setAccessibleDescription(state.detail);
    update();
}

void StateBlock::paintEvent(QPaintEvent*) {
    const StateLook shown = lookOf(state_.kind);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool edged = shown.edge != 0 || hasFocus();
    const int line = edged ? look::px(2) : 0;
    painter.setPen(edged ? QPen(QColor(hasFocus() ? look::sky : shown.edge), line) : QPen(Qt::NoPen));
    painter.setBrush(isDown() ? QColor(shown.ground).darker(115) : QColor(shown.ground));
    const double inset = line / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), look::px(radiusPx),
                            look::px(radiusPx));
    const int sign = look::px(signPx), margin = look::px(marginPx);
    painter.drawPixmap(margin, (height() - sign) / 2,
                       look::picture(QLatin1String(shown.sign), sign, shown.signInk));
    const int left = margin + sign + margin, room = width() - left - margin / 2;
    const int wordLine = look::px(wordLinePx), detailLine = look::px(detailLinePx);
    const int top = (height() - wordLine - detailLine) / 2 - 1;
    painter.setFont(fontOf(state_.word, room));
    painter.setPen(QColor(shown.ink));
    painter.drawText(QRect(left, top, room, wordLine), Qt::AlignLeft | Qt::AlignVCenter, state_.word);
    painter.setFont(look::font(look::Size::Caption));
    painter.setPen(QColor(shown.detailInk));
    const QFontMetrics metrics = painter.fontMetrics();
    const bool isWhole = metrics.horizontalAdvance(state_.detail) <= room;
    painter.drawText(QRect(left, top + wordLine, room, detailLine), Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(isWhole ? state_.detail : state_.shortDetail, Qt::ElideRight, room));
}

}  // namespace app
