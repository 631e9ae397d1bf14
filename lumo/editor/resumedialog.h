#pragma once

#include "executor/resumeview.h"
#include "module/host.h"

#include <QDialog>

#include <optional>

class QDoubleSpinBox;
class QGridLayout;
class QLabel;
class QPushButton;

namespace lumo {

class SeamPicture;

/// Asks how a weld goes on that was stopped: shows where it stopped, how far the tool is from there, and what
/// is left of the seam.
///
/// Show it with open(). It follows the tool, and closes by itself when the program changes, anything runs, or
/// there is nothing left to go on with.
class ResumeDialog : public QDialog {
    Q_OBJECT
public:
    enum class Choice { GoOn, GoOnWithOverlap, GoOnDark };

    ResumeDialog(int line, QWidget* parent);

    /// The overlap that was chosen, mm.
    [[nodiscard]] double overlapMm() const;

signals:
    /// Once, before it closes; not for Cancel.
    void chosen(lumo::ResumeDialog::Choice choice);

private:
    void addTexts(QGridLayout* layout);
    void addChoices(QGridLayout* layout);
    QPushButton* addChoice(QGridLayout* layout, const QString& text, int row, const char* name);
    QPushButton* stepButton(const QString& text, int steps);
    void addOverlap(QGridLayout* layout, QPushButton* choice, int row);
    void follow();
    void refreshLater();
    void reread();
    void refresh();
    void choose(Choice choice);

    const int line_;
    std::optional<ResumeView> view_;  ///< kept while only the tool moves: to read it copies the program
    SeamPicture* picture_;
    QLabel* where_;
    QLabel* distance_;
    QLabel* left_;
    QDoubleSpinBox* overlap_;
    bool refreshes_ = false;  ///< a refresh is on its way
};

}  // namespace lumo
