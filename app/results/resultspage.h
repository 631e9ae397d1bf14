#pragma once

#include "app/results/resultexport.h"
#include "app/results/runhistory.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QStackedWidget;
class QTableView;
class QToolButton;

namespace app {

class ResultFigures;
class RunList;
class SeamLanes;
class SeamList;
class WeldPicture;

/// The results: of a part the figures and the verdict, its seams against the limits, speed and power along
/// the chosen one, and the path as welded; the list of the earlier parts; export as seam passport and as
/// comma-separated values. It has its own bar, and lays itself out for its width.
class ResultsPage : public QWidget {
    Q_OBJECT
public:
    /// `history` must outlive it.
    explicit ResultsPage(RunHistory* history, QWidget* parent = nullptr);

    /// Writes a file in the format of its extension: the seam passport of the chosen run (pdf) or its seams
    /// (csv). Shows a message on failure.
    void exportTo(const QString& file);

signals:
    /// The operator wants to go back to the program.
    void closeAsked();

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    enum Leaf { Nothing, Part, Earlier };
    QWidget* makeBar();
    QWidget* makePart();
    QWidget* makeEarlier();
    QWidget* makeFoot();
    QToolButton* makeButton(const QString& name, const QString& icon, const QString& text);
    QTableView* makeTable(const QString& name);
    void setUpRuns();
    void setUpSeams();
    void arrange();
    void fitRuns();
    void fitSeams();
    void onHistory(bool added);
    void choose(int row);
    void showLeaf(Leaf leaf);
    void showChosen();
    void showVerdict();
    void showSeam();
    [[nodiscard]] QString suggestedName(const QString& ending) const;
    [[nodiscard]] ResultExport::Write writerOf(const QString& ending) const;
    void exportAll();

    RunHistory* history_;
    RunList* runList_;
    SeamList* seamList_;
    ResultExport* export_;
    QTableView* runs_;
    QTableView* seams_;
    QToolButton* back_ = nullptr;
    QToolButton* earlier_ = nullptr;
    QToolButton* passport_ = nullptr;
    QToolButton* csv_ = nullptr;
    QPushButton* all_ = nullptr;
    QPushButton* next_ = nullptr;
    QWidget* bar_ = nullptr;
    QWidget* part_ = nullptr;
    QWidget* foot_ = nullptr;
    QLabel* title_;
    QLabel* when_;
    QLabel* reasons_;
    QLabel* seam_;
    QLabel* written_;
    ResultFigures* figures_;
    SeamLanes* lanes_;
    WeldPicture* picture_;
    QStackedWidget* stack_;
    int row_ = -1;                             ///< of the chosen run
    std::shared_ptr<const RunResult> result_;  ///< of the chosen run; none when its file is damaged
};

}  // namespace app
