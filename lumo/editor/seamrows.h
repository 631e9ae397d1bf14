#pragma once

#include "look/seam.h"
#include "program/runprogram.h"

#include <QObject>

#include <vector>

namespace lumo {

/// How each line of the program in the editor stands to its seam: to weld, welded by the last run, or being
/// welded now.
///
/// A seam goes from an executed start of welding to the next executed stop, with the lines between. What a
/// run has welded stays so until a run goes over the line again, or lines are inserted, removed or moved;
/// then only the lines before the stop of an open weld count as welded. Dry runs and runs of stations weld
/// nothing here.
class SeamRows : public QObject {
    Q_OBJECT
public:
    /// Follows the executor's state in the tree.
    explicit SeamRows(QObject* parent = nullptr);

    struct Place {
        look::Weld weld = look::Weld::None;
        bool isFirst = false, isLast = false;  ///< of the seam
    };
    /// Of a row that exists.
    [[nodiscard]] Place at(int row) const;

    /// The number of a row's seam, from 1; 0 outside of seams.
    [[nodiscard]] int seamOf(int row) const;
    [[nodiscard]] int seamCount() const;

    // --- For the table: the kinds of its rows -------------------------------------------------

    void reset(int count);
    void insert(int row);
    void remove(int row);
    void moved() { restructured(); }
    /// What the row's statement is now.
    void setKind(int row, const prog::LineKind& kind);

signals:
    /// Row `first` and those behind it, to `last`, may have another place.
    void changed(int first, int last);

private:
    struct Row {
        prog::LineKind kind;
        bool inSeam = false, isFirst = false, isLast = false, isWelded = false;
    };
    [[nodiscard]] int count() const { return static_cast<int>(rows_.size()); }
    Row& row(int at) const { return rows_[static_cast<std::size_t>(at)]; }
    void onState();
    void onLine(const QVariant& line);
    void onWeldOpen(const QVariant& open);
    void restructured();
    void findSeams() const;
    [[nodiscard]] int seamsTo(int end) const;
    void weldedBeforeTheStop() const;
    void setWelded(int at);
    void announce(int at);

    mutable std::vector<Row> rows_;
    mutable bool isStale_ = true;  ///< the seams are not yet found
    bool isFollowing_ = false;     ///< a run of this program is under way
    bool isStarting_ = false;      ///< and has not yet reached a line
    bool isLit_ = false;
    int line_ = -1;  ///< of the run
};

}  // namespace lumo
