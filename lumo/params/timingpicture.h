#pragma once

#include "program/lasertiming.h"

#include <QString>
#include <QWidget>

#include <optional>
#include <vector>

class QPainter;

namespace lumo {

/// The picture of a parameter set: gas, laser, power, wire and pull-back over time, in its opening and its
/// closing, with the times of the set as dimension lines. Both parts have one scale; between them is a cut.
class TimingPicture final : public QWidget {
    Q_OBJECT
public:
    explicit TimingPicture(QWidget* parent = nullptr);

    /// Draws a set; nothing: the page has none to show.
    void showSet(const std::optional<prog::LaserParams>& params);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// One part in the picture.
    struct Section {
        const prog::TimingPart* part;
        double left, right;  ///< px, of the lanes
        double zero;         ///< px, where its time begins
    };
    struct Label {
        QString text;
        double left, right;  ///< px, of the text
        double from, to;     ///< px, of the dimension line
        int row = 0;         ///< in the lane, from above
    };
    struct Lane {
        I_PORT port;
        QString caption, value;
        std::vector<Label> labels[2];  ///< of the opening and of the closing
        int top = 0, rows = 1;
    };

    void layOut();
    void placeSections();
    void placeLabels(Lane* lane, int section);
    void paintLane(QPainter* painter, const Lane& lane) const;
    void paintBar(QPainter* painter, const Lane& lane, const Section& section) const;
    void paintLabels(QPainter* painter, const Lane& lane, int section) const;
    void paintCut(QPainter* painter) const;
    [[nodiscard]] double xOf(const Section& section, int ms) const { return section.zero + ms * scale_; }
    void resizeEvent(QResizeEvent* event) override;

    std::optional<prog::LaserParams> params_;
    prog::LaserTiming timing_;
    Section sections_[2] = {};
    std::vector<Lane> lanes_;
    int captionWidth_ = 0;  ///< px, of the lanes' names
    double scale_ = 0.0;    ///< px a ms
};

}  // namespace lumo
