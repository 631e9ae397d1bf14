#include "params/timingpicture.h"

#include "look/scale.h"
#include "look/type.h"
#include "module/host.h"
#include "program/words.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QMouseEvent>

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

enum LaneOf { GasLane, LaserLane, PowerLane, WireLane, PullbackLane, RobotLane, LaneCount };

constexpr I_PORT lanePorts[] = {DO_GAS, DO_LASER_ENABLE, AO_LASER_POWER, DO_WIRE_ENABLE, DO_WIRE_PULLBACK};

// Lengths in px at factor 1.
constexpr int timeHeight = 34;
constexpr int laneHeight = 36;
constexpr int barHeight = 22;
constexpr int powerHeight = 30;
constexpr int rowHeight = 26;  ///< of dimensions above the bars
constexpr int rowAir = 4;      ///< above these
constexpr int air = 6;

/// Where the dimension of a time stands, and what it is called beside its figure.
struct DimensionRow {
    QLatin1String field;
    LaneOf lane;
    int row;         ///< the first in which it may stand
    bool leftFirst;  ///< the text rather stands left of the line
    bool hasLine;
    const char* name;
};

constexpr DimensionRow dimensionRows[] = {
    {"delay_before_blow"_l1, LaserLane, 0, false, true,
     QT_TRANSLATE_NOOP("lumo::TimingPicture", "前吹气 %1")},
    {"open_time"_l1, LaserLane, 1, false, true, QT_TRANSLATE_NOOP("lumo::TimingPicture", "出光 %1")},
    {"open_interval"_l1, LaserLane, 1, false, true, QT_TRANSLATE_NOOP("lumo::TimingPicture", "间隔 %1")},
    {"close_delay"_l1, LaserLane, 0, false, true, QT_TRANSLATE_NOOP("lumo::TimingPicture", "关光延迟 %1")},
    {"increase_time"_l1, PowerLane, 1, true, true, QT_TRANSLATE_NOOP("lumo::TimingPicture", "缓升 %1")},
    {"decrease_time"_l1, PowerLane, 1, false, true, QT_TRANSLATE_NOOP("lumo::TimingPicture", "缓降 %1")},
    {"delay_after_blow"_l1, PowerLane, 0, false, true, QT_TRANSLATE_NOOP("lumo::TimingPicture", "后吹气 %1")},
    {"stop_wire_time"_l1, WireLane, 0, false, false, QT_TRANSLATE_NOOP("lumo::TimingPicture", "补丝自 %1")},
    {"give_wire_time"_l1, WireLane, 0, false, false, QT_TRANSLATE_NOOP("lumo::TimingPicture", "至 %1")},
    {"move_wire_time"_l1, PullbackLane, 0, false, false,
     QT_TRANSLATE_NOOP("lumo::TimingPicture", "抽丝至 %1")},
    {"stay_time"_l1, RobotLane, 0, true, true, QT_TRANSLATE_NOOP("lumo::TimingPicture", "停留 %1")},
};

const DimensionRow& rowOf(QLatin1String field) {
    return *std::find_if(std::begin(dimensionRows), std::end(dimensionRows) - 1,
                         [field](const DimensionRow& row) { return row.field == field; });
}

QString percent(double fraction) {
    constexpr double full = 100.0;
    return QString::number(fraction * full) + QStringLiteral(" %");
}

QFontMetricsF dimensionMetrics() {
    return QFontMetricsF(look::font(look::Size::Caption, look::Weight::Strong));
}

/// What a caption of at most two lines needs.
int captionNeeds(const QString& caption, bool inTwoLines) {
    const QFontMetrics metrics(look::font(look::Size::Caption));
    if (!inTwoLines) {
        return metrics.horizontalAdvance(caption);
    }
    const int lines = 2 * metrics.lineSpacing();
    int width = metrics.horizontalAdvance(caption) / 2;
    while (metrics.boundingRect(QRect(0, 0, width, lines * 2), Qt::TextWordWrap, caption).height() > lines ||
           metrics.boundingRect(QRect(0, 0, width, lines * 2), Qt::TextWordWrap, caption).width() > width) {
        width += 4;
    }
    return width;
}

}  // namespace

TimingPicture::TimingPicture(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TimingPicture::showSet(const std::optional<LaserParams>& params) {
    params_ = params;
    layOut();
}

void TimingPicture::mark(const QString& field) {
    marked_ = field;
    picture_ = QPixmap();
    update();
}

void TimingPicture::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) {
        layOut();
    }
}

void TimingPicture::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        layOut();
    }
}

// --- Layout ---------------------------------------------------------------------------------------

