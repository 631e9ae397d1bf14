#include "app/results/seamlanes.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

// px at factor 1.
constexpr int names = 128, marks = 40, laneHeight = 64, between = 24, head = 28, foot = 28;

/// A round step, 1, 2 or 5 times a power of ten, that gives at most `most` of them.
double stepFor(double length, double most) {
    const double least = std::max(length / most, 1e-3);
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= least) {
            return factor * power;
        }
    }
    return 10 * power;
}

QString plain(double value) {
    return QString::number(value, 'g', 5);
}

QString limitsText(const workcell::Allowed& allowed) {
    if (allowed.min && allowed.max) {
        return SeamLanes::tr("限值 %1 至 %2").arg(plain(*allowed.min), plain(*allowed.max));
    }
    return allowed.min ? SeamLanes::tr("限值，最小 %1").arg(plain(*allowed.min))
                       : SeamLanes::tr("限值，最大 %1").arg(plain(*allowed.max));
}

}  // namespace

QVector<SeamPart> partsOf(int seam, const RunResult& result) {
    const workcell::SeamRecord& record = result.record.seams[std::size_t(seam)];
    QVector<SeamPart> parts;
    double end = 0;
    for (const PathMove& move : result.moves) {
        const int line = move.line + 1;
        if (move.weld && line > record.openLine && line < record.closeLine.value_or(line + 1)) {
            end += move.length() * prog::mmPerM;
            parts.append({line, end});
        }
    }
    return parts;
}

double laneTop(double most) {
    const double half = std::max(most, 1e-3) / 2;
    const double power = std::pow(10, std::floor(std::log10(half)));
    for (const double factor : {1.0, 2.0, 4.0, 5.0, 8.0}) {
        if (factor * power >= half) {
            return 2 * factor * power;
        }
    }
    return 20 * power;
}

SeamLanes::SeamLanes(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("seamLanes"));
}

QSize SeamLanes::sizeHint() const {
    return QSize(look::px(672), look::px(head + 2 * laneHeight + between + foot));
}

QSize SeamLanes::minimumSizeHint() const {
    return QSize(look::px(320), sizeHint().height());
}

void SeamLanes::clear() {
    profile_.clear();
    lanes_.clear();
    update();
}

void SeamLanes::show(int seam, const RunResult& result) {
    const workcell::SeamRecord& record = result.record.seams[std::size_t(seam)];
    profile_ = result.profiles.value(seam);
    parts_ = partsOf(seam, result);
    lengthMm_ = std::max({record.programmedMm, record.weldedMm, 1.0});
    double fastest = record.meanSpeedMmPerS.value_or(0);
    for (const ProfileSample& sample : profile_) {
        fastest = std::max(fastest, sample.speedMmPerS);
    }
    std::optional<workcell::Allowed> allowed;
    if (result.limits) {
        allowed = result.limits->allowed(QStringLiteral("mean_speed_mm_s"), record.set);
        fastest = std::max(fastest, allowed ? allowed->max.value_or(0) : 0);
    }
    lanes_ = {{tr("速度"), tr("mm/s"), look::blue, laneTop(fastest), &ProfileSample::speedMmPerS, allowed},
              {tr("激光功率"), QStringLiteral("%"), look::red, 100, &ProfileSample::powerPct, {}}};
    update();
}

double SeamLanes::x(const QRectF& place, double mm) const {
    return place.left() + std::clamp(mm / lengthMm_, 0.0, 1.0) * place.width();
}

void SeamLanes::paintEvent(QPaintEvent*) {
    if (lanes_.isEmpty()) {
        return;
    }
    QPainter painter(this);
    const double left = look::px(names), top = look::px(head);
    const double lane =
        std::max<double>(look::px(laneHeight), (height() - look::px(head + foot + between)) / 2.0);
    const double bottom = top + 2 * lane + look::px(between);
    const QRectF area(left, top, width() - left - look::px(16), bottom - top);
    painter.setFont(look::font(look::Size::Caption));
    paintParts(&painter, area);
    paintLengths(&painter, area);
    QRectF place(area.topLeft(), QSizeF(area.width(), lane));
    for (const Lane& each : lanes_) {
        paintLane(&painter, place, each);
        place.translate(0, lane + look::px(between));
    }
    if (profile_.empty()) {
        painter.setPen(QColor(look::ink3));
        painter.drawText(area, Qt::AlignCenter, tr("这次运行没有记录沿焊缝的数值"));
    }
}

