#include "app/roles/rolebutton.h"

#include "app/roles/rolekeeper.h"
#include "look/icon.h"
#include "look/scale.h"

#include <QPainter>

namespace app {

namespace {

constexpr int widthPx = 48, heightPx = 48, lockPx = 22;

}  // namespace

RoleButton::RoleButton(const RoleKeeper* keeper, QWidget* parent) : QAbstractButton(parent), keeper_(keeper) {
    setObjectName(QStringLiteral("btnRole"));
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(keeper, &RoleKeeper::changed, this, &RoleButton::refresh);
    refresh();
}

QSize RoleButton::sizeHint() const {
    return {look::px(widthPx), look::px(heightPx)};
}

void RoleButton::refresh() {
    setAccessibleName(keeper_->isIntegrator() ? tr("调试员") : tr("操作员"));
    setVisible(keeper_->hasCode());
    update();
}

/// A line below it shows the integrator's session.
void RoleButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int line = look::px(hasFocus() ? 2 : 0);
    if (isDown() || keeper_->isIntegrator() || hasFocus()) {
        painter.setPen(line > 0 ? QPen(QColor(look::sky), line) : QPen(Qt::NoPen));
        painter.setBrush(QColor(look::navy2));
        const double inset = line / 2.0;
        painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), look::px(6),
                                look::px(6));
    }
    if (keeper_->isIntegrator()) {
        painter.fillRect(QRect(0, height() - look::px(3), width(), look::px(3)), QColor(look::sky));
    }
    const int side = look::px(lockPx);
    painter.drawPixmap((width() - side) / 2, (height() - side) / 2,
                       look::picture(keeper_->isOpen() ? QStringLiteral("unlock") : QStringLiteral("lock"),
                                     side, look::white));
}

}  // namespace app
