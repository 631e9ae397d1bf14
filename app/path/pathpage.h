#pragma once

#include "app/path/programfollower.h"
#include "simulator/arm.h"
#include "workcell/workcell.h"

#include <QPointer>
#include <QSet>
#include <QWidget>

class QAbstractItemView;
class QLabel;

namespace app {

class PathView;
class SeamTrack;
struct PathMove;

/// The path of the program that is edited, or of a station's program while it runs, with the welded seams:
/// the view, its buttons, its legend, and a line about the selected statement. Only reads.
class PathPage : public QWidget {
    Q_OBJECT
public:
    /// To be made after the package's page. `seams` must outlive it.
    PathPage(SeamTrack* seams, const workcell::PackageFlags& package, QWidget* parent = nullptr);

    /// Marks the rows that are selected in the editor's table of the program, and the moves that its check
    /// calls impossible.
    void followEditor(const QWidget* editor);
    PathView* view() const { return view_; }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private slots:
    void onFindings();

private:
    QWidget* makeButtons();
    bool stationRuns() const;
    void layOut();
    [[nodiscard]] QSet<int> impossibleLines() const;
    void onState();
    void showSelection();
    void showSeam();
    QString describe(const PathMove& move) const;

    SeamTrack* seams_;
    workcell::PackageFlags package_;
    ProgramFollower program_;
    sim::Arm arm_;
    QPointer<const QWidget> editor_;
    QPointer<const QAbstractItemView> table_;
    QSet<int> impossible_;  ///< lines as they are drawn
    PathView* view_;
    QLabel* selection_;
    QLabel* seam_;
    bool showsStation_ = false;
};

}  // namespace app
