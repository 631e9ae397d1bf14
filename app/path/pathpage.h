#pragma once

#include "app/path/pathview.h"
#include "app/path/programfollower.h"
#include "kinematics/arm.h"
#include "workcell/workcell.h"

#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QWidget>

class QAbstractItemView;
class QToolButton;

namespace workcell {
class CellSignals;
}

namespace app {

class PathFoot;
class SeamTrack;
class SegmentedControl;

/// The path of the program that is edited, or of a station's program while it runs, with the welded seams:
/// one view or two, how they are seen, and what is told about the chosen line. The line chosen in the table
/// is marked in the path; a tap on the path chooses in the table, as a hand does.
class PathPage : public QWidget {
    Q_OBJECT
public:
    /// To be made after the package's page. `seams` must outlive it.
    PathPage(SeamTrack* seams, const workcell::PackageFlags& package, QWidget* parent = nullptr);

    /// Marks the rows that are selected in the editor's table of the program, and the moves that its check
    /// calls impossible.
    void followEditor(const QWidget* editor);
    /// Where speed and power of a run are read. Must outlive it.
    void followSignals(const workcell::CellSignals* cellSignals);
    /// The view in space, or the only one.
    PathView* view() const { return view_; }

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private slots:
    void onFindings();

private:
    /// The choices, in the order of their buttons.
    enum Sight { Space, Above, Side, Both };
    QWidget* makeButtons();
    QToolButton* makeButton(const QString& name, const QString& icon, const QString& text);
    void arrange();
    void setSight(int sight);
    [[nodiscard]] QList<PathView*> views() const { return {view_, second_}; }
    bool stationRuns() const;
    void onProgram();
    void onState();
    void layOut();
    [[nodiscard]] QSet<int> impossibleLines() const;
    [[nodiscard]] int chosenLine() const;
    void choose(int line);
    void showSelection();
    void showNext();
    void nameNext();

    SeamTrack* seams_;
    workcell::PackageFlags package_;
    ProgramFollower program_;
    kin::Arm arm_;
    QPointer<const QWidget> editor_;
    QPointer<QAbstractItemView> table_;
    QSet<int> impossible_;  ///< lines as they are drawn
    SegmentedControl* sights_;
    QWidget* bar_ = nullptr;
    QList<QToolButton*> buttons_;
    QToolButton* next_ = nullptr;  ///< shows the weld of the chosen line, or the line
    PathView* view_;
    PathView* second_;  ///< from above, below the other one
    PathFoot* foot_;
    QTimer later_;  ///< until the program rests, where laying it out takes long
    bool isSlow_ = false;
    bool isSightChosen_ = false;  ///< by the operator
    bool showsStation_ = false;
    bool showsSeam_ = false;  ///< the weld of the chosen line was asked for last
};

}  // namespace app
