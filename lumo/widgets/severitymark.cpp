#include "widgets/severitymark.h"

#include "look/icon.h"
#include "look/tokens.h"

#include <QPainter>

#include <algorithm>

namespace lumo {

namespace {

struct Mark {
    QString icon;
    QRgb colour;
};

Mark markOf(prog::Severity severity) {
    return severity == prog::Severity::Error ? Mark{QStringLiteral("octagon"), look::red}
                                             : Mark{QStringLiteral("warn"), look::amberInk};
}

}  // namespace

void paintMark(QPainter* painter, const QRectF& area, prog::Severity severity) {
    const int edge = int(std::min(area.width(), area.height()));
    const Mark mark = markOf(severity);
    const QPixmap picture = look::picture(mark.icon, edge, mark.colour);
    painter->drawPixmap(QPointF(area.center() - QPointF(edge, edge) / 2).toPoint(), picture);
}

QIcon markIcon(prog::Severity severity) {
    const Mark mark = markOf(severity);
    return look::icon(mark.icon, mark.colour);
}

}  // namespace lumo
