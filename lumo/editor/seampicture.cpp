#include "editor/seampicture.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <array>
#include <limits>

using namespace prog;

namespace lumo {

namespace {

const QColor weldedColour(90, 90, 90);
const QColor aheadColour(30, 110, 200);
const QColor overlapColour(230, 120, 0);
const QColor stopColour(200, 0, 0);

}  // namespace

SeamPicture::SeamPicture(QWidget* parent) : QWidget(parent) {
    constexpr int heightPx = 150;
    setMinimumHeight(heightPx);
}

void SeamPicture::show(const ResumeView& view) {
    view_ = view;
    lookAlongTheShortestAxis();
    update();
}

void SeamPicture::showOverlap(double mm) {
    overlapMm_ = mm;
    update();
}

SeamPicture::Points SeamPicture::pointsOf(const ResumeView::Part& part) {
    constexpr int stepsOfArc = 48;
    const int steps = part.path.arc() ? stepsOfArc : 1;
    Points points;
    for (int i = 0; i <= steps; ++i) {
        points.push_back(part.path.at(part.fromM + (part.toM - part.fromM) * i / steps).trans);
    }
    return points;
}

/// Where the welded part of the seam ends.
SeamPicture::Points SeamPicture::overlapPoints() const {
    Points points;
    double leftM = overlapMm_ / mmPerM;
    for (auto part = view_.welded.rbegin(); part != view_.welded.rend() && leftM > 0.0; ++part) {
        ResumeView::Part end = *part;
        end.fromM = std::max(part->fromM, part->toM - leftM);
        leftM -= end.toM - end.fromM;
        const Points more = pointsOf(end);
        points.insert(points.begin(), more.begin(), more.end());
    }
    return points;
}

void SeamPicture::lookAlongTheShortestAxis() {
    Points points{view_.stop, view_.tool};
    for (const auto& parts : {view_.welded, view_.ahead}) {
        for (const ResumeView::Part& part : parts) {
            const Points more = pointsOf(part);
            points.insert(points.end(), more.begin(), more.end());
        }
    }
    std::array<double, 3> span{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto [least, most] =
            std::minmax_element(points.begin(), points.end(),
                                [axis](const Position& a, const Position& b) { return a[axis] < b[axis]; });
        span[axis] = (*most)[axis] - (*least)[axis];
        centre_[axis] = ((*most)[axis] + (*least)[axis]) / 2;
    }
    const auto shortest = std::size_t(std::min_element(span.rbegin(), span.rend()) - span.rbegin());
    const std::size_t dropped = 2 - shortest;
    right_ = dropped == 0 ? 1 : 0;
    up_ = dropped == 2 ? 1 : 2;
    constexpr double leastM = 0.001;
    spanM_ = std::max(leastM, std::max(span[right_] * height() / std::max(1, width()), span[up_]));
    spanM_ = std::max(spanM_, leastM);
}

QPointF SeamPicture::onScreen(const Position& position) const {
    constexpr double marginPx = 16.0;
    const double scale = (height() - 2 * marginPx) / spanM_;
    return {width() / 2.0 + (position[right_] - centre_[right_]) * scale,
            height() / 2.0 - (position[up_] - centre_[up_]) * scale};
}

void SeamPicture::drawLine(QPainter& painter, const Points& points, const QPen& pen) const {
    QPolygonF line;
    for (const Position& point : points) {
        line << onScreen(point);
    }
    painter.setPen(pen);
    painter.drawPolyline(line);
}

/// A cross where the weld stopped, a ring where the tool is.
void SeamPicture::drawMarks(QPainter& painter) const {
    constexpr double armPx = 6.0, ringPx = 8.0;
    const QPointF stop = onScreen(view_.stop);
    painter.setPen(QPen(stopColour, 3));
    painter.drawLine(stop - QPointF(armPx, armPx), stop + QPointF(armPx, armPx));
    painter.drawLine(stop - QPointF(armPx, -armPx), stop + QPointF(armPx, -armPx));
    painter.setPen(QPen(palette().color(QPalette::WindowText), 2));
    painter.drawEllipse(onScreen(view_.tool), ringPx, ringPx);
}

void SeamPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    lookAlongTheShortestAxis();
    for (const ResumeView::Part& part : view_.ahead) {
        drawLine(painter, pointsOf(part), QPen(aheadColour, 2, Qt::DashLine));
    }
    for (const ResumeView::Part& part : view_.welded) {
        drawLine(painter, pointsOf(part), QPen(weldedColour, 5, Qt::SolidLine, Qt::RoundCap));
    }
    if (overlapMm_ > 0.0) {
        drawLine(painter, overlapPoints(), QPen(overlapColour, 5, Qt::SolidLine, Qt::RoundCap));
    }
    drawMarks(painter);
}

}  // namespace lumo