/// The lines of the program above, with a dashed line where one ends.
void SeamLanes::paintParts(QPainter* painter, const QRectF& place) const {
    double from = 0;
    for (int i = 0; i < parts_.size(); ++i) {
        const double begin = x(place, from), end = x(place, parts_[i].endMm);
        const QRectF box(begin, 0, end - begin, look::px(head) - 4);
        const QString number = QString::number(parts_[i].line);
        const QString named = tr("第 %1 行").arg(number);
        const auto fits = [&](const QString& text) {
            return painter->fontMetrics().horizontalAdvance(text) <= box.width() - 4;
        };
        painter->setPen(QColor(look::ink3));
        if (fits(named) || fits(number)) {
            painter->drawText(box, Qt::AlignCenter, i == 0 && fits(named) ? named : number);
        }
        if (i + 1 < parts_.size()) {
            QPen pen(QColor(look::line), 1);
            pen.setDashPattern({3, 3});
            painter->setPen(pen);
            painter->drawLine(QPointF(end, place.top() - 4),
                              place.bottomLeft() + QPointF(end - place.left(), 0));
        }
        from = parts_[i].endMm;
    }
}

void SeamLanes::paintLengths(QPainter* painter, const QRectF& place) const {
    const double least = look::px(64);
    const double step = stepFor(lengthMm_, std::max(1.0, place.width() / least));
    painter->setPen(QColor(look::ink3));
    for (int i = 0; i * step <= lengthMm_ * (1 + 1e-6); ++i) {
        const bool isLast = (i + 1) * step > lengthMm_ * (1 + 1e-6);
        const QString text = isLast ? tr("%1 mm").arg(plain(i * step)) : plain(i * step);
        const double at = x(place, i * step);
        const double half = painter->fontMetrics().horizontalAdvance(text) / 2.0 + 2;
        const double middle = std::min(at, width() - half);
        painter->drawText(QRectF(middle - half, place.bottom() + 4, 2 * half, look::px(20)), Qt::AlignCenter,
                          text);
    }
}

void SeamLanes::paintLimits(QPainter* painter, const QRectF& place, const Lane& lane) const {
    const double low = lane.allowed->min.value_or(0), high = lane.allowed->max.value_or(lane.top);
    const double above = place.bottom() - std::clamp(high / lane.top, 0.0, 1.0) * place.height();
    const double below = place.bottom() - std::clamp(low / lane.top, 0.0, 1.0) * place.height();
    painter->fillRect(QRectF(place.left(), above, place.width(), below - above), QColor(look::frame));
}

/// Below the band, else above it.
void SeamLanes::nameLimits(QPainter* painter, const QRectF& place, const Lane& lane) const {
    const double low = lane.allowed->min.value_or(0), high = lane.allowed->max.value_or(lane.top);
    const double above = place.bottom() - std::clamp(high / lane.top, 0.0, 1.0) * place.height();
    const double below = place.bottom() - std::clamp(low / lane.top, 0.0, 1.0) * place.height();
    const double height = look::px(18), left = look::px(24);
    const bool isRoomBelow = place.bottom() - below >= height + 2;
    const QString text = limitsText(*lane.allowed);
    const QRectF box(place.left() + left, isRoomBelow ? below + 2 : above - height - 2,
                     painter->fontMetrics().horizontalAdvance(text) + 8, height);
    painter->fillRect(box, QColor(look::white));
    painter->setPen(QColor(look::ink3));
    painter->drawText(box, Qt::AlignCenter, text);
}

void SeamLanes::paintLane(QPainter* painter, const QRectF& place, const Lane& lane) const {
    const double line = look::px(20), half = line / 2;
    if (lane.allowed) {
        paintLimits(painter, place, lane);
    }
    for (const double share : {0.0, 0.5, 1.0}) {
        const double y = std::round(place.bottom() - share * place.height()) + 0.5;
        painter->setPen(QPen(QColor(look::rule), 1));
        painter->drawLine(QPointF(place.left(), y), QPointF(place.right(), y));
        painter->setPen(QColor(look::ink3));
        painter->drawText(QRectF(place.left() - look::px(marks) - 8, y - half, look::px(marks), line),
                          Qt::AlignRight | Qt::AlignVCenter, plain(lane.top * share));
    }
    const QRectF caption(0, place.center().y() - line, look::px(names - marks) - 4, line);
    painter->setPen(QColor(look::ink3));
    painter->drawText(caption.translated(0, line), Qt::AlignLeft | Qt::AlignVCenter, lane.unit);
    painter->save();
    painter->setFont(look::font(look::Size::Caption, look::Weight::Strong));
    painter->setPen(QColor(look::ink));
    painter->drawText(caption, Qt::AlignLeft | Qt::AlignVCenter, lane.name);
    QPolygonF curve;
    for (const ProfileSample& sample : profile_) {
        const double share = std::clamp(sample.*lane.value / lane.top, 0.0, 1.0);
        curve << QPointF(x(place, sample.mm), place.bottom() - share * place.height());
    }
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(QColor(lane.colour), 2.2, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter->drawPolyline(curve);
    painter->restore();
    if (lane.allowed) {
        nameLimits(painter, place, lane);
    }
}

}  // namespace app
