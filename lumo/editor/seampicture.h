#pragma once

#include "executor/resumeview.h"

#include <QWidget>

namespace lumo {

/// A small picture of a seam that was stopped: what is welded, what is left, the place of the stop and the
/// tool. It looks along the axis in which the seam is shortest.
class SeamPicture : public QWidget {
    Q_OBJECT
public:
    explicit SeamPicture(QWidget* parent = nullptr);

    void show(const ResumeView& view);
public slots:
    /// The length of the welded part that will be welded again.
    void showOverlap(double mm);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    using Points = std::vector<prog::Position>;
    [[nodiscard]] static Points pointsOf(const ResumeView::Part& part);
    [[nodiscard]] Points overlapPoints() const;
    void lookAlongTheShortestAxis();
    [[nodiscard]] QPointF onScreen(const prog::Position& position) const;
    void drawLine(QPainter& painter, const Points& points, const QPen& pen) const;
    void drawMarks(QPainter& painter) const;

    ResumeView view_;
    double overlapMm_ = 0.0;
    std::size_t right_ = 0, up_ = 1;  ///< axes shown
    prog::Position centre_;
    double spanM_ = 0.0;
};

}  // namespace lumo
