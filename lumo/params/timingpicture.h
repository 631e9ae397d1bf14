#pragma once

#include "program/lasertiming.h"

#include <QPixmap>
#include <QRectF>
#include <QString>
#include <QWidget>

#include <optional>
#include <vector>

class QPainter;

namespace lumo {

/// The picture of a parameter set: gas, laser, power, wire, pull-back and robot over time, in its opening and
/// its closing, with the times of the set as dimension lines. Both parts have one scale; between them is a
/// cut. A tap on a dimension asks for its field.
class TimingPicture final : public QWidget {
    Q_OBJECT
public:
    explicit TimingPicture(QWidget* parent = nullptr);

    /// Draws a set; nothing: the page has none to show.
    void showSet(const std::optional<prog::LaserParams>& params);
    /// Draws the dimension of a field in blue; empty: none.
    void mark(const QString& field);

    [[nodiscard]] QSize sizeHint() const override { return {width(), height_}; }

signals:
    /// The dimension of a field of the set was tapped.
    void tapped(const QString& field);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    /// One part in the picture.
    struct Section {
        const prog::TimingPart* part;
        double left, right;  ///< px, of the lanes
        double zero;         ///< px, where its time begins
    };
    struct Dimension {
        QString field, text;
        int lane = 0;
        int row = 0;  ///< 0: beside the bars; from 1: above them
        /// False: the time is the end of a bar, or a place in it; `from` is there, `to` at the bar's end.
        bool hasLine = true;
        double from = 0, to = 0;     ///< px, of the line
        double left = 0, right = 0;  ///< px, of the text
        bool isAbove = false;        ///< the text stands above the line, not beside it
        [[nodiscard]] double least() const { return hasLine ? qMin(from, left) : left; }
        [[nodiscard]] double most() const { return hasLine ? qMax(to, right) : right; }
    };
    struct Lane {
        QString caption, value;
        int bar = 0;   ///< px, height of the bar
        int rows = 0;  ///< above the bars
        int top = 0, base = 0;
    };
    struct Interval {
        double from, to;
    };

    void layOut();
    void placeSections();
    void makeLanes();
    void placeDimensions(int section);
    void place(Dimension* dimension, const Section& section, bool leftFirst);
    bool placeInRow(Dimension* dimension, const Section& section, bool leftFirst) const;
    [[nodiscard]] bool isFree(const Dimension& dimension, const Section& section) const;
    [[nodiscard]] std::vector<Interval> bars(int lane, const Section& section) const;
    [[nodiscard]] double barEnd(int lane, const Section& section) const;
    [[nodiscard]] const prog::TimingLane& stepsOf(int lane, const Section& section) const;
    [[nodiscard]] double xOf(const Section& section, int ms) const { return section.zero + ms * scale_; }
    [[nodiscard]] QRectF textPlace(const Dimension& dimension) const;
    [[nodiscard]] double lineY(const Dimension& dimension) const;

    void draw(QPainter* painter) const;
    void drawGrid(QPainter* painter) const;
    void drawTime(QPainter* painter) const;
    void drawMarks(QPainter* painter, const Section& section, const QString& title) const;
    void drawCaption(QPainter* painter, const Lane& lane) const;
    void drawBar(QPainter* painter, int lane, const Section& section) const;
    void drawRobot(QPainter* painter) const;
    void drawValue(QPainter* painter, const Lane& lane, bool isLight) const;
    void drawCut(QPainter* painter) const;
    void drawDimension(QPainter* painter, const Dimension& dimension) const;
    [[nodiscard]] QString fieldAt(const QPoint& position) const;

    std::optional<prog::LaserParams> params_;
    prog::LaserTiming timing_;
    QString marked_, pressed_;  ///< fields
    Section sections_[2] = {};
    std::vector<Lane> lanes_;
    std::vector<Dimension> dimensions_;
    QPixmap picture_;       ///< null: to be drawn
    int captionWidth_ = 0;  ///< px, of the lanes' names
    int height_ = 0;
    double scale_ = 0.0;  ///< px a ms
};

}  // namespace lumo
