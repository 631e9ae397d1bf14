#pragma once

#include "module/host.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>

class ProgramTable;
class QMessageBox;

/// The work behind the four run buttons: checks the program, saves it, prepares the resume data and
/// writes the executor's triggers.
///
/// A trigger's write runs the executor inside it, to the end of the run (pause: of its closing): it is always
/// the last thing done, and the page may be gone when it returns. So no click and no answer to a question
/// writes one itself, for the button or the box would be gone too: what they ask for is done, and checked,
/// from the event loop, once for any number of clicks until then. While the executor is not idle, start and
/// move to point only write the trigger, which is then refused with a message.
class RunControls : public QObject {
    Q_OBJECT
public:
    /// `page` is the sender of what is written and, without a central widget, the parent of boxes.
    RunControls(ProgramTable* table, QWidget* page);
    ~RunControls() override;

    /// Where a start saves the program; it does not while the path is empty.
    void setProjectPath(const QString& path) { filePath_ = path; }

    // Soon, from the event loop.

    /// From the resume line, or from the selected one after a question. Another question comes where the tool
    /// would first go back to where the program was stopped.
    void start() { later(&RunControls::startNow); }
    /// Moves to the point of the selected statement.
    void moveToPoint() { later(&RunControls::moveNow); }
    void pause() { later(&RunControls::pauseNow); }

    // At once.

    /// Forgets where a paused program would go on.
    void reset();

signals:
    /// The project's file holds the program.
    void saved();
    /// Tool and work object are about to be used: apply the selected ones again.
    void aboutToRun();

private:
    using Deed = void (RunControls::*)();
    void later(Deed deed);
    void startNow();
    void jumpNow();
    void goBackNow();
    void moveNow();
    void pauseNow();
    /// Runs from the resume line, after a question where the tool has left the place of the stop.
    void goOn();
    void run();
    /// Asks about the program as it is; `yes` is done, later, after that answer.
    void ask(const QString& title, const QString& text, Deed yes);
    [[nodiscard]] bool refusedForPairs() const;

    ProgramTable* table_;
    QWidget* page_;
    QString filePath_;
    QVector<Deed> deeds_;  ///< to be done from the event loop
    QPointer<QMessageBox> question_;
    double askedMm_ = 0.0;             ///< the distance that a question named
    QPointer<ModuleObject> askedFor_;  ///< the statement that would be run from
};
