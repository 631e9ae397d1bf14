#pragma once

#include "module/host.h"
#include "program/parameters.h"
#include "program/seams.h"

#include <QObject>
#include <QString>
#include <QVector>

namespace lumo {

/// What an operator wants to know of a run, or of the next one while nothing runs.
struct RunView {
    /// A seam of the part.
    struct Row {
        int from = 0, to = 0;  ///< lines, from 1
        double lengthMm = 0.0;
        bool isWelded = false;
    };

    bool runs = false, isDry = false;
    int line = -1;  ///< from 0; -1: the program has no such line
    QString type;   ///< of its statement
    int seam = -1;  ///< in `seams`; -1: no seam is under way or to come
    double alongMm = 0.0;
    bool isLit = false;    ///< the seam is welded, not passed with the laser off
    bool laserOn = false;  ///< now
    double speedMmPerS = 0.0;
    double powerPercent = 0.0, dutyPercent = 0.0;
    bool gas = false, wire = false;
    double wirePercent = 0.0;
    QVector<Row> seams;
};

/// Follows the run of the hand program or of a station: how far its seams are welded, and with which values.
/// Between runs it tells those of the seam that comes next. The program is read when the view is asked for
/// after a change.
class RunFollower : public QObject {
    Q_OBJECT
public:
    explicit RunFollower(QObject* parent = nullptr);

    /// As it is now.
    [[nodiscard]] RunView view();

signals:
    /// A run began or ended, another line began, or the program changed.
    void changed();

private:
    void onState();
    void onLine();
    void onProgram();
    void follow();
    void readProgram();
    void addOutputs(RunView* view) const;
    void addPlanned(RunView* view) const;
    [[nodiscard]] int lineNow() const;
    [[nodiscard]] static ModuleObject* programNow();

    prog::SeamProgress progress_;
    bool isRead_ = false;
    bool isFinished_ = false;   ///< the last run came to its end
    bool isOfStation_ = false;  ///< so was the last run
    int begunAt_ = 0;           ///< line at which the part began
};

}  // namespace lumo
