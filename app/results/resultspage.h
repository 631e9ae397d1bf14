#pragma once

#include "app/results/resultexport.h"
#include "app/results/runhistory.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QStackedLayout;
class QTableView;

namespace app {

class RunList;
class SeamList;

/// The results: the list of runs, newest first, and the seams of the chosen one against the limits; export as
/// seam passport and as comma-separated values.
class ResultsPage : public QWidget {
    Q_OBJECT
public:
    /// `history` must outlive it.
    explicit ResultsPage(RunHistory* history, QWidget* parent = nullptr);

    /// Writes a file in the format of its extension: the seam passport of the chosen run (pdf) or its seams
    /// (csv). Shows a message on failure.
    void exportTo(const QString& file);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeButtons();
    QPushButton* makeButton(const QString& name, const QString& text);
    QTableView* makeTable(const QString& name);
    void setUpRuns();
    void setUpSeams();
    void onHistory(bool added);
    void choose(int row);
    void showChosen();
    void showVerdict();
    [[nodiscard]] QString suggestedName(const QString& ending) const;
    [[nodiscard]] ResultExport::Write writerOf(const QString& ending) const;
    void exportAll();

    RunHistory* history_;
    RunList* runList_;
    SeamList* seamList_;
    ResultExport* export_;
    QTableView* runs_;
    QTableView* seams_;
    QPushButton* passport_;
    QPushButton* csv_;
    QLabel* summary_;
    QLabel* verdict_;
    QLabel* written_;
    QStackedLayout* stack_;
    int row_ = -1;                     ///< of the chosen run
    std::optional<RunResult> result_;  ///< of the chosen run; none when its file is damaged
};

}  // namespace app
