#include "app/state/stateblock.h"

#include "app/state/statesign.h"

#include <QPainter>

namespace app {

namespace {

constexpr int heightPx = 48;
constexpr int narrowPx = 272, normalPx = 328, widePx = 440;
constexpr int normalFrom = 1280, wideFrom = 1920;  // widths of the window
constexpr int signPx = 26;
constexpr int marginPx = 10;
constexpr int wordPx = 20, detailPx = 14, leastPx = 12;
const QColor focusColour(0x9c, 0xc7, 0xf2);

/// The largest size of a font, in pixels, at which the text is not wider than the room.
QFont fitted(QFont font, int px, const QString& text, int room) {
    font.setPixelSize(px);
    while (px > leastPx && QFontMetrics(font).horizontalAdvance(text) > room) {
        font.setPixelSize(--px);
    }
    return font;
}

}  // namespace

StateBlock::StateBlock(QWidget* parent) : QAbstractButton(parent) {
    setObjectName(QStringLiteral("stateBlock"));
    setFocusPolicy(Qt::TabFocus);
    setFixedSize(narrowPx, heightPx);
}

void StateBlock::setState(const PanelState& state) {
    if (state == state_) {
        return;
    }
    state_ = state;
    setText(state.word);
    setAccessibleName(state.word);
    setAccessibleDescription(state.detail);
    setToolTip(state.word + QLatin1Char('\n') + state.detail);
    update();
}

void StateBlock::fitTo(int windowWidth) {
    const int normal = windowWidth < normalFrom ? narrowPx : normalPx;
    setFixedWidth(windowWidth < wideFrom ? normal : widePx);
}

void StateBlock::paintEvent(QPaintEvent*) {
    const StateLook look = lookOf(state_.kind);
    QPainter painter(this);
    painter.fillRect(rect(), isDown() ? look.ground.darker(115) : look.ground);
    if (look.edge.isValid() || hasFocus()) {
        painter.setPen(QPen(hasFocus() ? focusColour : look.edge, 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
    paintSign(&painter, look.sign, QRectF(marginPx, (height() - signPx) / 2.0, signPx, signPx), look.ink);
    const int left = marginPx + signPx + marginPx;
    const QRect room = rect().adjusted(left, 2, -marginPx / 2, -2);
    painter.setPen(look.ink);
    QFont bold = font();
    bold.setBold(true);
    const QRect upper(room.left(), room.top(), room.width(), 25), lower(room.left(), 26, room.width(), 19);
    painter.setFont(fitted(bold, wordPx, state_.word, room.width()));
    painter.drawText(upper, Qt::AlignLeft | Qt::AlignVCenter, state_.word);
    QFont plain = fitted(font(), detailPx, state_.detail, room.width());
    painter.setFont(plain);
    painter.drawText(lower, Qt::AlignLeft | Qt::AlignVCenter,
                     QFontMetrics(plain).elidedText(state_.detail, Qt::ElideRight, room.width()));
}

}  // namespace app
