#pragma once

#include "editor/resumedialog.h"
#include "module/host.h"
#include "program/finding.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>

class ProgramTable;
class QDialog;

namespace lumo {
class ProgramCheck;
}

/// The actions of the four run buttons: they check and save the program, prepare the resume data and write
/// the executor's triggers.
///
/// Writing a trigger returns at the end of the run (pause: of its closing), and the page may be deleted by
/// then. Therefore it is the last step of an action, and actions are performed from the event loop, not
/// inside a click or an answer, whose button or box would be deleted too. Repeated clicks before that count
/// once. While the executor is not idle, start and move to point only write the trigger; the executor refuses
/// it with a message.
///
/// A program with errors is not started, wherever they stand: a later start would meet them. A single step is
/// refused for what its own line holds; what depends on where the robot stands is left to the controller.
class RunControls : public QObject {
    Q_OBJECT
public:
    /// `page` is the sender of all writes and, without a central widget, the parent of message boxes. The
    /// objects must outlive the controls.
    RunControls(ProgramTable* table, lumo::ProgramCheck* check, QWidget* page);
    ~RunControls() override;

    /// The file to which a start saves the program; empty: it does not.
    void setProjectPath(const QString& path) { filePath_ = path; }

    // Performed from the event loop.

    /// Runs from the resume line, after a run that came to its end from the first line, or after a question
    /// from the selected line. Asks also before the tool goes back to the point where the program was
    /// stopped, in a weld with the dialog of resume(). Errors of the program are told after the questions,
    /// and nothing is saved or moved.
    void start() { later(&RunControls::startNow); }
    /// Asks how the weld goes on that was stopped.
    void resume() { later(&RunControls::resumeNow); }
    /// Moves to the point of the selected statement.
    void moveToPoint() { later(&RunControls::moveNow); }
    void pause() { later(&RunControls::pauseNow); }

    // Performed at once.

    /// Clears the resume data of a paused program.
    void reset();

signals:
    /// The program was saved as the project file.
    void saved();
    /// A run is about to begin: the selected tool and work object are to be applied.
    void aboutToRun();

private:
    using Action = void (RunControls::*)();
    void later(Action action);
    void startNow();
    void resumeNow();
    void askResume(int line);
    void resumeChosen();
    void jumpNow();
    void goBackNow();
    void moveNow();
    void pauseNow();
    /// Runs from the resume line; asks first if the tool has to go back to the point of the stop.
    void goOn();
    void run();
    /// Runs a program without errors from where Start begins.
    void begin();
    /// Asks a question, which any change of the program closes; `yes` is performed after that answer.
    void ask(const QString& title, const QString& text, Action yes);
    [[nodiscard]] bool refusedForPairs() const;
    [[nodiscard]] bool refusedForErrors() const;
    [[nodiscard]] bool stepRefusedForErrors(int row) const;
    void refuse(const prog::Findings& errors) const;

    ProgramTable* table_;
    lumo::ProgramCheck* check_;
    QWidget* page_;
    QString filePath_;
    QVector<Action> pending_;  ///< to be performed from the event loop
    QPointer<QDialog> question_;
    lumo::ResumeDialog::Choice choice_{};  ///< how the weld goes on
    double overlapMm_ = 0.0;               ///< of it
    double askedMm_ = 0.0;                 ///< distance named in the question
    QPointer<ModuleObject> askedFor_;      ///< statement named in the question
};
