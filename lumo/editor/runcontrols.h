#pragma once

#include "module/host.h"

#include <QObject>
#include <QPointer>
#include <QString>

class ProgramTable;
class QMessageBox;

/// The work behind the four run buttons: checks the program, saves it, prepares the resume data and
/// writes the executor's triggers.
///
/// A trigger's write runs the executor inside it, to the end of the run: it is always the last thing
/// done, and the page may be gone when it returns. While the executor is not idle, start and move to point
/// only write the trigger, which is then refused with a message.
class RunControls : public QObject {
    Q_OBJECT
public:
    /// `page` is the sender of what is written and, without a central widget, the parent of boxes.
    RunControls(ProgramTable* table, QWidget* page);
    ~RunControls() override;

    /// Whether nothing runs: no program, no single step, and no pause that is still closing a weld.
    [[nodiscard]] static bool isIdle();

    /// Where a start saves the program; it does not while the path is empty.
    void setProjectPath(const QString& path) { filePath_ = path; }

    /// From the resume line, or from the selected one after a question.
    void start();
    /// Moves to the point of the selected statement.
    void moveToPoint();
    void pause();
    /// Forgets where a paused program would go on.
    void reset();

signals:
    /// Tool and work object are about to be used: apply the selected ones again.
    void aboutToRun();

private:
    void askToJump();
    void jumpAnswered(bool yes);
    void run();
    [[nodiscard]] bool refusedForPairs() const;

    ProgramTable* table_;
    QWidget* page_;
    QString filePath_;
    QPointer<QMessageBox> question_;
};
