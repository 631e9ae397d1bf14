#pragma once

#include "stations/runningseam.h"

#include <QString>
#include <QWidget>

class QPainter;

namespace lumo {

/// What became of the projects that stations asked for, since listening was switched on.
struct StationTally {
    QString since;  ///< time of day; empty: listening is off
    int ended = 0, stopped = 0, refused = 0;
};

/// The three cards below the stations: what runs, what waits, what was done.
class StationCards final : public QWidget {
    Q_OBJECT
public:
    struct Running {
        QString station;  ///< empty: none
        QString project;
        SeamProgress seam;
        bool laserOn = false;
        int line = 0;     ///< from 1
        QString elapsed;  ///< "0:08"
    };
    struct Waiting {
        QString station;  ///< the next one; empty: none
        QString project;
        QString waited;       ///< "0:06"
        QString behind;       ///< station that runs now
        int more = 0;         ///< that wait behind it
        bool isHeld = false;  ///< a stop input is on
    };

    explicit StationCards(QWidget* parent = nullptr);

    /// Draws anew what differs.
    void show(const Running& running, const Waiting& waiting, const StationTally& tally);

    [[nodiscard]] const StationTally& tally() const { return tally_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {1, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// The texts of a card, and its bead.
    struct Card {
        QString title, icon, main, aside, left, right;
        QRgb colour = 0;
        double share = -1;  ///< of the bead; negative: none
        bool laserOn = false;
        bool operator==(const Card& other) const;
    };

    [[nodiscard]] bool isNarrow() const;
    [[nodiscard]] QRect place(int card) const;
    [[nodiscard]] Card runningCard(const Running& running) const;
    [[nodiscard]] Card waitingCard(const Waiting& waiting) const;
    void paintCard(QPainter* painter, const QRect& place, const Card& card) const;
    void paintNarrow(QPainter* painter, const QRect& place, const Card& card) const;
    void paintTally(QPainter* painter, const QRect& place) const;

    Card cards_[2];
    StationTally tally_;
};

}  // namespace lumo
