#pragma once

#include "editor/rowgrid.h"
#include "editor/rowshape.h"
#include "editor/seamrows.h"
#include "program/finding.h"

#include <QCache>
#include <QHash>
#include <QPixmap>

#include <optional>

class QPainter;

namespace lumo {

/// Paints the rows of the program's list: their texts and, around them, how the line stands to its seam, the
/// running-line marker, the mark of its findings and the selection.
///
/// A row is painted into a picture, which is kept: a scrolled list, or one in which the marker moves, paints
/// few rows. Not kept: rows that look otherwise than when they were painted last; see forget().
class RowPainter {
public:
    explicit RowPainter(const RowGrid& grid);

    /// What a row shows beside the texts of its statement.
    struct State {
        RowForm form;
        bool isSelected = false, hasFocus = false;
        bool hasMarker = false;
        bool isUntaught = false;
        std::optional<prog::Severity> severity;
        SeamRows::Place seam;
    };

    /// Paints a row of the program at a height.
    void paint(QPainter* painter, int row, const QRect& place, const State& state);
    /// The statement of the row is another, or has other texts.
    void forget(int row) { kept_.remove(row); }
    void forgetAll();

private:
    struct Kept {
        uint state;
        QPixmap picture;
    };
    struct Inks;

    [[nodiscard]] QPixmap pictureOf(int row, const QSize& size, qreal ratio, const State& state) const;
    void paintGround(QPainter* painter, const QRect& place, const State& state) const;
    [[nodiscard]] QRect chipIn(int height) const;
    void paintBar(QPainter* painter, int height, const SeamRows::Place& seam) const;
    void paintMarker(QPainter* painter, int height) const;
    void paintNumber(QPainter* painter, int row, const RowShape& shape, const State& state,
                     const Inks& inks) const;
    void paintMark(QPainter* painter, const QRect& place, prog::Severity severity) const;
    void paintCommand(QPainter* painter, const RowShape& shape, const RowSummary& summary,
                      const Inks& inks) const;
    void paintCommandAbove(QPainter* painter, const RowShape& shape, const RowSummary& summary,
                           const Inks& inks) const;
    void paintParameters(QPainter* painter, const RowSummary& summary, const RowShape& shape,
                         const State& state, const Inks& inks) const;
    void paintPoint(QPainter* painter, int top, const std::array<QString, RowSummary::columns>& figures,
                    const Inks& inks) const;
    void paintUntaught(QPainter* painter, int top) const;
    void paintFullText(QPainter* painter, const RowShape& shape, const Inks& inks) const;
    void paintFigure(QPainter* painter, const QRect& field, const QString& number, const QString& unit,
                     bool framed, const Inks& inks) const;
    void paintNote(QPainter* painter, const RowShape& shape, const State& state, const Inks& inks) const;
    void paintFlag(QPainter* painter, const RowShape& shape, bool executed) const;

    const RowGrid& grid_;
    QCache<int, Kept> kept_;
    mutable QHash<int, QPixmap> bars_;   ///< by height and state
    mutable QHash<int, QPixmap> marks_;  ///< by severity
};

}  // namespace lumo
