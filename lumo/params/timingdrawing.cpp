#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"
#include "params/timingpicture.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

using namespace prog;

// How lumo::TimingPicture draws what timingpicture.cpp has laid out.

namespace lumo {

namespace {

constexpr double edgePen = 2;
constexpr double linePen = 1.5;
constexpr int widestStepMs = 20;  ///< steps that are not further apart are those of a ramp

QPen pen(QRgb colour, double width) {
    return QPen(QColor(colour), width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
}

/// 1, 2 or 5 times a power of ten.
int roundStep(double least) {
    int step = 1;
    while (true) {
        for (const int factor : {1, 2, 5}) {
            if (step * factor >= least) {
                return step * factor;
            }
        }
        step *= 10;
    }
}

void drawArrow(QPainter* painter, double from, double to, double y) {
    const double head = look::px(4);
    painter->drawLine(QPointF(from, y), QPointF(to, y));
    if (to - from < 3 * head) {
        return;
    }
    for (const double side : {-1.0, 1.0}) {
        painter->drawLine(QPointF(from, y), QPointF(from + head, y + side * head * 0.8));
        painter->drawLine(QPointF(to, y), QPointF(to - head, y + side * head * 0.8));
    }
}

}  // namespace

void TimingPicture::paintEvent(QPaintEvent* /*event*/) {
    if (picture_.isNull()) {
        picture_ = QPixmap(size() * devicePixelRatioF());
        picture_.setDevicePixelRatio(devicePixelRatioF());
        picture_.fill(QColor(look::white));
        QPainter drawing(&picture_);
        draw(&drawing);
    }
    QPainter(this).drawPixmap(0, 0, picture_);
}

void TimingPicture::draw(QPainter* painter) const {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setFont(look::font(look::Size::Caption));
    if (!params_) {
        painter->setPen(QColor(look::ink3));
        painter->drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, tr("选中一组参数，这里显示其时序。"));
        return;
    }
    drawGrid(painter);
    drawTime(painter);
    const int robot = static_cast<int>(lanes_.size()) - 1;
    for (int i = 0; i <= robot; ++i) {
        const Lane& lane = lanes_[static_cast<std::size_t>(i)];
        drawCaption(painter, lane);
        for (const Section& section : sections_) {
            if (i < robot) {
                drawBar(painter, i, section);
            }
        }
        if (!lane.value.isEmpty()) {
            drawValue(painter, lane, lane.bar > look::px(22));
        }
    }
    drawRobot(painter);
    drawCut(painter);
    for (const Dimension& dimension : dimensions_) {
        drawDimension(painter, dimension);
    }
}

void TimingPicture::drawGrid(QPainter* painter) const {
    constexpr int leastStep = 44;
    const int step = roundStep(look::px(leastStep) / std::max(scale_, 1e-6));
    painter->setPen(pen(look::frame, 1));
    const double top = lanes_.front().top;
    for (const Section& section : sections_) {
        for (int ms = 0; xOf(section, ms) <= section.right; ms += step) {
            const double x = std::floor(xOf(section, ms)) + 0.5;
            painter->drawLine(QPointF(x, top), QPointF(x, height_));
        }
    }
    painter->setPen(pen(look::rule, 1));
    for (const Lane& lane : lanes_) {
        const double y = lane.base + 0.5;
        painter->drawLine(QPointF(sections_[0].left, y), QPointF(width(), y));
    }
}

/// The times at which something begins or ends.
void TimingPicture::drawTime(QPainter* painter) const {
    painter->setPen(QColor(look::ink2));
    const QRect caption(0, 0, captionWidth_ - look::px(4), look::px(24));
    painter->drawText(caption, Qt::AlignLeft | Qt::AlignVCenter, tr("时间，ms"));
    drawMarks(painter, sections_[0], tr("开始"));
    drawMarks(painter, sections_[1], tr("结束"));
}

void TimingPicture::drawMarks(QPainter* painter, const Section& section, const QString& title) const {
    std::vector<int> times{0, section.part->ms};
    for (const TimingSpan& span : section.part->spans) {
        times.push_back(span.fromMs);
        times.push_back(span.toMs);
    }
    const QFontMetricsF metrics(painter->font());
    std::vector<Interval> taken;
    const auto isFree = [&taken](double from, double to) {
        return std::none_of(taken.begin(), taken.end(),
                            [from, to](const Interval& other) { return from < other.to && other.from < to; });
    };
    const int height = look::px(24);
    for (const int ms : times) {
        const double x = xOf(section, ms);
        const QString text = QString::number(ms);
        const double half = metrics.horizontalAdvance(text) / 2 + 3;
        if (ms > section.part->ms || !isFree(x - half, x + half) || x + half > width()) {
            continue;
        }
        taken.push_back({x - half, x + half});
        painter->drawText(QRectF(x - half, 0, 2 * half, height), Qt::AlignCenter, text);
        painter->fillRect(QRectF(x - 0.75, height, 1.5, look::px(5)), QColor(look::ink2));
    }
    std::sort(taken.begin(), taken.end(), [](const auto& a, const auto& b) { return a.from < b.from; });
    taken.push_back({section.right - look::px(12), section.right});
    const double length = metrics.horizontalAdvance(title) + look::px(16);
    Interval widest{0, 0};
    for (std::size_t i = 1; i < taken.size(); ++i) {
        if (taken[i].from - taken[i - 1].to > widest.to - widest.from) {
            widest = {taken[i - 1].to, taken[i].from};
        }
    }
    if (widest.to - widest.from >= length) {
        painter->drawText(QRectF(widest.from, 0, widest.to - widest.from, height), Qt::AlignCenter, title);
    }
}

void TimingPicture::drawCaption(QPainter* painter, const Lane& lane) const {
    const int height = look::px(34);
    const int middle = lane.base - lane.bar / 2;
    painter->setPen(QColor(look::ink2));
    painter->drawText(QRect(0, middle - height / 2, captionWidth_ - look::px(4), height),
                      Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, lane.caption);
}

/// A ramp is drawn as the line that its steps follow.
void TimingPicture::drawBar(QPainter* painter, int lane, const Section& section) const {
    const TimingLane& steps = stepsOf(lane, section);
    const bool isRamp = steps.port == AO_LASER_POWER;
    const bool isLight = isRamp || steps.port == DO_LASER_ENABLE;
    const Lane& place = lanes_[static_cast<std::size_t>(lane)];
    // The set's power is the bar's height, however low it is.
    const double full = isRamp ? std::max(params_->power, 1e-6) : 1.0;
    const auto yOf = [&place, full](double value) { return place.base - value / full * place.bar; };
    QPolygonF outline;
    outline << QPointF(section.left, yOf(steps.before)) << QPointF(section.zero, yOf(steps.before));
    double last = steps.before;
    int lastMs = 0;
    for (const auto& [ms, value] : steps.steps) {
        if (!isRamp || ms - lastMs > widestStepMs) {
            outline << QPointF(xOf(section, ms), yOf(last));
        }
        outline << QPointF(xOf(section, ms), yOf(value));
        last = value;
        lastMs = ms;
    }
    outline << QPointF(section.right, yOf(last));
    QPolygonF area = outline;
    area << QPointF(section.right, place.base) << QPointF(section.left, place.base);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(isLight ? look::laserFill : look::laneFill));
    painter->drawPolygon(area);
    painter->setPen(pen(isLight ? look::red : look::steel, edgePen));
    for (int i = 1; i < outline.size(); ++i) {
        const bool isZero = outline[i - 1].y() >= place.base && outline[i].y() >= place.base;
        if (!isZero) {
            painter->drawLine(outline[i - 1], outline[i]);
        }
    }
}