void TimingPicture::layOut() {
    timing_ = laserTiming(params_.value_or(LaserParams()));
    makeLanes();
    placeSections();
    dimensions_.clear();
    placeDimensions(0);
    placeDimensions(1);
    int y = look::px(timeHeight);
    for (Lane& lane : lanes_) {
        const int above = lane.rows > 0 ? lane.rows * look::px(rowHeight) + look::px(rowAir)
                                        : look::px(laneHeight - barHeight);
        lane.top = y;
        y += above + lane.bar;
        lane.base = y;
    }
    height_ = y + look::px(4);
    picture_ = QPixmap();
    setFixedHeight(height_);
    updateGeometry();
    update();
}

void TimingPicture::makeLanes() {
    lanes_.assign(LaneCount, Lane());
    for (int i = 0; i < LaneCount; ++i) {
        Lane& lane = lanes_[static_cast<std::size_t>(i)];
        lane.caption =
            i == RobotLane ? tr("机器人") : m(key::port)->c(lanePorts[i])->c(field::tag)->getString();
        lane.bar = look::px(i == PowerLane ? powerHeight : barHeight);
        lane.rows = i == PowerLane ? 1 : 0;
    }
    if (params_) {
        lanes_[PowerLane].value = percent(params_->power);
        lanes_[WireLane].value = percent(params_->wireSpeed);
    }
    captionWidth_ = 0;
    constexpr int leastForOneLine = 720;
    const bool inTwoLines = width() < look::px(leastForOneLine);
    for (const Lane& lane : lanes_) {
        captionWidth_ = std::max(captionWidth_, captionNeeds(lane.caption, inTwoLines));
    }
    captionWidth_ += look::px(inTwoLines ? 8 : 24);
}

void TimingPicture::placeSections() {
    constexpr double openShare = 0.12, closeShare = 0.045;
    constexpr int leastValue = 64, leastLead = 28;
    const double room = std::max(1, width() - captionWidth_);
    const double behind = std::max<double>(room * openShare, look::px(leastValue));
    const double lead = std::max<double>(room * closeShare, look::px(leastLead));
    const int allMs = std::max(1, timing_.opening.ms + timing_.closing.ms);
    scale_ = std::max(1.0, room - behind - 2 * lead) / allMs;
    const double left = captionWidth_;
    const double cut = left + timing_.opening.ms * scale_ + behind;
    sections_[0] = {&timing_.opening, left, cut, left};
    sections_[1] = {&timing_.closing, cut, double(width()), cut + lead};
}

void TimingPicture::placeDimensions(int section) {
    const Section& shown = sections_[section];
    for (const TimingSpan& span : shown.part->spans) {
        const DimensionRow& row = rowOf(span.field);
        Dimension dimension;
        dimension.field = span.field;
        dimension.text = tr(row.name).arg(span.toMs - span.fromMs);
        dimension.lane = row.lane;
        dimension.row = row.row;
        dimension.hasLine = row.hasLine;
        dimension.from = xOf(shown, row.hasLine ? span.fromMs : span.toMs);
        dimension.to = row.hasLine ? xOf(shown, span.toMs) : barEnd(row.lane, shown);
        place(&dimension, shown, row.leftFirst);
        dimensions_.push_back(dimension);
    }
}

/// Into the first row in which it hits nothing.
void TimingPicture::place(Dimension* dimension, const Section& section, bool leftFirst) {
    Lane& lane = lanes_[static_cast<std::size_t>(dimension->lane)];
    while (!placeInRow(dimension, section, leftFirst)) {
        ++dimension->row;
        if (dimension->row > lane.rows) {
            lane.rows = dimension->row;
            if (placeInRow(dimension, section, leftFirst)) {
                return;
            }
            // In a row of its own the text may stand anywhere above the line.
            const double length = dimensionMetrics().horizontalAdvance(dimension->text);
            const double centred = (dimension->from + dimension->to - length) / 2;
            const double right = length < section.right - section.left ? section.right - air : width();
            const double left = length < section.right - section.left ? section.left : captionWidth_;
            dimension->isAbove = true;
            dimension->left = std::max(left, std::min(centred, right - length));
            dimension->right = dimension->left + length;
            return;
        }
    }
    lane.rows = std::max(lane.rows, dimension->row);
}

