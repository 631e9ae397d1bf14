#include "app/roles/rolebutton.h"

#include "app/roles/padlock.h"
#include "app/roles/rolekeeper.h"

#include <QPainter>

namespace app {

namespace {

constexpr int widthPx = 52, heightPx = 48, lockPx = 24;
constexpr int linePx = 3;
const QColor white(0xff, 0xff, 0xff), fog(0xb9, 0xc8, 0xd8), raised(0x3b, 0x50, 0x70);
const QColor sky(0x9c, 0xc7, 0xf2);

}  // namespace

RoleButton::RoleButton(const RoleKeeper* keeper, QWidget* parent) : QAbstractButton(parent), keeper_(keeper) {
    setObjectName(QStringLiteral("btnRole"));
    setFocusPolicy(Qt::TabFocus);
    setFixedSize(widthPx, heightPx);
    connect(keeper, &RoleKeeper::changed, this, &RoleButton::refresh);
    refresh();
}

QSize RoleButton::sizeHint() const {
    return {widthPx, heightPx};
}

void RoleButton::refresh() {
    QString text = tr("未设密码：全部开放");
    if (keeper_->hasCode()) {
        text = keeper_->isIntegrator() ? tr("调试员") : tr("操作员");
    }
    setAccessibleName(text);
    setToolTip(text);
    update();
}

/// A line below it shows the integrator's session.
void RoleButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (isDown() || keeper_->isIntegrator()) {
        painter.fillRect(rect(), raised);
    }
    if (keeper_->isIntegrator()) {
        painter.fillRect(QRect(0, height() - linePx, width(), linePx), sky);
    }
    if (hasFocus()) {
        painter.setPen(QPen(sky, 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
    const QRectF square((width() - lockPx) / 2.0, (height() - lockPx) / 2.0, lockPx, lockPx);
    paintPadlock(&painter, square, keeper_->hasCode() ? white : fog, keeper_->isOpen());
}

}  // namespace app