/// Inside the bar, behind the opening.
void TimingPicture::drawValue(QPainter* painter, const Lane& lane, bool isLight) const {
    const double left = xOf(sections_[0], timing_.opening.ms) + look::px(10);
    painter->setFont(look::font(look::Size::Caption, look::Weight::Strong));
    painter->setPen(QColor(isLight ? look::redDn : look::ink));
    const int height = std::min(lane.bar, look::px(22));
    painter->drawText(QRectF(left, lane.base - height, sections_[0].right - left, height),
                      Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, lane.value);
    painter->setFont(look::font(look::Size::Caption));
}

/// The robot stands while the weld opens and closes, and moves between.
void TimingPicture::drawRobot(QPainter* painter) const {
    constexpr double lineWidth = 3, dot = 3.5;
    const double y = lanes_.back().base - look::px(11);
    const double from = xOf(sections_[0], timing_.opening.goesOnMs), to = sections_[1].zero;
    painter->setPen(pen(look::ink, lineWidth));
    painter->drawLine(QPointF(from, y), QPointF(to, y));
    painter->setPen(pen(look::ink, 2));
    painter->setBrush(QColor(look::white));
    for (const double x : {from, to}) {
        painter->drawEllipse(QPointF(x, y), dot, dot);
    }
}

/// The seam between the two parts is left out.
void TimingPicture::drawCut(QPainter* painter) const {
    constexpr double half = 6, slant = 4;
    const double x = sections_[0].right, top = lanes_.front().top - look::px(8), bottom = height_;
    QPolygonF gap;
    gap << QPointF(x - half + slant, top) << QPointF(x + half + slant, top)
        << QPointF(x + half - slant, bottom) << QPointF(x - half - slant, bottom);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(look::white));
    painter->drawPolygon(gap);
    painter->setPen(pen(look::ink2, linePen));
    painter->drawLine(gap[0], gap[3]);
    painter->drawLine(gap[1], gap[2]);
}

void TimingPicture::drawDimension(QPainter* painter, const Dimension& dimension) const {
    const bool isMarked = dimension.field == marked_;
    painter->setFont(look::font(look::Size::Caption, look::Weight::Strong));
    painter->setPen(pen(isMarked ? look::blue : look::ink2, isMarked ? 2 : linePen));
    if (dimension.hasLine) {
        drawArrow(painter, dimension.from, dimension.to, lineY(dimension));
    } else if (dimension.from < dimension.to - 2 * edgePen) {
        const Lane& lane = lanes_[static_cast<std::size_t>(dimension.lane)];
        painter->setPen(QPen(QColor(isMarked ? look::blue : look::steel), 2, Qt::DotLine, Qt::FlatCap));
        painter->drawLine(QPointF(dimension.from, lane.base - lane.bar), QPointF(dimension.from, lane.base));
    }
    painter->setPen(QColor(isMarked ? look::blue : look::ink));
    painter->drawText(textPlace(dimension), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                      dimension.text);
}

}  // namespace lumo
