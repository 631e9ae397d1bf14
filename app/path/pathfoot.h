#pragma once

#include "app/path/pathlayout.h"

#include <QTimer>
#include <QWidget>

class QLabel;
class QToolButton;

namespace mendo {
class ModuleObject;
}
namespace workcell {
class CellSignals;
}

namespace app {

class SeamTrack;
class SeamBar;

/// Below the path: the line that runs or is chosen, how far its weld is welded, and in a run speed, power,
/// gas and wire.
class PathFoot : public QWidget {
    Q_OBJECT
public:
    /// `seams` must outlive it.
    explicit PathFoot(SeamTrack* seams, QWidget* parent = nullptr);

    /// Where speed and power are read. Must outlive it.
    void followSignals(const workcell::CellSignals* cellSignals) { signals_ = cellSignals; }
    /// Wide docks have the values of a run elsewhere on the screen.
    void setBrief(bool brief);
    /// The program, its moves, and the line that is told about, from 0; -1 for none.
    void show(const mendo::ModuleObject* program, const std::vector<PathMove>& moves, int line);
    /// Instead of a line.
    void say(const QString& text);
    void setRunning(bool running);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void refresh();
    struct Value {
        QWidget* place;
        QLabel* value;
    };
    QWidget* makeTitle();
    QWidget* makeValues();
    Value makeValue(const QString& name, const QString& caption);
    void arrange();
    void showValues();
    [[nodiscard]] double signal(const QString& name) const;

    SeamTrack* seams_;
    const workcell::CellSignals* signals_ = nullptr;
    QLabel* number_;
    QLabel* icon_;
    QLabel* word_;
    QLabel* place_;  ///< which weld of how many
    SeamBar* bar_;
    QLabel* line_;
    QLabel* welded_;
    QToolButton* clear_;
    QWidget* values_;
    Value speed_, power_, gas_, wire_;
    QTimer later_;
    double weldM_ = 0;  ///< length of the weld of the line; 0: none
    bool brief_ = false;
    bool running_ = false;
};

/// The sign of a seam, so far welded.
class SeamBar : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    void setShare(double share, bool laser);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double share_ = 0;
    bool laser_ = false;
};

}  // namespace app
