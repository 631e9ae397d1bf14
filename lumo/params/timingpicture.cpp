#include "params/timingpicture.h"

#include "module/host.h"
#include "program/statement.h"
#include "program/words.h"
#include "widgets/fieldanswer.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>
#include <QRegularExpression>

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

constexpr int cutWidth = 26;
constexpr int headerHeight = 20;
constexpr int rowHeight = 20;
constexpr int textHeight = 15;
constexpr int barHeight = 14;
constexpr int powerHeight = 30;
constexpr int laneGap = 4;
constexpr double padShare = 0.05;  ///< of all time, before and behind each part
constexpr int textPx = 12;

constexpr QRgb ink = qRgb(0x17, 0x27, 0x3A);
constexpr QRgb faintInk = qRgb(0x55, 0x66, 0x7A);
constexpr QRgb rule = qRgb(0xD6, 0xDE, 0xE6);
constexpr QRgb steel = qRgb(0x4A, 0x5E, 0x75);
constexpr QRgb steelTint = qRgb(0xCB, 0xD6, 0xE1);
constexpr QRgb red = qRgb(0xC5, 0x22, 0x1B);
constexpr QRgb redTint = qRgb(0xF6, 0xCF, 0xCB);

bool isLight(I_PORT port) {
    return port == DO_LASER_ENABLE || port == AO_LASER_POWER;
}

int barHeightOf(I_PORT port) {
    return port == AO_LASER_POWER ? powerHeight : barHeight;
}

/// What the values' page calls the time, without its unit, and how long it is.
QString spanText(const TimingSpan& span) {
    static const QRegularExpression unit(QStringLiteral("(\\s*\\(.*\\)|,[^,]*)$"));
    const QList<ModuleObject*> definitions = m(key::defaultParam)->cmobjs();
    const auto found =
        std::find_if(definitions.begin(), definitions.end(), [&span](const ModuleObject* definition) {
            return definition->c(field::name)->getString() == span.field;
        });
    QString name = found == definitions.end() ? QString(span.field) : (*found)->c(field::tag)->getString();
    return name.remove(unit) + QStringLiteral(" %1 %2").arg(span.toMs - span.fromMs).arg(unitText("ms"));
}

QString captionOf(I_PORT port) {
    return m(key::port)->c(port)->c(field::tag)->getString();
}

QString percent(double fraction) {
    constexpr double full = 100.0;
    return QString::number(fraction * full) + QStringLiteral(" %");
}

}  // namespace

TimingPicture::TimingPicture(QWidget* parent) : QWidget(parent) {
    QFont own = font();
    own.setPixelSize(textPx);
    setFont(own);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    layOut();
}

void TimingPicture::showSet(const std::optional<LaserParams>& params) {
    params_ = params;
    layOut();
    update();
}

void TimingPicture::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
}

// --- Layout ---------------------------------------------------------------------------------------

void TimingPicture::layOut() {
    timing_ = laserTiming(params_.value_or(LaserParams()));
    captionWidth_ = 0;
    for (const TimingLane& shown : timing_.opening.lanes) {
        const int needed = fontMetrics().horizontalAdvance(captionOf(shown.port)) + textPx + 2;
        captionWidth_ = std::max(captionWidth_, std::min(needed, width() / 4));
    }
    placeSections();
    lanes_.clear();
    int y = headerHeight;
    for (const TimingLane& shown : timing_.opening.lanes) {
        Lane lane;
        lane.port = shown.port;
        lane.caption = captionOf(shown.port);
        if (params_ && shown.port == AO_LASER_POWER) {
            lane.value = percent(params_->power);
        } else if (params_ && shown.port == DO_WIRE_ENABLE) {
            lane.value = percent(params_->wireSpeed);
        }
        placeLabels(&lane, 0);
        placeLabels(&lane, 1);
        lane.top = y;
        y += lane.rows * rowHeight + barHeightOf(lane.port) + laneGap;
        lanes_.push_back(lane);
    }
    setFixedHeight(y);
}

void TimingPicture::placeSections() {
    const double room = std::max(1, width() - captionWidth_ - cutWidth);
    const double allMs = std::max(1, timing_.opening.ms + timing_.closing.ms);
    const double padMs = allMs * padShare;
    scale_ = room / (allMs + 4 * padMs);
    double left = captionWidth_;
    const TimingPart* const parts[] = {&timing_.opening, &timing_.closing};
    for (int i = 0; i < 2; ++i) {
        const double right = left + (parts[i]->ms + 2 * padMs) * scale_;
        sections_[i] = {parts[i], left, right, left + padMs * scale_};
        left = right + cutWidth;
    }
}

