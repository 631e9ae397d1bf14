#pragma once

#include "module/host.h"

#include <QObject>
#include <QString>

class ProgramTable;
class QLabel;
class QWidget;

namespace lumo {

/// What decides where Start would go on. Lines count from 0.
struct StartOutlook {
    enum class Run { Idle, ByHand, OfStation };
    enum class Weld { None, Reopens, StaysOff };

    bool projectOpen = false;
    Run run = Run::Idle;
    QString station, project;  ///< whose program runs; empty when it is not known
    int runningLine = 0;
    int lineCount = 0;
    int resumeLine = 0;
    bool finished = false;   ///< the last run came to its end: Start begins at the first line
    int selectedLine = -1;   ///< -1: none
    Weld weld = Weld::None;  ///< what becomes of a weld that was left open
    double overlapMm = 0.0;  ///< of a weld that is opened again
    bool dry = false;        ///< the next run is a dry run
    bool dryRun = false;     ///< the one under way is
};

/// Where Start would go on, in the operator's words.
[[nodiscard]] QString startText(const StartOutlook& outlook);

/// Keeps the line above the program table, and beside it the button that asks how a weld goes on. It only
/// reads the tree.
class StartLine : public QObject {
    Q_OBJECT
public:
    /// `resume` is shown while there is a weld to go on with.
    StartLine(ProgramTable* table, QLabel* label, QWidget* resume, QObject* parent);

    /// Shows the present outlook.
    void refresh();

private:
    [[nodiscard]] StartOutlook outlook() const;
    [[nodiscard]] StartOutlook::Weld weldOutlook() const;

    ProgramTable* table_;
    QLabel* label_;
    QWidget* resume_;
};

}  // namespace lumo
