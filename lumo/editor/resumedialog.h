#pragma once

#include "executor/resumeview.h"
#include "module/host.h"

#include <QDialog>

#include <optional>

class QDoubleSpinBox;
class QLabel;
class QPushButton;
class QVBoxLayout;

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
    QLayout* makeHead();
    QLayout* makeFoot();
    void addChoices(QVBoxLayout* rows);
    QPushButton* makeButton(const QString& caption, const char* icon, const char* name);
    void addChoice(QVBoxLayout* rows, QPushButton* button, QLabel* effect, QWidget* more);
    QPushButton* stepButton(const char* icon, int steps);
    QWidget* makeOverlap();
    void tellOverlap();
    void follow();
    void refreshLater();
    void reread();
    void refresh();
    void choose(Choice choice);

    const int line_;
    std::optional<ResumeView> view_;  ///< kept while only the tool moves: to read it copies the program
    SeamPicture* picture_;
    QLabel* distance_;
    QLabel* again_;
    QLabel* left_;
    QDoubleSpinBox* overlap_;
    bool refreshes_ = false;  ///< a refresh is on its way
};

}  // namespace lumo
