#pragma once

#include "module/host.h"

#include <QObject>
#include <QString>

class ProgramTable;
class QLabel;
class QWidget;

namespace lumo {

class ProgramCheck;
class WrapToolButton;

/// What decides where Start would go on. Lines count from 0.
struct StartOutlook {
    enum class Run { Idle, ByHand, OfStation };
    enum class Weld { None, Reopens, StaysOff };

    bool projectOpen = false;
    bool drivesOn = false;
    int errors = 0;  ///< of the program, as far as it is checked
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
/// The same in a few words, as the second line of the button; or why Start would be refused.
[[nodiscard]] QString startWords(const StartOutlook& outlook);
/// Whether Start would do nothing but say why.
[[nodiscard]] bool isStartRefused(const StartOutlook& outlook);
/// Whether there is more to say than the button has room for.
[[nodiscard]] bool isStartSpecial(const StartOutlook& outlook);

/// Keeps what is said about the next start: the second line and the look of the start button, the sentence
/// for cases that need more words, and the button that asks how a weld goes on. It only reads the tree.
class StartLine : public QObject {
    Q_OBJECT
public:
    struct Parts {
        WrapToolButton* start;
        WrapToolButton* point;  ///< pale while a program runs, as reset is
        WrapToolButton* reset;
        QLabel* sentence;
        QWidget* resume;  ///< shown while there is a weld to go on with
    };
    StartLine(ProgramTable* table, const ProgramCheck* check, const Parts& parts, QObject* parent);

    /// Shows the present outlook.
    void refresh();
    /// Whether the sentence is to be seen.
    [[nodiscard]] bool isSpecial() const { return isSpecial_; }

signals:
    /// Sentence or button are to be seen, or no longer.
    void specialChanged();

private:
    [[nodiscard]] StartOutlook outlook() const;
    [[nodiscard]] StartOutlook::Weld weldOutlook() const;
    void showOnButtons(const StartOutlook& now) const;

    ProgramTable* table_;
    const ProgramCheck* check_;
    const Parts parts_;
    bool isSpecial_ = false;
};

}  // namespace lumo