/// Each in the first row of its lane in which it hits no other.
void TimingPicture::placeLabels(Lane* lane, int section) {
    const Section& place = sections_[section];
    const QFontMetricsF metrics(font());
    constexpr double air = 6;
    std::vector<Label>& labels = lane->labels[section];
    for (const TimingSpan& span : place.part->spans) {
        if (span.port != lane->port) {
            continue;
        }
        Label label;
        label.text = spanText(span);
        label.from = xOf(place, span.fromMs);
        label.to = xOf(place, span.toMs);
        const double length = metrics.horizontalAdvance(label.text);
        const double centred = (label.from + label.to - length) / 2;
        label.left = std::max(place.left, std::min(std::max(centred, label.from), place.right - length));
        label.right = label.left + length;
        const auto hits = [&label](const Label& other) {
            return other.row == label.row &&
                   std::min(label.left, label.from) < std::max(other.right, other.to) + air &&
                   std::min(other.left, other.from) < std::max(label.right, label.to) + air;
        };
        while (std::any_of(labels.begin(), labels.end(), hits)) {
            ++label.row;
        }
        lane->rows = std::max(lane->rows, label.row + 1);
        labels.push_back(label);
    }
}

// --- Painting -------------------------------------------------------------------------------------

void TimingPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (!params_) {
        painter.setPen(QColor(faintInk));
        painter.drawText(rect(), Qt::AlignCenter, tr("选中一组参数，这里显示其时序。"));
        return;
    }
    const QLatin1String titles[] = {statement::open, statement::close};
    painter.setPen(QColor(ink));
    for (int i = 0; i < 2; ++i) {
        const QRectF place(sections_[i].left, 0, sections_[i].right - sections_[i].left, headerHeight);
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                         QObject::tr(statementRow(titles[i])->caption));
    }
    for (const Lane& lane : lanes_) {
        paintLane(&painter, lane);
    }
    paintCut(&painter);
}

void TimingPicture::paintLane(QPainter* painter, const Lane& lane) const {
    const int barTop = lane.top + lane.rows * rowHeight;
    const int height = barHeightOf(lane.port);
    painter->setPen(QColor(ink));
    const QRect place(0, barTop + height - textHeight, captionWidth_ - textPx, textHeight);
    painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                      fontMetrics().elidedText(lane.caption, Qt::ElideRight, place.width()));
    for (int i = 0; i < 2; ++i) {
        paintBar(painter, lane, sections_[i]);
        paintLabels(painter, lane, i);
    }
}

void TimingPicture::paintBar(QPainter* painter, const Lane& lane, const Section& section) const {
    const double base = lane.top + lane.rows * rowHeight + barHeightOf(lane.port);
    const auto shown = std::find_if(section.part->lanes.begin(), section.part->lanes.end(),
                                    [&lane](const TimingLane& one) { return one.port == lane.port; });
    const auto yOf = [base, &lane](double value) { return base - value * barHeightOf(lane.port); };
    QPolygonF outline;
    outline << QPointF(section.left, base) << QPointF(section.left, yOf(shown->before));
    double last = shown->before;
    for (const auto& [ms, value] : shown->steps) {
        outline << QPointF(xOf(section, ms), yOf(last)) << QPointF(xOf(section, ms), yOf(value));
        last = value;
    }
    outline << QPointF(section.right, yOf(last)) << QPointF(section.right, base);
    painter->setPen(QColor(rule));
    painter->drawLine(QPointF(section.left, base), QPointF(section.right, base));
    painter->setPen(QPen(QColor(isLight(lane.port) ? red : steel), 1));
    painter->setBrush(QColor(isLight(lane.port) ? redTint : steelTint));
    painter->drawPolygon(outline);
    if (!lane.value.isEmpty() && section.part == &timing_.opening && last > 0) {
        constexpr int inset = 4;
        painter->setPen(QColor(ink));
        painter->drawText(
            QRectF(section.left, base - textHeight, section.right - section.left - inset, textHeight),
            Qt::AlignRight | Qt::AlignVCenter, lane.value);
    }
}

void TimingPicture::paintLabels(QPainter* painter, const Lane& lane, int section) const {
    constexpr double tick = 3;
    painter->setPen(QColor(ink));
    for (const Label& label : lane.labels[section]) {
        const double top = lane.top + label.row * rowHeight;
        const double y = top + rowHeight - tick;
        painter->drawText(QRectF(label.left, top, label.right - label.left + 2, textHeight),
                          Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, label.text);
        painter->drawLine(QPointF(label.from, y), QPointF(label.to, y));
        for (const double x : {label.from, label.to}) {
            painter->drawLine(QPointF(x, y - tick), QPointF(x, y + tick));
        }
    }
}

/// The seam between the two parts is left out.
void TimingPicture::paintCut(QPainter* painter) const {
    painter->setPen(QPen(QColor(faintInk), 1, Qt::DashLine));
    const double middle = sections_[0].right + cutWidth / 2.0;
    painter->drawLine(QPointF(middle, 2), QPointF(middle, height() - 2));
}

}  // namespace lumo
