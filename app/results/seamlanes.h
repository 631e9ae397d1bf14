#pragma once

#include "app/results/runresult.h"

#include <QVector>
#include <QWidget>

#include <optional>

namespace app {

/// A line of the program along a seam.
struct SeamPart {
    int line = 0;  ///< from 1
    double endMm = 0;
};

/// The lines of a seam and where they end along it.
[[nodiscard]] QVector<SeamPart> partsOf(int seam, const RunResult& result);
/// A round number at the top of a lane, for values up to `most`: twice 1, 2, 4 or 5 times a power of ten.
[[nodiscard]] double laneTop(double most);

/// Speed and laser power of a seam over its length, each in a lane of its own with its limits as a band.
class SeamLanes : public QWidget {
    Q_OBJECT
public:
    explicit SeamLanes(QWidget* parent = nullptr);

    /// A seam of the result, from 0.
    void show(int seam, const RunResult& result);
    void clear();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Lane {
        QString name, unit;
        QRgb colour;
        double top;
        double ProfileSample::*value;
        std::optional<workcell::Allowed> allowed;
    };
    void paintLane(QPainter* painter, const QRectF& place, const Lane& lane) const;
    void paintLimits(QPainter* painter, const QRectF& place, const Lane& lane) const;
    void nameLimits(QPainter* painter, const QRectF& place, const Lane& lane) const;
    void paintParts(QPainter* painter, const QRectF& place) const;
    void paintLengths(QPainter* painter, const QRectF& place) const;
    [[nodiscard]] double x(const QRectF& place, double mm) const;

    SeamProfile profile_;
    QVector<SeamPart> parts_;
    QVector<Lane> lanes_;
    double lengthMm_ = 0;
};

}  // namespace app