/// Above the line where it is long enough, else beside it.
bool TimingPicture::placeInRow(Dimension* dimension, const Section& section, bool leftFirst) const {
    const double length = dimensionMetrics().horizontalAdvance(dimension->text);
    const auto set = [dimension, length](double left, bool above) {
        dimension->left = left;
        dimension->right = left + length;
        dimension->isAbove = above;
    };
    const auto toLeft = [&] { set(dimension->from - air - length, false); };
    const auto toRight = [&] { set(dimension->to + air, false); };
    if (dimension->hasLine && dimension->to - dimension->from >= length + 2 * air) {
        set((dimension->from + dimension->to - length) / 2, true);
        if (isFree(*dimension, section)) {
            return true;
        }
    }
    if (!dimension->hasLine) {
        // Behind the bar, and behind what stands there.
        toRight();
        for (const Dimension& other : dimensions_) {
            const bool isBehind =
                other.lane == dimension->lane && other.row == dimension->row && other.least() >= section.left;
            if (isBehind) {
                set(std::max(dimension->left, other.right + 2 * air), false);
            }
        }
        return isFree(*dimension, section);
    }
    leftFirst ? toLeft() : toRight();
    if (isFree(*dimension, section)) {
        return true;
    }
    leftFirst ? toRight() : toLeft();
    return isFree(*dimension, section);
}

bool TimingPicture::isFree(const Dimension& dimension, const Section& section) const {
    const double least = dimension.least(), most = dimension.most();
    if (dimension.left < section.left ||
        dimension.right > section.right - (section.right < width() ? 2 * air : 0)) {
        return false;
    }
    const auto hits = [least, most](double from, double to) { return least < to - 1 && from + 1 < most; };
    for (const Dimension& other : dimensions_) {
        if (other.lane == dimension.lane && other.row == dimension.row &&
            hits(other.least() - air, other.most() + air)) {
            return false;
        }
    }
    if (dimension.row > 0) {
        return true;
    }
    const std::vector<Interval> taken = bars(dimension.lane, section);
    return std::none_of(taken.begin(), taken.end(),
                        [&hits](const Interval& bar) { return hits(bar.from, bar.to); });
}

const TimingLane& TimingPicture::stepsOf(int lane, const Section& section) const {
    return *std::find_if(section.part->lanes.begin(), section.part->lanes.end(),
                         [lane](const TimingLane& one) { return one.port == lanePorts[lane]; });
}

/// Where a lane is not at 0.
std::vector<TimingPicture::Interval> TimingPicture::bars(int lane, const Section& section) const {
    if (lane == RobotLane) {
        const bool isOpening = section.part == &timing_.opening;
        return {{isOpening ? xOf(section, section.part->goesOnMs) : section.left,
                 isOpening ? section.right : section.zero}};
    }
    std::vector<Interval> result;
    const TimingLane& steps = stepsOf(lane, section);
    double value = steps.before, since = section.left;
    for (const auto& [ms, next] : steps.steps) {
        if (value > 0) {
            result.push_back({since, xOf(section, ms)});
        }
        value = next;
        since = xOf(section, ms);
    }
    if (value > 0) {
        result.push_back({since, section.right});
    }
    return result;
}

double TimingPicture::barEnd(int lane, const Section& section) const {
    double end = section.zero;
    for (const Interval& bar : bars(lane, section)) {
        end = std::max(end, bar.to);
    }
    return end;
}

// --- Taps -----------------------------------------------------------------------------------------

QRectF TimingPicture::textPlace(const Dimension& dimension) const {
    const double height = dimensionMetrics().height();
    const double y = lineY(dimension);
    const double top = dimension.isAbove ? y - look::px(2) - height : y - height / 2;
    return {dimension.left, top, dimension.right - dimension.left, height};
}

double TimingPicture::lineY(const Dimension& dimension) const {
    const Lane& lane = lanes_[static_cast<std::size_t>(dimension.lane)];
    const int up = look::px(dimension.isAbove ? 7 : 11);
    if (dimension.row == 0) {
        return lane.base - up;
    }
    const int rowsBase = lane.base - lane.bar - (dimension.row - 1) * look::px(rowHeight);
    return rowsBase - look::px(dimension.isAbove ? 5 : 9);
}

/// The dimension whose text or line is nearest, as far as a finger reaches.
QString TimingPicture::fieldAt(const QPoint& position) const {
    constexpr int reach = 18;
    QString field;
    double nearest = look::px(reach);
    for (const Dimension& dimension : dimensions_) {
        const QRectF text = textPlace(dimension);
        const double least = std::min(dimension.least(), text.left());
        const double dx = std::max({least - position.x(), position.x() - dimension.most(), 0.0});
        const double dy = std::abs(text.center().y() - position.y());
        if (dx + dy < nearest) {
            nearest = dx + dy;
            field = dimension.field;
        }
    }
    return field;
}

void TimingPicture::mousePressEvent(QMouseEvent* event) {
    pressed_ = fieldAt(event->pos());
    event->accept();
}

void TimingPicture::mouseReleaseEvent(QMouseEvent* event) {
    const QString field = fieldAt(event->pos());
    if (!field.isEmpty() && field == pressed_) {
        emit tapped(field);
    }
    pressed_.clear();
}

}  // namespace lumo
