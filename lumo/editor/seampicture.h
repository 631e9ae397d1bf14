#pragma once

#include "executor/resumeview.h"

#include <QWidget>

namespace lumo {

/// A seam that was stopped, drawn straight: what is welded, what is left, what would be welded again, the
/// place of the stop, and the tool with its distance from there. The tool stands before or behind the stop as
/// it is along the seam.
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
    [[nodiscard]] double alongMm() const;
    [[nodiscard]] qreal at(double mm) const;
    [[nodiscard]] QRectF channel() const;
    void paintOverlap(QPainter* painter) const;
    void paintTool(QPainter* painter) const;
    void paintScale(QPainter* painter) const;

    ResumeView view_;
    double weldedMm_ = 0.0, leftMm_ = 0.0, toolMm_ = 0.0;
    double overlapMm_ = 0.0;
};

}  // namespace lumo
